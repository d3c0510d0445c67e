#include "TerminalInterface.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include "Deeds.h"
#include "Obeying.h"
#include "Said.h"

namespace pendra {

namespace {

const QString kTerminalInterface = QStringLiteral("com.corvel.pendra.Terminal1");

/// Whether it is done to the document that is open, and means the same in every folder.
bool isObeyed(const Order& order) {
  const bool changes = order.verb == Verb::Start || order.verb == Verb::Stop || order.verb == Verb::Add;
  return changes && order.document.isEmpty();
}

}  // namespace

TerminalInterface::TerminalInterface(Session& session, std::function<QString()> busyWith)
    : session_(session), busyWith_(std::move(busyWith)) {}

QString TerminalInterface::introspection() const {
  return QStringLiteral(
      "<interface name=\"com.corvel.pendra.Terminal1\">"
      "<method name=\"Obey\"><arg name=\"words\" type=\"as\" direction=\"in\"/>"
      "<arg name=\"status\" type=\"i\" direction=\"out\"/>"
      "<arg name=\"printed\" type=\"s\" direction=\"out\"/>"
      "<arg name=\"refused\" type=\"s\" direction=\"out\"/></method>"
      "</interface>");
}

/// Another command is an unknown one here, which its terminal then carries out itself.
bool TerminalInterface::answer(const QDBusMessage& call, const QDBusConnection& bus) {
  if (call.interface() != kTerminalInterface || call.member() != u"Obey" || call.signature() != u"as")
    return false;
  const QStringList words =
      QStringList(QStringLiteral("pendra")) + call.arguments().constFirst().toStringList();
  const auto order = readOrder(words);
  if (order && !(order.value() && isObeyed(*order.value()))) return false;
  const Said said = order ? pendra::said(*order.value(), obey(*order.value()))
                          : pendra::said(order.error(), words.contains(u"--json"));
  return bus.send(
      call.createReply({said.status, QString::fromUtf8(said.printed), QString::fromUtf8(said.refused)}));
}

Result<QVariant> TerminalInterface::obey(const Order& order) const {
  const auto document = orders::documentToChange(session_, busyWith_());
  return document ? carryOut(*document.value(), session_.objectModel(), order) : document.error();
}

}  // namespace pendra
