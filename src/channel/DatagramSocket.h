#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <sys/types.h>

#include "channel/Datagram.h"
#include "channel/Descriptor.h"
#include "channel/SocketAddress.h"
#include "platform/Result.h"

namespace pendra {

/// The bound socket of an endpoint. It takes datagrams from the user's own processes only: the folder's
/// rights keep nobody from sending to it.
class DatagramSocket {
 public:
  /// What has arrived. The payload is good until the next `receive`.
  struct Received {
    DatagramHeader header;
    QByteArrayView payload;
    SocketAddress from;
    pid_t process = 0;
    bool isForeign = false;  ///< of another user, and to be dropped
  };

  static Result<std::unique_ptr<DatagramSocket>> bound(const QByteArray& localPath);
  /// Says in the log how many datagrams of other users were dropped.
  ~DatagramSocket();
  Q_DISABLE_COPY_MOVE(DatagramSocket)

  [[nodiscard]] int descriptor() const { return descriptor_.get(); }

  enum class WhenFull { Fail, Wait };
  /// 0 or an errno value. Where the receiver has no room, it fails with EAGAIN, or waits without limit.
  [[nodiscard]] int send(const Datagram& datagram, SocketAddress to, WhenFull whenFull);
  /// The next datagram that is there, or none. The first one of another user is logged. One that cannot be a
  /// datagram of the channel is a failure.
  Result<std::optional<Received>> receive();

 private:
  explicit DatagramSocket(Descriptor descriptor);
  [[nodiscard]] Result<void> prepare(const QByteArray& localPath) const;
  bool isOurOwn(uid_t sender);

  Descriptor descriptor_;
  std::vector<char> buffer_;
  qint64 foreignCount_ = 0;
};

}  // namespace pendra
