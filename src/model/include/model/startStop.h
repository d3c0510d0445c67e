#pragma once

#include <mutex>
#include <optional>

#include "platform/Clock.h"

namespace pendra {

/// A pair of instants; each is read and written as a whole from any thread.
class startStop {
 public:
  /// Begins at `start` and has not stopped. The clock must outlive it.
  startStop(Instant start, const Clock& clock) : clock_(clock), startDate_(start) {}

  [[nodiscard]] Instant startDate() const;
  /// None until stopped.
  [[nodiscard]] std::optional<Instant> stopDate() const;
  /// Stops now.
  void stop();
  /// Seconds from start to stop; 0 while not stopped.
  [[nodiscard]] double interval() const;

 private:
  const Clock& clock_;
  mutable std::mutex mutex_;
  Instant startDate_;
  std::optional<Instant> stopDate_;
};

}  // namespace pendra
