#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QTimer>
#include <QVariantMap>

#include "MachineClocks.h"
#include "platform/IdleSource.h"

namespace pendra {

namespace {

constexpr int kPatience = 5000;
constexpr double kMillisecond = 0.001;
constexpr double kMicrosecond = 0.000001;
/// How far a counter of milliseconds gets at least between two looks, and one of seconds at most.
constexpr double kManyCounts = 500;
constexpr double kFewCounts = 30;

QDBusMessage compositorCall() {
  return QDBusMessage::createMethodCall(
      QStringLiteral("org.gnome.Mutter.IdleMonitor"), QStringLiteral("/org/gnome/Mutter/IdleMonitor/Core"),
      QStringLiteral("org.gnome.Mutter.IdleMonitor"), QStringLiteral("GetIdletime"));
}

QDBusMessage screenSaverCall() {
  const QString name = QStringLiteral("org.freedesktop.ScreenSaver");
  return QDBusMessage::createMethodCall(name, QStringLiteral("/org/freedesktop/ScreenSaver"), name,
                                        QStringLiteral("GetSessionIdleTime"));
}

QDBusMessage loginCall() {
  auto call = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1/session/auto"),
      QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("GetAll"));
  return call << QStringLiteral("org.freedesktop.login1.Session");
}

/// The hint comes some minutes after the last touch, and the time from then on is all that is certain.
double idleOfLogin(const QDBusMessage& reply) {
  const auto properties = qdbus_cast<QVariantMap>(reply.arguments().constFirst());
  if (!properties.value(QStringLiteral("IdleHint")).toBool()) return 0;
  const double since = properties.value(QStringLiteral("IdleSinceHintMonotonic")).toDouble() * kMicrosecond;
  return std::max(0.0, secondsAwake() - since);
}

}  // namespace

std::unique_ptr<SessionIdle> SessionIdle::ofUser() {
  return std::make_unique<SessionIdle>(QDBusConnection::sessionBus(), QDBusConnection::systemBus());
}

SessionIdle::SessionIdle(const QDBusConnection& session, const QDBusConnection& system,
                         std::chrono::milliseconds pause)
    : session_(std::make_unique<QDBusConnection>(session)),
      system_(std::make_unique<QDBusConnection>(system)),
      pause_(pause) {}

SessionIdle::~SessionIdle() = default;

void SessionIdle::ask(QObject& asker, Answer answer) { askService(answering_, asker, answer); }

void SessionIdle::askService(Service service, QObject& asker, const Answer& answer) {
  if (service == Service::None) {
    answering_ = Service::Compositor;  // one may come later
    return answer(std::nullopt);
  }
  call(service, asker, [this, service, &asker, answer](const QDBusMessage& reply) {
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
      return askService(static_cast<Service>(static_cast<int>(service) + 1), asker, answer);
    }
    answering_ = service;
    if (service == Service::Login) return answer(idleOfLogin(reply));
    const double count = reply.arguments().constFirst().toDouble();
    if (service == Service::Compositor) return answer(count * kMillisecond);
    readScreenSaver(count, asker, answer);
  });
}

void SessionIdle::call(Service service, QObject& asker, const Reply& replied) {
  const bool isLogin = service == Service::Login;
  QDBusMessage message = isLogin                          ? loginCall()
                         : service == Service::Compositor ? compositorCall()
                                                          : screenSaverCall();
  message.setAutoStartService(false);
  const QDBusConnection& bus = isLogin ? *system_ : *session_;
  auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(message, kPatience), &calls_);
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &asker,
                   [replied](QDBusPendingCallWatcher* done) { replied(done->reply()); });
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, &QObject::deleteLater);
}

void SessionIdle::readScreenSaver(double count, QObject& asker, const Answer& answer) {
  if (unit_) return answer(count * *unit_);
  auto* pause = new QTimer(&calls_);
  pause->setSingleShot(true);
  QObject::connect(pause, &QTimer::timeout, &asker,
                   [this, count, &asker, answer] { learnUnit(count, asker, answer); });
  QObject::connect(pause, &QTimer::timeout, pause, &QObject::deleteLater);
  pause->start(pause_);
}

void SessionIdle::learnUnit(double count, QObject& asker, const Answer& answer) {
  call(Service::ScreenSaver, asker, [this, count, answer](const QDBusMessage& reply) {
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
      return answer(std::nullopt);
    }
    const double later = reply.arguments().constFirst().toDouble();
    const double grown = later - count;
    if (grown >= kManyCounts) unit_ = kMillisecond;
    if (grown > 0 && grown <= kFewCounts) unit_ = 1;
    answer(unit_ ? later * *unit_ : 0);  // one that did not grow was touched just now
  });
}

}  // namespace pendra
