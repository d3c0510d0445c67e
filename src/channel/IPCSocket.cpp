#include "IPCSocket.h"

#include <poll.h>

#include <cerrno>
#include <cstring>

#include "PosixError.h"
#include "channel/MoreUNIXErrno.h"
#include "channel/SafeBindUnixDomainSocket.h"
#include "platform/Log.h"
#include "platform/Text.h"

namespace pendra {
namespace {

/// More than the system lets an ordinary user send in one datagram.
constexpr std::size_t kReceiveSize = std::size_t{256} << 10;

template <class Value>
int setOption(int descriptor, int option, Value value) {
  return MoreUNIXErrno(setsockopt(descriptor, SOL_SOCKET, option, &value, sizeof value));
}

/// The user who sent the message, as the kernel says.
std::optional<uid_t> senderOf(msghdr& message) {
  for (cmsghdr* part = CMSG_FIRSTHDR(&message); part; part = CMSG_NXTHDR(&message, part)) {
    if (part->cmsg_level != SOL_SOCKET || part->cmsg_type != SCM_CREDENTIALS) continue;
    ucred credentials{};
    std::memcpy(&credentials, CMSG_DATA(part), sizeof credentials);
    return credentials.uid;
  }
  return {};
}

bool isOurOwn(std::optional<uid_t> sender) {
  static const uid_t ourselves = getuid();
  if (sender == ourselves) return true;
  logLine(formatted(u"dropped a datagram from user %@",
                    {sender ? QString::number(*sender) : QStringLiteral("unknown")}));
  return false;
}

}  // namespace

IPCSocket::IPCSocket(Descriptor descriptor) : descriptor_(std::move(descriptor)), buffer_(kReceiveSize) {}

Result<std::unique_ptr<IPCSocket>> IPCSocket::bound(const QByteArray& localPath) {
  const int descriptor = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  if (descriptor < 0) return Error{};
  std::unique_ptr<IPCSocket> socket(new IPCSocket(Descriptor(descriptor)));
  // Before the bind: from then on anybody may send.
  if (const int error = setOption(descriptor, SO_PASSCRED, int{1})) return posixError(error);
  if (const int error = SafeBindUnixDomainSocket(descriptor, localPath)) return posixError(error);
  if (const int error = socket->setBufferSizes()) return posixError(error);
  return socket;
}

int IPCSocket::setBufferSizes() const {
  constexpr qint64 size = 32768;
  const int error = setOption(descriptor(), SO_SNDBUF, size);
  return error ? error : setOption(descriptor(), SO_RCVBUF, size);
}

/// Sets how long the system waits, unless that is known already.
int IPCSocket::setLimit(int option, std::chrono::milliseconds limit, std::chrono::milliseconds& known) const {
  if (limit == known) return 0;
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(limit);
  const timeval time{.tv_sec = seconds.count(),
                     .tv_usec = std::chrono::microseconds(limit - seconds).count()};
  if (const int error = setOption(descriptor(), option, time)) return error;
  known = limit;
  return 0;
}

int IPCSocket::send(const Datagram& datagram, IPCAddress to, std::chrono::milliseconds limit) {
  if (to.isNobody()) return EDESTADDRREQ;
  if (const int error = setLimit(SO_SNDTIMEO, limit, sendLimit_)) return error;
  auto header = datagram.header.bytes();
  std::array<iovec, 2> parts{iovec{.iov_base = header.data(), .iov_len = header.size()},
                             iovec{.iov_base = const_cast<char*>(datagram.payload.data()),
                                   .iov_len = static_cast<std::size_t>(datagram.payload.size())}};
  msghdr message{};
  message.msg_iov = parts.data();
  message.msg_iovlen = parts.size();
  to.addressSend(message);
  ssize_t sent = 0;
  do sent = sendmsg(descriptor(), &message, MSG_NOSIGNAL);
  while (sent < 0 && errno == EINTR);
  return sent < 0 ? MoreUNIXErrno(-1) : 0;
}

Result<std::optional<IPCSocket::Received>> IPCSocket::receive(std::chrono::milliseconds limit) {
  const bool waits = limit.count() > 0 && setLimit(SO_RCVTIMEO, limit, receiveLimit_) == 0;
  for (int flags = waits ? 0 : MSG_DONTWAIT;; flags = MSG_DONTWAIT) {
    iovec part{.iov_base = buffer_.data(), .iov_len = buffer_.size()};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(ucred))> control{};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    Received received;
    received.from.prepareReceive(message);
    const ssize_t size = recvmsg(descriptor(), &message, flags | MSG_CMSG_CLOEXEC);
    if (size < 0 && errno == EINTR) continue;
    if (size < 0) return std::optional<Received>();
    if (!isOurOwn(senderOf(message))) continue;
    received.from.received(message);
    const QByteArrayView bytes(buffer_.data(), size);
    const auto header = DatagramHeader::of(bytes);
    if (!header || (message.msg_flags & MSG_TRUNC) != 0)
      return Error{.domain = QStringLiteral("datagram"), .code = 0, .text = QStringLiteral("not a datagram")};
    received.header = *header;
    received.payload = bytes.sliced(kHeaderSize);
    return std::optional(received);
  }
}

bool IPCSocket::wait(Deadline deadline) const {
  using std::chrono::milliseconds;
  while (true) {
    // Rounded up, so that the last millisecond is slept through and not spun through.
    const auto left = std::chrono::ceil<milliseconds>(deadline - std::chrono::steady_clock::now());
    if (left <= milliseconds(0)) return false;
    pollfd waiting{.fd = descriptor(), .events = POLLIN, .revents = 0};
    const int ready = poll(&waiting, 1, static_cast<int>(left.count()));
    if (ready > 0) return true;
    if (ready < 0 && errno != EINTR) return false;
  }
}

}  // namespace pendra
