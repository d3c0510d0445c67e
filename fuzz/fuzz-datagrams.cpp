// Takes any bytes as a run of datagrams, each behind two bytes of length, as they would come from the socket.
#include <cstdint>

#include "channel/IPCMgr.h"
#include "channel/KeyedArchiver.h"
#include "channel/PDToVTProtocol.h"

namespace {

/// Answers every call with its last argument, to nobody.
class Anything final : public pendra::VendedObject {
 public:
  const pendra::ProtocolMethod* methodSignatureForSelector(QStringView selector) const override {
    return pendra::PDToVTProtocol.methodSignatureForSelector(selector);
  }
  pendra::ArchiveValue perform(const pendra::ProtocolMethod&,
                               const QList<pendra::ArchiveValue>& arguments) override {
    return arguments.isEmpty() ? pendra::ArchiveValue() : arguments.last();
  }
};

void silence() {
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool silent = (silence(), true);
  static Anything vended;
  static const auto folder = QStringLiteral("/tmp/pendra-fuzz-%1").arg(getpid());
  static const auto channel =
      std::move(pendra::IPCMgr::initVendedProxy(vended, folder + u"/s", pendra::PDToVTProtocol,
                                                pendra::supportedClassesOfPDToVT()))
          .value();
  QByteArrayView rest(data, static_cast<qsizetype>(size));
  // Every run ends the message that the one before it left unfinished.
  const auto take = [&](QByteArrayView datagram) {
    const auto header = pendra::DatagramHeader::of(datagram);
    if (!header) return;
    try {
      channel->receivedData(datagram.sliced(pendra::kHeaderSize), header->sequence, header->isReply, {},
                            header->lastDatagram);
    } catch (const pendra::ChannelFailure&) {
    }
  };
  while (rest.size() > 2) {
    const qsizetype length = static_cast<unsigned char>(rest[0]) << 8 | static_cast<unsigned char>(rest[1]);
    const QByteArrayView datagram = rest.sliced(2).first(std::min(length, rest.size() - 2));
    rest = rest.sliced(2 + datagram.size());
    take(datagram);
  }
  take(QByteArrayView("\0\0\0\x0e", 4));
  return silent ? 0 : 1;
}
