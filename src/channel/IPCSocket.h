#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

#include "channel/Datagram.h"
#include "channel/Descriptor.h"
#include "channel/IPCAddress.h"
#include "platform/Result.h"

namespace pendra {

/// The bound socket of an endpoint. It takes datagrams from the user's own processes only: the folder's
/// rights keep nobody from sending to it.
class IPCSocket {
 public:
  using Deadline = std::chrono::steady_clock::time_point;

  /// What has arrived. The payload is good until the next `receive`.
  struct Received {
    DatagramHeader header;
    QByteArrayView payload;
    IPCAddress from;
  };

  /// The error is blank when there is no socket to be had at all.
  static Result<std::unique_ptr<IPCSocket>> bound(const QByteArray& localPath);

  [[nodiscard]] int descriptor() const { return descriptor_.get(); }

  /// 0 or an errno value. Waits while the receiver has no room, for at most the limit.
  [[nodiscard]] int send(const Datagram& datagram, IPCAddress to, std::chrono::milliseconds limit);
  /// The next datagram that is there; none when there is none. A datagram from another user is dropped and
  /// logged, one that cannot be a datagram of the channel is a failure. With a limit, one that is not there
  /// yet is waited for; a signal or a dropped datagram ends that early.
  Result<std::optional<Received>> receive(std::chrono::milliseconds limit = {});
  /// Sleeps until a datagram is there (true) or the deadline has come (false).
  [[nodiscard]] bool wait(Deadline deadline) const;

 private:
  explicit IPCSocket(Descriptor descriptor);
  [[nodiscard]] int setBufferSizes() const;
  [[nodiscard]] int setLimit(int option, std::chrono::milliseconds limit,
                             std::chrono::milliseconds& known) const;

  Descriptor descriptor_;
  std::chrono::milliseconds sendLimit_{0};
  std::chrono::milliseconds receiveLimit_{0};
  std::vector<char> buffer_;
};

}  // namespace pendra
