#include "model/Timer.h"
#include "model/startStop.h"

namespace pendra {

Instant startStop::startDate() const {
  const std::scoped_lock lock(mutex_);
  return startDate_;
}

std::optional<Instant> startStop::stopDate() const {
  const std::scoped_lock lock(mutex_);
  return stopDate_;
}

void startStop::stop() {
  const Instant now = clock_.now();
  const std::scoped_lock lock(mutex_);
  stopDate_ = now;
}

double startStop::interval() const {
  const auto stopped = stopDate();
  return stopped ? *stopped - startDate() : 0;
}

void Timer::startTimer() { curPair_ = std::make_unique<startStop>(clock_.now(), clock_); }

void Timer::stopTimer() {
  if (curPair_) curPair_->stop();
}

double Timer::curElapsedTime() const {
  Q_ASSERT_X(curPair_, "Timer", "asked before it was started");
  return clock_.now() - curPair_->startDate();
}

}  // namespace pendra
