#include "RunningPendra.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QProcess>
#include <QThread>

#include "TimingInterface.h"
#include "platform/Identifiers.h"
#include "platform/Resources.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

using Maps = QList<QVariantMap>;

/// A document that takes long to read keeps whoever asks waiting.
constexpr std::chrono::seconds kPatience{30};
/// Many records may go out, and each is answered by Vantor.
constexpr std::chrono::seconds kUntilSent = std::chrono::hours(1);
constexpr std::chrono::milliseconds kBetweenLooks{20};

Error errorOf(const QDBusMessage& reply) {
  const QString name = reply.errorName();
  for (const Refusal why : {Refusal::NoMatch, Refusal::SeveralMatches, Refusal::NoDocument,
                            Refusal::WrongUsage, Refusal::NoVantor}) {
    if (name.endsWith(u".Error." + nameOf(why))) return refusal(why, reply.errorMessage());
  }
  if (name.startsWith(identifiers::kPendra)) return refusal(Refusal::Refused, reply.errorMessage());
  return unanswered();
}

QString memberOf(Verb verb) {
  switch (verb) {
    case Verb::Start:
      return QStringLiteral("Start");
    case Verb::Stop:
      return QStringLiteral("Stop");
    case Verb::Add:
      return QStringLiteral("Add");
    case Verb::Export:
      return QStringLiteral("Export");
    case Verb::Send:
      return QStringLiteral("Send");
    default:
      return QStringLiteral("BackUp");
  }
}

/// What was added or started; an entry that was added has not been sent.
QVariantMap added(const QVariantMap& answer) {
  QVariantMap whole;
  for (auto one = answer.begin(); one != answer.end(); ++one) {
    QVariantMap facts = withAbsent(qdbus_cast<QVariantMap>(one.value()));
    if (one.key() == u"added") facts[QStringLiteral("sent")] = QVariant();
    whole[one.key()] = facts;
  }
  return whole;
}

}  // namespace

bool RunningPendra::isThere() const {
  return bus_.isConnected() && bus_.interface()->isServiceRegistered(identifiers::kPendra);
}

Result<QVariant> RunningPendra::call(const QString& interface, const QString& member,
                                     const QVariantList& arguments, std::chrono::seconds patience) const {
  auto message =
      QDBusMessage::createMethodCall(identifiers::kPendra, identifiers::kBusObject, interface, member);
  message.setArguments(arguments);
  message.setAutoStartService(false);
  const QDBusMessage reply =
      bus_.call(message, QDBus::Block, static_cast<int>(std::chrono::milliseconds(patience).count()));
  if (reply.type() != QDBusMessage::ReplyMessage) return errorOf(reply);
  return reply.arguments().value(0);
}

Result<QString> RunningPendra::document() const {
  const auto value = call(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                          {kTimingInterface, QStringLiteral("Document")});
  if (!value) return value.error();
  return qdbus_cast<QDBusVariant>(value.value()).variant().toString();
}

Result<QVariantMap> RunningPendra::obey(const Order& order) const {
  const bool sends = order.verb == Verb::Send;
  QVariantList arguments;
  if (!sends) arguments << order.text;
  if (order.verb == Verb::Add) arguments << order.create;
  const auto answer = call(kTimingInterface, memberOf(order.verb), arguments, sends ? kUntilSent : kPatience);
  if (!answer) return answer.error();
  if (order.verb == Verb::Add) return added(qdbus_cast<QVariantMap>(answer.value()));
  if (order.verb == Verb::Start) {
    return QVariantMap{{QStringLiteral("started"), withAbsent(qdbus_cast<QVariantMap>(answer.value()))}};
  }
  if (order.verb != Verb::Stop) return qdbus_cast<QVariantMap>(answer.value());
  QVariantList stopped;
  for (const QVariantMap& one : qdbus_cast<Maps>(answer.value())) stopped << withAbsent(one);
  return QVariantMap{{QStringLiteral("stopped"), stopped}};
}

Result<void> RunningPendra::launch(const QString& document) const {
  if (!bus_.isConnected()) return refusal(Refusal::Refused, tr("there is no session bus to ask Pendra on"));
  QProcess program;
  program.setProgram(helperFolder() + u"/pendra-windows");
  program.setArguments({QStringLiteral("--in-panel"), QStringLiteral("--"), document});
  // Whoever waits for the end of what this prints must not wait for the end of that.
  program.setStandardInputFile(QProcess::nullDevice());
  program.setStandardOutputFile(QProcess::nullDevice());
  program.setStandardErrorFile(QProcess::nullDevice());
  if (!program.startDetached()) return refusal(Refusal::Refused, program.errorString());
  for (auto waited = kBetweenLooks; waited < kPatience; waited += kBetweenLooks) {
    if (isThere()) return {};
    QThread::msleep(kBetweenLooks.count());
  }
  return refusal(Refusal::Refused, tr("Pendra did not start"));
}

}  // namespace pendra
