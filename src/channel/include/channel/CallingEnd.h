#pragma once
// A call waits only in `poll`, on its socket and on a descriptor that `cancel` makes readable, so that it can
// be ended at any moment from another thread. What arrives is looked at only while a call goes on.

#include <atomic>
#include <chrono>
#include <memory>
#include <optional>
#include <variant>

#include "channel/ArchiveValue.h"
#include "channel/ChannelFailure.h"
#include "channel/Descriptor.h"
#include "channel/Operations.h"
#include "channel/OwedAnswers.h"
#include "channel/SocketAddress.h"
#include "platform/Result.h"

namespace pendra {

class DatagramSocket;
class Inbox;
struct Message;

/// How long a call waits. Others than these are for tests only.
struct TimeLimits {
  std::chrono::milliseconds leave{5000};  ///< for its first datagram to leave
  std::chrono::milliseconds reply{5000};  ///< for an answer, once the whole call has left
};

/// What is asked. The operation is one of those in `operations`.
struct Call {
  const Operation* operation;
  ArchiveValue::Array arguments;
};

/// What came as the answer. Kept: promised to the peer: an answer of another name than the call's that is
/// held when the time is over is taken; whoever called looks at the name.
struct Answer {
  QString operation;
  ArchiveValue value;
};

using CallOutcome = std::variant<Answer, ChannelFailure>;

/// The end of a channel that calls. One thread at a time may use it; `cancel` alone may come from any. After
/// a failure, late answers may still come, so a caller that cares makes a new end.
class CallingEnd {
 public:
  /// Binds this end to its path. The error is of the POSIX domain.
  static Result<std::unique_ptr<CallingEnd>> bound(const QString& peerPath, const QString& localPath,
                                                   const TimeLimits& limits = {});
  ~CallingEnd();
  Q_DISABLE_COPY_MOVE(CallingEnd)

  /// Calls the peer and waits for its answer. What had arrived before is no answer to it.
  CallOutcome call(const Call& call);
  /// Ends the call that goes on, and every later one, at once.
  void cancel();

  /// The answers that the peer owes, when no call goes on.
  [[nodiscard]] const OwedAnswers& owed() const { return owed_; }
  void setOwed(const OwedAnswers& owed) { owed_ = owed; }
  /// Counts the answers that have arrived meanwhile.
  void takeLateAnswers();
  /// Keeps the socket open for late answers and for nobody but this user, who alone would fill it.
  void standBy();

 private:
  using Deadline = std::chrono::steady_clock::time_point;

  CallingEnd(std::unique_ptr<DatagramSocket> socket, const QString& peerPath, QByteArray localPath,
             const TimeLimits& limits);

  Answer perform(const Call& call);
  void send(QByteArrayView archive, Deadline firstLeaves);
  void awaitRoom(Deadline deadline);
  bool waitFor(int roomOf, Deadline deadline);
  bool takeInput();
  void hear(Message&& message);
  void stopIfCancelled() const;
  void discardInput(Deadline deadline);

  std::unique_ptr<DatagramSocket> socket_;
  std::unique_ptr<Inbox> inbox_;
  Descriptor wake_;  ///< readable once it is cancelled
  std::atomic<bool> isCancelled_ = false;
  SocketAddress peer_;
  QByteArray localPath_;
  TimeLimits limits_;
  OwedAnswers owed_;
  const Operation* called_ = nullptr;  ///< what an answer is awaited for
  std::optional<Answer> held_;
  bool answered_ = false;
  bool hasLeft_ = false;
};

}  // namespace pendra
