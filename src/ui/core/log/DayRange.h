#pragma once

#include "model/TimeEntry.h"

namespace pendra {

/// Which entries start on one of some days, both bounds included; an absent bound does not limit. Only an
/// entry near a bound has to be asked for its day, because days away from a bound the instants alone decide,
/// whatever the zone does to its clocks.
class DayRange {
 public:
  DayRange(std::optional<QDate> first, std::optional<QDate> last, const Calendar& calendar)
      : calendar_(calendar), first_(boundAt(first)), last_(boundAt(last)) {}

  [[nodiscard]] bool contains(const TimeEntry& entry) const {
    const auto start = entry.start();
    if (!start) return !first_;
    if (isNear(*start, first_) || isNear(*start, last_)) return containsDay(calendar_.day(*start));
    return (!first_ || *start > first_->begin) && (!last_ || *start < last_->begin);
  }

 private:
  static constexpr double kNear = 3 * 24 * 60 * 60;

  struct Bound {
    QDate day;
    Instant begin;
  };
  [[nodiscard]] std::optional<Bound> boundAt(std::optional<QDate> day) const {
    return day ? std::optional(Bound{*day, calendar_.startOfDay(*day)}) : std::nullopt;
  }
  [[nodiscard]] static bool isNear(Instant start, const std::optional<Bound>& bound) {
    return bound && std::abs(start - bound->begin) < kNear;
  }
  [[nodiscard]] bool containsDay(QDate day) const {
    return (!first_ || day >= first_->day) && (!last_ || day <= last_->day);
  }

  const Calendar& calendar_;
  std::optional<Bound> first_;
  std::optional<Bound> last_;
};

}  // namespace pendra
