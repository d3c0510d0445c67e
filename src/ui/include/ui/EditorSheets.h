#pragma once

#include "ui/ActivitySheet.h"
#include "ui/TimeEntrySheet.h"
#include "ui_core/EditorFlows.h"

namespace pendra {

/// The two editors of one timer window: the sheets, which belong to the window, and the flows that open
/// them. The state, the table and the window must outlive it.
class EditorSheets {
 public:
  EditorSheets(TimerState& timer, TablePort& activities, QWidget& window);

  void showActivitySheet(bool forNew) { activityFlow_.showActivitySheet(forNew); }
  void showTimeEntrySheet() { timeEntryFlow_.showTimeEntrySheet(); }
  void hideSendingLabel() { activitySheet_.hideSendingLabel(); }

 private:
  ActivitySheet& activitySheet_;
  TimeEntrySheet& timeEntrySheet_;
  ActivitySheetFlow activityFlow_;
  TimeEntrySheetFlow timeEntryFlow_;
};

}  // namespace pendra
