#pragma once
// An editor ends in OK or Cancel and knows nothing of what follows; these flows open an editor for the
// timer window and do what follows.

#include "ui_core/ActivityEditor.h"
#include "ui_core/TimeEntryEditor.h"
#include "ui_core/TimerState.h"

namespace pendra {

/// Adds an activity or edits the current one. All that it is given must outlive it.
class ActivitySheetFlow {
 public:
  ActivitySheetFlow(TimerState& timer, ActivityEditor& editor) : timer_(timer), editor_(editor) {}

  /// Runs the sheet for a new activity, or for the current one, and stores and selects what was chosen.
  /// Editing without a current activity does nothing, and neither does a second sheet.
  void showActivitySheet(bool forNew);

 private:
  TimerState& timer_;
  ActivityEditor& editor_;
  bool running_ = false;
};

/// Edits the time entry that is selected in the log. All that it is given must outlive it.
class TimeEntrySheetFlow {
 public:
  TimeEntrySheetFlow(TimerState& timer, TimeEntryEditor& editor) : timer_(timer), editor_(editor) {}

  /// Nothing without a selected entry.
  void showTimeEntrySheet();

 private:
  TimerState& timer_;
  TimeEntryEditor& editor_;
};

}  // namespace pendra
