#pragma once

#include "analytics/Tracker.h"

namespace pendra {

/// Makes the tracker of a timer window, under a fresh identifier, and starts it: the page is loaded a
/// moment later, so that the window is not held up. Posts the launch of the program once it runs.
/// None where PENDRA_ANALYTICS_ADDRESS is set and empty: nothing is counted then.
std::unique_ptr<Tracker> startTracking(TrackerSources sources);

}  // namespace pendra
