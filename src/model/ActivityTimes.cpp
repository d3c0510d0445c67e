#include "model/ActivityTimes.h"

#include "model/Activity.h"
#include "model/DurationText.h"
#include "model/TimeEntry.h"

namespace pendra {

Today::Today(Instant now, const Calendar& calendar)
    : begin_(calendar.startOfDay(calendar.day(now))),
      end_(calendar.startOfDay(calendar.day(now).addDays(1))) {}

ActivityTimes timesOf(const Activity& activity, const Today& today) {
  ActivityTimes times = activity.storedTimes(today);
  // Kept: promised to those who read the sums: a running entry that already holds a duration counts both.
  const double elapsed = activity.isRunning() ? activity.runningEntry()->length() : 0;
  times.total += elapsed;
  times.today += elapsed;
  return times;
}

TimeTexts timeTextsOf(const Activity& activity, const Today& today) {
  const ActivityTimes times = timesOf(activity, today);
  return {.total = durationText(times.total), .today = durationText(times.today)};
}

}  // namespace pendra
