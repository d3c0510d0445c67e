#pragma once

#include "ui/ActivitySheet.h"
#include "ui/TimePeriodSheet.h"
#include "ui_core/EditorFlows.h"

namespace pendra {

/// The two editors of one timer window: the sheets, which belong to the window, and the flows that open
/// them. The state, the table and the window must outlive it.
class EditorSheets {
 public:
  EditorSheets(TimerState& timer, TablePort& activities, QWidget& window);

  void showActivitySheet(bool forNew) { activityFlow_.showActivitySheet(forNew); }
  void showTimePeriodSheet() { timePeriodFlow_.showTimePeriodSheet(); }
  /// The activity editor's lists and rows follow the document.
  void reloadComboxes() { activityController().reloadComboxes(); }
  void reloadData() { activityController().reloadData(); }
  void hideSendToVTLabel() { activitySheet_.hideSendToVTLabel(); }

  [[nodiscard]] NewActivityController& activityController() { return activitySheet_.controller(); }
  [[nodiscard]] TimePeriodController& timePeriodController() { return timePeriodSheet_.controller(); }

 private:
  ActivitySheet& activitySheet_;
  TimePeriodSheet& timePeriodSheet_;
  ActivitySheetFlow activityFlow_;
  TimePeriodSheetFlow timePeriodFlow_;
};

}  // namespace pendra
