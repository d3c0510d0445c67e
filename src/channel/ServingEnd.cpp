#include "channel/ServingEnd.h"

#include "Message.h"
#include "platform/Log.h"
#include "platform/Text.h"

namespace pendra {

Result<std::unique_ptr<ServingEnd>> ServingEnd::bound(const QString& localPath, Perform perform) {
  auto socket = DatagramSocket::bound(localPath.toLocal8Bit());
  if (!socket) return socket.error();
  return std::unique_ptr<ServingEnd>(new ServingEnd(std::move(socket).value(), std::move(perform)));
}

ServingEnd::ServingEnd(std::unique_ptr<DatagramSocket> socket, Perform perform)
    : socket_(std::move(socket)), inbox_(std::make_unique<Inbox>(*socket_)), perform_(std::move(perform)) {}

ServingEnd::~ServingEnd() = default;

int ServingEnd::descriptor() const { return socket_->descriptor(); }

void ServingEnd::serveInput() {
  Inbox::Taken taken;
  do taken = inbox_->take();
  while (taken.any && !taken.message);
  if (taken.message && !taken.message->isReply) answer(*taken.message);
}

void ServingEnd::answer(const Message& call) {
  logLine(formatted(u"ipc <--  %@", {call.operation}));
  const Operation* operation = operationNamed(call.operation);
  if (!operation || operation->argumentCount != call.values.size())
    throw ChannelFailure(kVTIPCNoMethod, QStringLiteral("no matching method for call"));
  const QByteArray reply = archivedReply(operation->name, perform_(*operation, call.values));
  logLine(formatted(u"ipc -> %@", {call.operation}));
  sendReply(reply, call.from);
}

int ServingEnd::send(const Datagram& datagram, const SocketAddress& to) {
  return socket_->send(datagram, to, DatagramSocket::WhenFull::Wait);
}

void ServingEnd::sendReply(QByteArrayView archive, const SocketAddress& to) {
  for (const Datagram& datagram : datagramsOf(archive, true))
    if (const int error = send(datagram, to)) raiseSendFailure(error);
}

QByteArray archivedReply(QStringView operation, const ArchiveValue& answer) {
  return archivedMessage(operation, {answer});
}

}  // namespace pendra
