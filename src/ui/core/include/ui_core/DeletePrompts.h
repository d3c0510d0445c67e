#pragma once

namespace pendra {

class TimerState;

/// Asks in a sheet of the window whether the selected activity goes with all its entries; nothing without
/// a selected activity. The timers tick on under the question.
void askToDeleteActivity(TimerState& state);

/// The same for the entries that are selected in the log; nothing without one.
void deleteTimeEntry(TimerState& state);

}  // namespace pendra
