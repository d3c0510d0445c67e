#include "channel/CallingEnd.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/stat.h>

#include <array>

#include "Message.h"
#include "PosixError.h"
#include "platform/Log.h"

namespace pendra {
namespace {

using Clock = std::chrono::steady_clock;

bool isLackOfBufferSpace(int error) { return error == ENOBUFS || error == EAGAIN || error == EWOULDBLOCK; }

/// For `poll`, rounded up, so that the last millisecond is slept through and not spun through.
int millisecondsUntil(Clock::time_point deadline) {
  if (deadline == Clock::time_point::max()) return -1;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
  return static_cast<int>(std::max<std::int64_t>(left.count(), 0));
}

/// A socket that sends nothing and is only connected: to poll it for room is to poll the peer's queue, which
/// the bound socket must not be connected for, because then nobody but that one socket could send to it.
Descriptor watchOn(const SocketAddress& peer) {
  Descriptor watch(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  if (watch.get() < 0 || peer.connect(watch.get()) != 0) raiseSendFailure(errno);
  return watch;
}

}  // namespace

Result<std::unique_ptr<CallingEnd>> CallingEnd::bound(const QString& peerPath, const QString& localPath,
                                                      const TimeLimits& limits) {
  const QByteArray path = localPath.toLocal8Bit();
  auto socket = DatagramSocket::bound(path);
  if (!socket) return socket.error();
  std::unique_ptr<CallingEnd> end(new CallingEnd(std::move(socket).value(), peerPath, path, limits));
  if (end->wake_.get() < 0) return posixError(errno);
  return end;
}

CallingEnd::CallingEnd(std::unique_ptr<DatagramSocket> socket, const QString& peerPath, QByteArray localPath,
                       const TimeLimits& limits)
    : socket_(std::move(socket)),
      inbox_(std::make_unique<Inbox>(*socket_)),
      wake_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      peer_(SocketAddress::forPath(peerPath.toLocal8Bit())),
      localPath_(std::move(localPath)),
      limits_(limits) {}

CallingEnd::~CallingEnd() = default;

void CallingEnd::cancel() {
  isCancelled_ = true;
  (void)::eventfd_write(wake_.get(), 1);
}

void CallingEnd::stopIfCancelled() const {
  if (isCancelled_) throw ChannelFailure(kVTIPCCancelled, QStringLiteral("the call was cancelled"));
}

CallOutcome CallingEnd::call(const Call& call) {
  hasLeft_ = answered_ = false;
  held_.reset();
  CallOutcome outcome = [&]() -> CallOutcome {
    try {
      return perform(call);
    } catch (const ChannelFailure& failure) {
      const auto fate = hasLeft_ ? ChannelFailure::Fate::InDoubt : ChannelFailure::Fate::NeverLeft;
      return ChannelFailure(failure.name(), failure.reason(), fate);
    }
  }();
  called_ = nullptr;
  if (call.operation->hasEffect && hasLeft_ && !answered_) owed_.owe();
  return outcome;
}

Answer CallingEnd::perform(const Call& call) {
  const QStringView name = call.operation->name;
  logLine(formatted(u"ipc -> %@", {name}));
  const QByteArray archive = archivedMessage(name, call.arguments);
  const Deadline firstLeaves = Clock::now() + limits_.leave;
  discardInput(firstLeaves);
  called_ = call.operation;
  send(archive, firstLeaves);
  const Deadline deadline = Clock::now() + limits_.reply;
  while (!answered_ && waitFor(-1, deadline)) {
  }
  if (!held_) {
    throw ChannelFailure(kVTIPCTimeout, formatted(u"timeout waiting for return result for %@", {name}));
  }
  logLine(formatted(u"ipc <- %@", {name}));
  return *std::move(held_);
}

// Sending

void CallingEnd::send(QByteArrayView archive, Deadline firstLeaves) {
  for (const Datagram& datagram : datagramsOf(archive, false)) {
    stopIfCancelled();
    while (const int error = socket_->send(datagram, peer_, DatagramSocket::WhenFull::Fail)) {
      if (!isLackOfBufferSpace(error)) raiseSendFailure(error);
      // Kept: promised to the peer: a message that has begun to leave is retried without limit.
      awaitRoom(hasLeft_ ? Deadline::max() : firstLeaves);
    }
    hasLeft_ = true;
  }
}

/// Waits until the system takes another datagram from here, and then until the peer's queue does.
void CallingEnd::awaitRoom(Deadline deadline) {
  const Descriptor watch = watchOn(peer_);
  for (const int roomOf : {socket_->descriptor(), watch.get()})
    while (!waitFor(roomOf, deadline)) {
    }
}

// Waiting

/// With `roomOf` -1, sleeps until a datagram is there and takes it (true), or until the deadline (false).
/// Else sleeps until there is room for a datagram (true), and takes what arrives meanwhile (false): the peer
/// may be waiting for room here in its turn; the deadline is a failure then.
bool CallingEnd::waitFor(int roomOf, Deadline deadline) {
  std::array<pollfd, 3> watched{pollfd{.fd = wake_.get(), .events = POLLIN, .revents = 0},
                                pollfd{.fd = socket_->descriptor(), .events = POLLIN, .revents = 0},
                                pollfd{.fd = roomOf, .events = POLLOUT, .revents = 0}};
  const auto& [wake, input, room] = watched;
  if (Clock::now() >= deadline) {
    if (roomOf >= 0) raiseSendFailure(EAGAIN);
    return false;
  }
  ::poll(watched.data(), watched.size(), millisecondsUntil(deadline));
  stopIfCancelled();
  if (input.revents != 0) takeInput();
  return roomOf < 0 || room.revents != 0;
}

// Receiving

/// Takes one datagram if one is there.
bool CallingEnd::takeInput() {
  Inbox::Taken taken = inbox_->take();
  if (taken.message) hear(*std::move(taken.message));
  return taken.any;
}

void CallingEnd::hear(Message&& message) {
  if (!message.isReply) {
    logLine(formatted(u"ipc <--  %@", {message.operation}));
    throw ChannelFailure(kVTIPCNoMethod, QStringLiteral("no matching method for call"));
  }
  owed_.heardFrom(message.process);
  const Operation* answered = operationNamed(message.operation);
  if (answered && answered->hasEffect && owed_.settle()) return;
  if (!called_ || answered_ || message.values.isEmpty()) return;
  answered_ = message.operation == called_->name;
  held_ = Answer{message.operation, std::move(message.values.first())};
}

/// Takes what arrived before a call. What cannot be read is as old, and no failure of this call.
void CallingEnd::discardInput(Deadline deadline) {
  for (bool more = true; more && Clock::now() < deadline;) {
    try {
      more = takeInput();
    } catch (const ChannelFailure& failure) {
      logLine(formatted(u"%@: %@", {failure.name(), failure.reason()}));
    }
  }
  inbox_->forgetBeginning();
}

void CallingEnd::takeLateAnswers() { discardInput(Clock::now() + limits_.leave); }

void CallingEnd::standBy() { ::chmod(localPath_.constData(), 0600); }

}  // namespace pendra
