#include "channel/IPCAddress.h"

#include <cstring>

#include "channel/SafeBindUnixDomainSocket.h"

namespace pendra {

IPCAddress IPCAddress::forPath(const QByteArray& path) {
  IPCAddress address;
  if (path.isEmpty() || path.size() >= kSocketPathLimit || path.contains('\0')) return address;
  address.address_.sun_family = AF_UNIX;
  std::memcpy(address.address_.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
  address.length_ =
      static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + static_cast<std::size_t>(path.size()) + 1);
  return address;
}

QByteArray IPCAddress::path() const {
  if (isNobody()) return {};
  const auto size = static_cast<std::size_t>(length_) - offsetof(sockaddr_un, sun_path);
  return QByteArray(address_.sun_path, static_cast<qsizetype>(strnlen(address_.sun_path, size)));
}

int IPCAddress::bind(int socket) const {
  return ::bind(socket, reinterpret_cast<const sockaddr*>(&address_), length_);
}

void IPCAddress::addressSend(msghdr& message) {
  message.msg_name = &address_;
  message.msg_namelen = length_;
}

void IPCAddress::prepareReceive(msghdr& message) {
  message.msg_name = &address_;
  message.msg_namelen = sizeof address_;
}

}  // namespace pendra
