#pragma once

#include "model/TimeEntry.h"

namespace pendra {

/// `isBetweenDates` for many entries. Only an entry near a bound has to be asked for its day, because days
/// away from a bound the instants alone decide, whatever the zone does to its clocks.
class DayRange {
 public:
  DayRange(std::optional<Instant> from, std::optional<Instant> to) : from_(from), to_(to) {}

  [[nodiscard]] bool contains(const TimeEntry& entry) const {
    const auto start = entry.start();
    if (!start || isNear(*start, from_) || isNear(*start, to_)) return entry.isBetweenDates(from_, to_);
    return (!from_ || *start > *from_) && (!to_ || *start < *to_);
  }

 private:
  static constexpr double kNear = 3 * 24 * 60 * 60;

  [[nodiscard]] static bool isNear(Instant start, std::optional<Instant> bound) {
    return bound && std::abs(start - *bound) < kNear;
  }

  std::optional<Instant> from_;
  std::optional<Instant> to_;
};

}  // namespace pendra
