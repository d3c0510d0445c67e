#pragma once

#include "ui/ActivitySheet.h"
#include "ui/CommandTarget.h"
#include "ui/TimeEntrySheet.h"
#include "ui_core/EditorFlows.h"

namespace pendra {

/// The two editors of one timer window: the sheets, which belong to the window, and the flows that open
/// them. All that it is given must outlive it.
class EditorSheets {
 public:
  EditorSheets(TimerState& timer, CommandTarget& target, QWidget& window);

  void showActivitySheet(bool forNew) { activityFlow_.showActivitySheet(forNew); }
  void showTimeEntrySheet() { timeEntryFlow_.showTimeEntrySheet(); }
  void hideSendingLabel() { activitySheet_.hideSendingLabel(); }

 private:
  CommandTarget& target_;
  ActivitySheet& activitySheet_;
  TimeEntrySheet& timeEntrySheet_;
  ActivitySheetFlow activityFlow_;
  TimeEntrySheetFlow timeEntryFlow_;
};

}  // namespace pendra
