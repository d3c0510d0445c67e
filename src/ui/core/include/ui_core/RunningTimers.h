#pragma once
// What runs and what was timed last is asked in several places: the window's title and header, a menu, the
// panel of the desktop. They say the same, because they ask here.

#include <QString>
#include <vector>

#include "model/Activity.h"
#include "model/TimeEntry.h"

namespace pendra {

/// An activity whose timer runs.
struct RunningTimer {
  Ref<Activity> activity;
  Ref<TimeEntry> entry;

  /// In whole seconds; none while a clock that was set back has not caught up with the start.
  [[nodiscard]] double seconds() const;
  /// The same as a text: "01:27:12".
  [[nodiscard]] QString length() const;
};

/// The timers that run, the longest first. What it costs grows with their number alone.
[[nodiscard]] std::vector<RunningTimer> runningTimers(const ObjectContext& context);

/// What a title says of them: "01:27:12 Acme and 1 more"; empty when nothing runs.
[[nodiscard]] QString runningTitle(const std::vector<RunningTimer>& timers);

/// What an activity is called where there is little room: "Acme - Roof", else "Acme - Design". Never empty.
[[nodiscard]] QString shortTitle(const Activity& activity);

/// How many activities are offered to be started again.
inline constexpr std::size_t kLatestActivities = 5;

/// The open activities that were started last and do not run, the latest first.
[[nodiscard]] std::vector<Activity*> latestActivities(const ObjectContext& context,
                                                      std::size_t most = kLatestActivities);

}  // namespace pendra
