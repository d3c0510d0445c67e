#pragma once

#include <QByteArray>

#include <sys/socket.h>
#include <sys/un.h>

namespace pendra {

/// A socket path of this many bytes or more is refused.
inline constexpr qsizetype kSocketPathLimit = 104;

/// The address of a Unix-domain datagram socket: its path, in the form in which the socket layer takes it.
class SocketAddress {
 public:
  /// The address of nobody; sending to it fails.
  SocketAddress() = default;
  /// A path of `kSocketPathLimit` bytes or more gives the address of nobody.
  static SocketAddress forPath(const QByteArray& path);

  [[nodiscard]] bool isNobody() const { return length_ <= offsetof(sockaddr_un, sun_path); }

  /// The result of the system call.
  [[nodiscard]] int bind(int socket) const;
  [[nodiscard]] int connect(int socket) const;
  void addressSend(msghdr& message);
  void prepareReceive(msghdr& message);
  void received(const msghdr& message) { length_ = message.msg_namelen; }

 private:
  sockaddr_un address_{};
  socklen_t length_ = 0;
};

}  // namespace pendra
