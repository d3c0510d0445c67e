#pragma once

#include <QByteArray>

#include <sys/socket.h>
#include <sys/un.h>

namespace pendra {

/// The address of a Unix-domain datagram socket: its path, in the form in which the socket layer takes it.
class IPCAddress {
 public:
  /// The address of nobody; sending to it fails.
  IPCAddress() = default;
  /// A path of `kSocketPathLimit` bytes or more gives the address of nobody.
  static IPCAddress forPath(const QByteArray& path);

  /// Empty for a sender that has bound no path.
  [[nodiscard]] QByteArray path() const;
  [[nodiscard]] bool isNobody() const { return length_ <= offsetof(sockaddr_un, sun_path); }

  /// The result of the system call.
  [[nodiscard]] int bind(int socket) const;
  void addressSend(msghdr& message);
  void prepareReceive(msghdr& message);
  void received(const msghdr& message) { length_ = message.msg_namelen; }

 private:
  sockaddr_un address_{};
  socklen_t length_ = 0;
};

}  // namespace pendra
