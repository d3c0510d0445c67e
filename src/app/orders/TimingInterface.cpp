#include "TimingInterface.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>

#include "Deeds.h"
#include "Facts.h"
#include "platform/Identifiers.h"
#include "platform/Translation.h"

namespace pendra {

const QString kTimingInterface = QStringLiteral("com.corvel.pendra.Timing1");

namespace {

using Maps = QList<QVariantMap>;

const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString kDocument = QStringLiteral("Document");

QVariant forBus(const QVariantList& list) {
  Maps maps;
  for (const QVariant& one : list) maps << withoutAbsent(one.toMap());
  return QVariant::fromValue(maps);
}

template <class Answer>
Result<QVariant> forBus(const Result<Answer>& answer) {
  if (!answer) return answer.error();
  if constexpr (std::is_same_v<Answer, QVariantMap>) {
    return QVariant(withoutAbsent(answer.value()));
  } else {
    return forBus(answer.value());
  }
}

}  // namespace

QVariantMap withoutAbsent(QVariantMap map) {
  map.removeIf([](QVariantMap::iterator one) { return !one.value().isValid(); });
  for (QVariant& value : map) {
    if (value.typeId() == QMetaType::QVariantMap) value = withoutAbsent(value.toMap());
  }
  return map;
}

QVariantMap withAbsent(QVariantMap map) {
  for (const char* name : {"customer", "job", "service", "notes"}) {
    const QString key = QString::fromLatin1(name);
    if (!map.contains(key)) map[key] = QVariant();
  }
  return map;
}

TimingInterface::TimingInterface(Session& session, std::function<QString()> busyWith, SendAll sendAll)
    : session_(session), busyWith_(std::move(busyWith)), sendAll_(std::move(sendAll)) {
  qDBusRegisterMetaType<Maps>();
  // After the attempt to store: whoever reads the file then finds it there.
  for (Notifier* news : {&session.documentChanges(), &session.saveStateChanges()}) {
    observations_.push_back(news->observe([this] { tellWhatRuns(); }));
  }
}

QString TimingInterface::introspection() const {
  return QStringLiteral(
      "<interface name=\"com.corvel.pendra.Timing1\">"
      "<method name=\"Start\"><arg name=\"match\" type=\"s\" direction=\"in\"/>"
      "<arg name=\"activity\" type=\"a{sv}\" direction=\"out\"/></method>"
      "<method name=\"Stop\"><arg name=\"match\" type=\"s\" direction=\"in\"/>"
      "<arg name=\"activities\" type=\"aa{sv}\" direction=\"out\"/></method>"
      "<method name=\"Running\"><arg name=\"activities\" type=\"aa{sv}\" direction=\"out\"/></method>"
      "<method name=\"Add\"><arg name=\"text\" type=\"s\" direction=\"in\"/>"
      "<arg name=\"create\" type=\"b\" direction=\"in\"/>"
      "<arg name=\"added\" type=\"a{sv}\" direction=\"out\"/></method>"
      "<method name=\"Export\"><arg name=\"path\" type=\"s\" direction=\"in\"/>"
      "<arg name=\"written\" type=\"a{sv}\" direction=\"out\"/></method>"
      "<method name=\"BackUp\"><arg name=\"path\" type=\"s\" direction=\"in\"/>"
      "<arg name=\"written\" type=\"a{sv}\" direction=\"out\"/></method>"
      "<method name=\"Send\"><arg name=\"sent\" type=\"a{sv}\" direction=\"out\"/></method>"
      "<property name=\"Document\" type=\"s\" access=\"read\">"
      "<annotation name=\"org.freedesktop.DBus.Property.EmitsChangedSignal\" value=\"false\"/></property>"
      "<signal name=\"RunningChanged\"/>"
      "</interface>"
      "<interface name=\"org.freedesktop.DBus.Properties\">"
      "<method name=\"Get\"><arg name=\"interface\" type=\"s\" direction=\"in\"/>"
      "<arg name=\"property\" type=\"s\" direction=\"in\"/>"
      "<arg name=\"value\" type=\"v\" direction=\"out\"/></method>"
      "<method name=\"GetAll\"><arg name=\"interface\" type=\"s\" direction=\"in\"/>"
      "<arg name=\"values\" type=\"a{sv}\" direction=\"out\"/></method>"
      "</interface>");
}

bool TimingInterface::answer(const QDBusMessage& call, const QDBusConnection& bus) {
  if (call.interface() == kProperties) {
    const auto reply = answerOfProperties(call);
    return reply && bus.send(*reply);
  }
  if (call.interface() != kTimingInterface) return false;
  static const QHash<QString, QString> signatures{{QStringLiteral("Start"), QStringLiteral("s")},
                                                  {QStringLiteral("Stop"), QStringLiteral("s")},
                                                  {QStringLiteral("Running"), QString()},
                                                  {QStringLiteral("Add"), QStringLiteral("sb")},
                                                  {QStringLiteral("Export"), QStringLiteral("s")},
                                                  {QStringLiteral("BackUp"), QStringLiteral("s")},
                                                  {QStringLiteral("Send"), QString()}};
  const auto signature = signatures.constFind(call.member());
  if (signature == signatures.constEnd() || call.signature() != *signature) return false;
  const auto done = carryOut(call.member(), call.arguments());
  if (done) return bus.send(call.createReply(done.value()));
  const QString name = identifiers::kPendra + u".Error." + nameOf(refusalOf(done.error()));
  return bus.send(call.createErrorReply(name, done.error().text));
}

Result<QVariant> TimingInterface::carryOut(const QString& member, const QVariantList& arguments) {
  const bool onlyAsks = member == u"Running";
  const auto document = orders::documentToChange(session_, onlyAsks ? QString() : busyWith_());
  if (!document) return document.error();
  return onlyAsks ? forBus(facts::running(*session_.context()))
                  : change(*document.value(), member, arguments);
}

Result<QVariant> TimingInterface::change(OpenDocument& document, const QString& member,
                                         const QVariantList& arguments) {
  const QString argument = arguments.value(0).toString();
  if (member == u"Start") return forBus(orders::start(document, argument));
  if (member == u"Stop") return forBus(orders::stop(document, argument));
  if (member == u"Add") return forBus(orders::add(document, argument, arguments.value(1).toBool()));
  if (member == u"Send") return forBus(sendAll_());
  if (member == u"Export") return forBus(orders::exportLog(document, argument));
  return forBus(orders::backUp(document, session_.objectModel(), argument));
}

std::optional<QDBusMessage> TimingInterface::answerOfProperties(const QDBusMessage& call) const {
  const QVariantList given = call.arguments();
  if (given.value(0).toString() != kTimingInterface) return std::nullopt;
  if (call.member() == u"Get" && given.value(1).toString() == kDocument) {
    return call.createReply(QVariant::fromValue(QDBusVariant(document())));
  }
  if (call.member() == u"GetAll") return call.createReply(QVariantMap{{kDocument, document()}});
  return std::nullopt;
}

QString TimingInterface::document() const {
  return session_.document() ? session_.document()->path() : QString();
}

void TimingInterface::tellWhatRuns() {
  std::vector<qint64> now;
  if (const auto context = session_.context()) {
    for (const TimeEntry* entry : context->flagged<TimeEntry>("running")) now.push_back(entry->objectID());
  }
  if (now == running_) return;
  running_ = std::move(now);
  send(QDBusMessage::createSignal(identifiers::kBusObject, kTimingInterface,
                                  QStringLiteral("RunningChanged")));
}

}  // namespace pendra
