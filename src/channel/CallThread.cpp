#include "channel/CallThread.h"

#include <sys/eventfd.h>

#include <csignal>

#include "platform/Log.h"

namespace pendra {
namespace {

/// Blocks all signals for its own life time: a thread that is made meanwhile leaves them to the others.
class BlockedSignals {
 public:
  BlockedSignals() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &previous_);
  }
  ~BlockedSignals() { pthread_sigmask(SIG_SETMASK, &previous_, nullptr); }
  Q_DISABLE_COPY_MOVE(BlockedSignals)

 private:
  sigset_t previous_{};
};

}  // namespace

CallThread::CallThread(std::unique_ptr<CallingEnd> end)
    : end_(std::move(end)), finished_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  const BlockedSignals blocked;
  thread_ = std::thread([this] { run(); });
}

CallThread::~CallThread() { stop(); }

std::unique_ptr<CallingEnd> CallThread::stop() {
  if (!thread_.joinable()) return nullptr;
  logLine(QStringLiteral("**IPCMgr invalidate"));
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
  }
  changed_.notify_all();
  end_->cancel();
  thread_.join();
  return std::move(end_);
}

void CallThread::begin(Call call) {
  {
    const std::lock_guard lock(mutex_);
    Q_ASSERT(!call_ && !outcome_);
    call_ = std::move(call);
  }
  changed_.notify_all();
}

CallOutcome CallThread::take() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return outcome_.has_value(); });
  eventfd_t count = 0;
  (void)::eventfd_read(finished_.get(), &count);
  CallOutcome outcome = *std::move(outcome_);
  outcome_.reset();
  return outcome;
}

void CallThread::run() {
  std::unique_lock lock(mutex_);
  while (true) {
    changed_.wait(lock, [this] { return call_ || stopping_; });
    if (stopping_) return;
    const Call call = *std::exchange(call_, std::nullopt);
    lock.unlock();
    CallOutcome outcome = end_->call(call);
    lock.lock();
    outcome_ = std::move(outcome);
    (void)::eventfd_write(finished_.get(), 1);
    changed_.notify_all();
  }
}

}  // namespace pendra
