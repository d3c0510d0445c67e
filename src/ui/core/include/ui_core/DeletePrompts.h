#pragma once

namespace pendra {

class TimerState;

/// Asks in a sheet of the window whether the selected activity goes with all its entries; nothing without
/// a selected activity. The question holds the activity and says what goes with it; the timers tick on under
/// it, and whatever is selected meanwhile, only that activity goes.
void askToDeleteActivity(TimerState& state);

/// The same for the entries that are selected in the log; nothing without one.
void askToDeleteEntries(TimerState& state);

}  // namespace pendra
