#pragma once
// The channel lives on a thread of its own and sees values only: a call goes in, an outcome comes out.

#include <condition_variable>
#include <mutex>
#include <thread>

#include "channel/CallingEnd.h"

namespace pendra {

/// Makes the calls of one end, one at a time, on a thread of its own. All functions are for the thread that
/// made it.
class CallThread {
 public:
  explicit CallThread(std::unique_ptr<CallingEnd> end);
  /// Cancels what goes on and waits for the thread, which is at once.
  ~CallThread();
  Q_DISABLE_COPY_MOVE(CallThread)

  /// Begins a call. The outcome of the one before must have been taken.
  void begin(Call call);
  /// A descriptor that is readable when the call is over and its outcome not yet taken.
  [[nodiscard]] int finished() const { return finished_.get(); }
  /// The outcome of the call that was begun; waits for it.
  CallOutcome take();
  /// Ends the call that goes on, and every later one, at once. What it was is told by its outcome.
  void cancel() { end_->cancel(); }

  /// Ends the thread as the destructor does, and hands its end back.
  std::unique_ptr<CallingEnd> stop();

 private:
  void run();

  std::unique_ptr<CallingEnd> end_;
  Descriptor finished_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::optional<Call> call_;            ///< guarded by the mutex
  std::optional<CallOutcome> outcome_;  ///< guarded by the mutex
  bool stopping_ = false;               ///< guarded by the mutex
  std::thread thread_;
};

}  // namespace pendra
