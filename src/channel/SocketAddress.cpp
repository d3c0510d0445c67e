#include "channel/SocketAddress.h"

#include <cstring>

namespace pendra {

SocketAddress SocketAddress::forPath(const QByteArray& path) {
  SocketAddress address;
  if (path.isEmpty() || path.size() >= kSocketPathLimit || path.contains('\0')) return address;
  address.address_.sun_family = AF_UNIX;
  std::memcpy(address.address_.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
  address.length_ =
      static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + static_cast<std::size_t>(path.size()) + 1);
  return address;
}

int SocketAddress::bind(int socket) const {
  return ::bind(socket, reinterpret_cast<const sockaddr*>(&address_), length_);
}

int SocketAddress::connect(int socket) const {
  return ::connect(socket, reinterpret_cast<const sockaddr*>(&address_), length_);
}

void SocketAddress::addressSend(msghdr& message) {
  message.msg_name = &address_;
  message.msg_namelen = length_;
}

void SocketAddress::prepareReceive(msghdr& message) {
  message.msg_name = &address_;
  message.msg_namelen = sizeof address_;
}

}  // namespace pendra
