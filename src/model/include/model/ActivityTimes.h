#pragma once
// Today is asked of an entry's start, never of its end: an entry counts wholly to the day on which it
// began. Only what runs at this moment counts to today whatever day it began on.

#include <QString>

#include "platform/Calendar.h"

namespace pendra {

class Activity;

/// The sums of an activity's entries, in seconds.
struct ActivityTimes {
  double total = 0;
  double today = 0;
};

/// A moment and the day around it, taken once for many sums.
class Today {
 public:
  Today(Instant now, const Calendar& calendar);
  /// Whether an instant has this day's year, month and day.
  [[nodiscard]] bool contains(Instant instant) const { return begin_ <= instant && instant < end_; }
  friend bool operator==(const Today&, const Today&) = default;

 private:
  Instant begin_;
  Instant end_;
};

/// With what runs at this moment; costs the same however many entries there are, unless something changed.
[[nodiscard]] ActivityTimes timesOf(const Activity& activity, const Today& today);

/// The two texts of an activity's row.
struct TimeTexts {
  QString total;
  QString today;
};
[[nodiscard]] TimeTexts timeTextsOf(const Activity& activity, const Today& today);

}  // namespace pendra
