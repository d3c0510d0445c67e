#include "DatagramSocket.h"

#include <unistd.h>

#include "PosixError.h"
#include "SafeBind.h"
#include "platform/Log.h"

namespace pendra {
namespace {

/// More than the system lets an ordinary user send in one datagram.
constexpr std::size_t kReceiveSize = std::size_t{256} << 10;

template <class Value>
int setOption(int descriptor, int option, Value value) {
  return errnoOf(setsockopt(descriptor, SOL_SOCKET, option, &value, sizeof value));
}

/// Who sent the message, as the kernel says.
ucred senderOf(msghdr& message) {
  ucred sender{.pid = 0, .uid = static_cast<uid_t>(-1), .gid = 0};
  for (cmsghdr* part = CMSG_FIRSTHDR(&message); part; part = CMSG_NXTHDR(&message, part)) {
    if (part->cmsg_level == SOL_SOCKET && part->cmsg_type == SCM_CREDENTIALS)
      std::memcpy(&sender, CMSG_DATA(part), sizeof sender);
  }
  return sender;
}

}  // namespace

DatagramSocket::DatagramSocket(Descriptor descriptor)
    : descriptor_(std::move(descriptor)), buffer_(kReceiveSize) {}

DatagramSocket::~DatagramSocket() {
  if (foreignCount_ > 1)
    logLine(formatted(u"dropped %@ datagrams from other users", {QString::number(foreignCount_)}));
}

Result<std::unique_ptr<DatagramSocket>> DatagramSocket::bound(const QByteArray& localPath) {
  const int descriptor = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  if (descriptor < 0) return posixError(errno);
  std::unique_ptr<DatagramSocket> socket(new DatagramSocket(Descriptor(descriptor)));
  if (const auto prepared = socket->prepare(localPath); !prepared) return prepared.error();
  return socket;
}

Result<void> DatagramSocket::prepare(const QByteArray& localPath) const {
  // Before the bind: from then on anybody may send.
  if (const int error = setOption(descriptor(), SO_PASSCRED, int{1})) return posixError(error);
  if (auto bound = safeBind(descriptor(), localPath); !bound) return bound;
  constexpr qint64 size = 32768;
  if (const int error = setOption(descriptor(), SO_SNDBUF, size)) return posixError(error);
  if (const int error = setOption(descriptor(), SO_RCVBUF, size)) return posixError(error);
  return {};
}

int DatagramSocket::send(const Datagram& datagram, SocketAddress to, WhenFull whenFull) {
  if (to.isNobody()) return EDESTADDRREQ;
  auto header = datagram.header.bytes();
  std::array<iovec, 2> parts{iovec{.iov_base = header.data(), .iov_len = header.size()},
                             iovec{.iov_base = const_cast<char*>(datagram.payload.data()),
                                   .iov_len = static_cast<std::size_t>(datagram.payload.size())}};
  msghdr message{};
  message.msg_iov = parts.data();
  message.msg_iovlen = parts.size();
  to.addressSend(message);
  const int flags = MSG_NOSIGNAL | (whenFull == WhenFull::Fail ? MSG_DONTWAIT : 0);
  ssize_t sent = 0;
  do sent = sendmsg(descriptor(), &message, flags);
  while (sent < 0 && errno == EINTR);
  return sent < 0 ? errno : 0;
}

bool DatagramSocket::isOurOwn(uid_t sender) {
  static const uid_t ourselves = getuid();
  if (sender == ourselves) return true;
  if (foreignCount_++ == 0) logLine(formatted(u"dropped a datagram from user %@", {QString::number(sender)}));
  return false;
}

Result<std::optional<DatagramSocket::Received>> DatagramSocket::receive() {
  iovec part{.iov_base = buffer_.data(), .iov_len = buffer_.size()};
  alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(ucred))> control{};
  msghdr message{};
  message.msg_iov = &part;
  message.msg_iovlen = 1;
  message.msg_control = control.data();
  message.msg_controllen = control.size();
  Received received;
  received.from.prepareReceive(message);
  const ssize_t size = recvmsg(descriptor(), &message, MSG_DONTWAIT | MSG_CMSG_CLOEXEC);
  if (size < 0) return std::optional<Received>();
  const ucred sender = senderOf(message);
  received.isForeign = !isOurOwn(sender.uid);
  if (received.isForeign) return std::optional(received);
  received.from.received(message);
  received.process = sender.pid;
  const QByteArrayView bytes(buffer_.data(), size);
  const auto header = DatagramHeader::of(bytes);
  if (!header || (message.msg_flags & MSG_TRUNC) != 0)
    return Error{.domain = QStringLiteral("datagram"), .code = 0, .text = QStringLiteral("not a datagram")};
  received.header = *header;
  received.payload = bytes.sliced(kHeaderSize);
  return std::optional(received);
}

}  // namespace pendra
