#pragma once

#include <memory>

#include "model/startStop.h"

namespace pendra {

/// A stopwatch over one pair of instants.
class Timer {
 public:
  /// The clock must outlive the timer.
  explicit Timer(const Clock& clock) : clock_(clock) {}

  /// None until the timer was started once.
  [[nodiscard]] const startStop* curPair() const { return curPair_.get(); }
  /// Seconds that the owner keeps here; the timer never changes them.
  [[nodiscard]] double curStaticTotal() const { return curStaticTotal_; }
  void setCurStaticTotal(double seconds) { curStaticTotal_ = seconds; }

  /// Begins a new pair now; the previous one is dropped.
  void startTimer();
  void stopTimer();
  /// Seconds since the start. Kept: a stopped timer counts on. Asking one that never started is an error.
  [[nodiscard]] double curElapsedTime() const;

 private:
  const Clock& clock_;
  std::unique_ptr<startStop> curPair_;
  double curStaticTotal_ = 0;
};

}  // namespace pendra
