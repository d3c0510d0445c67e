#include "Message.h"

#include "PosixError.h"
#include "channel/Archive.h"
#include "channel/ChannelFailure.h"
#include "platform/Log.h"

namespace pendra {
namespace {

[[noreturn]] void raiseUnreadable(const QString& error) {
  logLine(formatted(u"unarchive failure: %@", {error}));
  throw ChannelFailure(kVTIPCUnArchiverFailure, formatted(u"error: %@", {error}));
}

}  // namespace

void raiseSendFailure(int error) {
  throw ChannelFailure(kVTIPCSend, formatted(u"error occurred trying to send datagram, error: %@",
                                             {described(posixError(error))}));
}

QByteArray archivedMessage(QStringView operation, const ArchiveValue::Array& values) {
  ArchiveValue::Array message{operation.toString()};
  message.reserve(values.size() + 1);
  for (const ArchiveValue& value : values) message.push_back(value.isNil() ? NilMarker() : value);
  auto archive = writeArchive(std::move(message));
  if (archive) return std::move(archive).value();
  logLine(formatted(u"archive failure: %@", {archive.error().text}));
  throw ChannelFailure(kVTIPCArchiverFailure, formatted(u"error: %@", {archive.error().text}));
}

Message readMessage(const QByteArray& archive) {
  auto read = readArchive(archive);
  if (!read) raiseUnreadable(read.error().text);
  auto* elements = read.value().as<ArchiveValue::Array>();
  if (!elements) raiseUnreadable(QStringLiteral("the message is not an array"));
  const auto* operation = elements->isEmpty() ? nullptr : elements->front().as<QString>();
  if (!operation) raiseUnreadable(QStringLiteral("the message names no operation"));
  Message message{.operation = *operation, .values = std::move(*elements), .from = {}};
  message.values.removeFirst();
  for (ArchiveValue& value : message.values)
    if (value.isNilMarker()) value = {};
  return message;
}

Inbox::Taken Inbox::take() {
  const auto received = socket_.receive();
  if (!received) raiseUnreadable(received.error().text);
  const auto& datagram = received.value();
  if (!datagram) return {};
  Taken taken{.any = true, .message = {}};
  if (datagram->isForeign) return taken;
  auto archive = gatherer_.add(datagram->payload, datagram->header.sequence, datagram->header.lastDatagram);
  if (!archive) raiseUnreadable(archive.error().text);
  if (!archive.value()) return taken;
  taken.message = readMessage(*archive.value());
  taken.message->isReply = datagram->header.isReply;
  taken.message->from = datagram->from;
  taken.message->process = datagram->process;
  return taken;
}

}  // namespace pendra
