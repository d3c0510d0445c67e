// Takes any bytes as a run of datagrams, each behind two bytes of length, as they would come from the socket.
#include <cstdint>

#include "Message.h"
#include "channel/ChannelFailure.h"
#include "channel/Datagram.h"

namespace {

void silence() {
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
}

void take(pendra::DatagramGatherer& gatherer, QByteArrayView datagram) {
  const auto header = pendra::DatagramHeader::of(datagram);
  if (!header) return;
  const auto message =
      gatherer.add(datagram.sliced(pendra::kHeaderSize), header->sequence, header->lastDatagram);
  if (!message || !message.value()) return;
  try {
    (void)pendra::readMessage(*message.value());
  } catch (const pendra::ChannelFailure&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool silent = (silence(), true);
  pendra::DatagramGatherer gatherer;
  QByteArrayView rest(data, static_cast<qsizetype>(size));
  while (rest.size() > 2) {
    const qsizetype length = static_cast<unsigned char>(rest[0]) << 8 | static_cast<unsigned char>(rest[1]);
    const QByteArrayView datagram = rest.sliced(2).first(std::min(length, rest.size() - 2));
    rest = rest.sliced(2 + datagram.size());
    take(gatherer, datagram);
  }
  return silent ? 0 : 1;
}
