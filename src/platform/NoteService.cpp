#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

#include "NoteService.h"
#include "platform/Identifiers.h"

namespace pendra {

namespace {

const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kObject = QStringLiteral("/org/freedesktop/Notifications");
/// The action of a note that is pressed beside its buttons.
const QString kItself = QStringLiteral("default");
constexpr int kUntilAnswered = 0;

QDBusMessage callOf(const QString& method) {
  return QDBusMessage::createMethodCall(kService, kObject, kService, method);
}

/// Identifiers and titles, in turn.
QStringList actionsOf(const DesktopNote& note) {
  QStringList actions{kItself, QString()};
  for (qsizetype index = 0; index < note.actions.size(); ++index) {
    actions << QString::number(index) << note.actions[index];
  }
  return actions;
}

}  // namespace

NoteService::NoteService(const QDBusConnection& session, SessionNotes& owner)
    : session_(session), owner_(owner) {
  session_.connect(kService, kObject, kService, QStringLiteral("ActionInvoked"), this,
                   SLOT(invoked(quint32, QString)));
  session_.connect(kService, kObject, kService, QStringLiteral("NotificationClosed"), this,
                   SLOT(closed(quint32, quint32)));
}

void NoteService::show(const DesktopNote& note) {
  Standing& standing = standing_[note.key];
  standing.version = ++shown_;
  auto call = callOf(QStringLiteral("Notify"));
  const QVariantMap hints{{QStringLiteral("desktop-entry"), identifiers::kPendra}};
  call << QStringLiteral("Pendra") << standing.number << identifiers::kPendra << note.title
       << note.text.toHtmlEscaped() << actionsOf(note) << hints << kUntilAnswered;
  auto* watcher = new QDBusPendingCallWatcher(session_.asyncCall(call), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this,
          [this, key = note.key, version = shown_](QDBusPendingCallWatcher* done) {
            done->deleteLater();
            const QDBusPendingReply<quint32> number = *done;
            told(key, version, number.isError() ? 0 : number.value());
          });
}

/// Where a note was withdrawn before its number was known it is closed now.
void NoteService::told(const QString& key, int version, quint32 number) {
  const auto found = standing_.find(key);
  if (found == standing_.end()) return close(number);
  if (found->second.version == version) found->second.number = number;
}

void NoteService::withdraw(const QString& key) {
  const auto found = standing_.find(key);
  if (found == standing_.end()) return;
  const quint32 number = found->second.number;
  standing_.erase(found);
  close(number);
}

void NoteService::close(quint32 number) {
  if (number == 0) return;
  auto call = callOf(QStringLiteral("CloseNotification"));
  session_.send(call << number);
}

QString NoteService::keyOf(quint32 number) const {
  const auto found = std::find_if(standing_.begin(), standing_.end(),
                                  [number](const auto& one) { return one.second.number == number; });
  return found == standing_.end() ? QString() : found->first;
}

void NoteService::invoked(quint32 number, const QString& action) {
  const QString key = keyOf(number);
  if (number == 0 || key.isEmpty()) return;  // the signal tells of every program's notes
  owner_.pressed(key, action == kItself ? DesktopNotes::kNoButton : action.toInt());
}

void NoteService::closed(quint32 number, quint32) {
  if (number != 0) standing_.erase(keyOf(number));
}

std::unique_ptr<SessionNotes> SessionNotes::ofUser() {
  return std::make_unique<SessionNotes>(QDBusConnection::sessionBus());
}

SessionNotes::SessionNotes(const QDBusConnection& session)
    : service_(std::make_unique<NoteService>(session, *this)) {}
SessionNotes::~SessionNotes() = default;

void SessionNotes::show(const DesktopNote& note) { service_->show(note); }
void SessionNotes::withdraw(const QString& key) { service_->withdraw(key); }

}  // namespace pendra
