#pragma once
// A message is an archive; a datagram carries one slice of it behind a header word. The cutting below is the
// wire format itself, its odd end included, and both sides must do it alike.

#include <QByteArray>
#include <QByteArrayView>
#include <array>
#include <optional>
#include <vector>

#include "platform/Result.h"

namespace pendra {

inline constexpr qsizetype kSliceSize = 30720;
inline constexpr qsizetype kHeaderSize = 4;
inline constexpr qsizetype kGatherCapacity = 307200;
/// A message that grows beyond this is given up.
inline constexpr qsizetype kMessageLimit = qsizetype{16} << 20;

/// The header word, big-endian on the wire: the slice's index times 4, plus 2 on the last one, plus 1 in a
/// reply or ready notice.
struct DatagramHeader {
  quint32 sequence = 0;
  bool isReply = false;
  bool lastDatagram = false;

  [[nodiscard]] std::array<char, kHeaderSize> bytes() const;
  /// None when there are fewer than four bytes.
  static std::optional<DatagramHeader> of(QByteArrayView datagram);
  friend bool operator==(const DatagramHeader&, const DatagramHeader&) = default;
};

/// A slice of an archive, which must outlive it, and its header.
struct Datagram {
  DatagramHeader header;
  QByteArrayView payload;
};

/// Cuts an archive. An empty archive gives no datagram.
std::vector<Datagram> datagramsOf(QByteArrayView archive, bool isReply);

/// Joins the slices of one message at a time, in the order in which they arrive.
class DatagramGatherer {
 public:
  /// The whole message when this was its last slice, none while more is to come. A slice that does not fit
  /// what was gathered before is a failure; a first slice then begins its message all the same, so that the
  /// channel is not lost with one message.
  Result<std::optional<QByteArray>> add(QByteArrayView payload, quint32 sequence, bool lastDatagram);

 private:
  Result<void> append(QByteArrayView payload);

  QByteArray gathered_;
};

}  // namespace pendra
