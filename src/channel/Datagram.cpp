#include "channel/Datagram.h"

#include <QtEndian>

namespace pendra {
namespace {

Error gatherError(QString text) {
  return {.domain = QStringLiteral("datagram"), .code = 0, .text = std::move(text)};
}

}  // namespace

std::array<char, kHeaderSize> DatagramHeader::bytes() const {
  std::array<char, kHeaderSize> bytes{};
  qToBigEndian(sequence << 2 | (lastDatagram ? 2U : 0U) | (isReply ? 1U : 0U), bytes.data());
  return bytes;
}

std::optional<DatagramHeader> DatagramHeader::of(QByteArrayView datagram) {
  if (datagram.size() < kHeaderSize) return {};
  const auto word = qFromBigEndian<quint32>(datagram.data());
  return DatagramHeader{.sequence = word >> 2, .isReply = (word & 1) != 0, .lastDatagram = (word & 2) != 0};
}

std::vector<Datagram> datagramsOf(QByteArrayView archive, bool isReply) {
  const qsizetype count = (archive.size() + kSliceSize - 1) / kSliceSize;
  std::vector<Datagram> datagrams;
  datagrams.reserve(static_cast<std::size_t>(count));
  for (qsizetype i = 0; i < count; ++i) {
    const bool last = i == count - 1;
    // Kept, because the peer cuts so: an exact multiple of the slice size ends in an empty datagram and loses
    // its last slice.
    const qsizetype size = last ? archive.size() % kSliceSize : kSliceSize;
    datagrams.push_back(
        {.header = {.sequence = static_cast<quint32>(i), .isReply = isReply, .lastDatagram = last},
         .payload = archive.sliced(i * kSliceSize, size)});
  }
  return datagrams;
}

Result<void> DatagramGatherer::append(QByteArrayView payload) {
  if (gathered_.size() + payload.size() > kMessageLimit) {
    gathered_ = {};
    return gatherError(QStringLiteral("the message is too large"));
  }
  gathered_.append(payload);
  return {};
}

Result<std::optional<QByteArray>> DatagramGatherer::add(QByteArrayView payload, quint32 sequence,
                                                        bool lastDatagram) {
  if (sequence == 0 && lastDatagram) return std::optional(payload.toByteArray());
  if (sequence == 0) {
    const bool wasEmpty = gathered_.isNull();
    gathered_ = QByteArray("");
    gathered_.reserve(std::max(kGatherCapacity, payload.size()));
    gathered_.append(payload);
    if (!wasEmpty) return gatherError(QStringLiteral("fragment gather buffer is not nil"));
    return std::optional<QByteArray>();
  }
  if (gathered_.isNull()) {
    // Kept, because the log is searched for it: the complaint about a last slice has the words of the
    // opposite case.
    return gatherError(lastDatagram ? QStringLiteral("fragment gather buffer is not nil")
                                    : QStringLiteral("fragment gather buffer is nil"));
  }
  if (const auto appended = append(payload); !appended) return appended.error();
  if (!lastDatagram) return std::optional<QByteArray>();
  return std::optional(std::exchange(gathered_, {}));
}

}  // namespace pendra
