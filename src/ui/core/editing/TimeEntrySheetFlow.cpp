#include "ui_core/EditorFlows.h"

namespace pendra {

void TimeEntrySheetFlow::showTimeEntrySheet() {
  TimeEntry* period = timer_.currentEntry();
  if (!period) return;
  LogPane& log = timer_.log();
  // The log can be asked for its activity only while a row is selected.
  Activity* activity = log.numberOfSelectedRows() > 0 ? log.selectedActivity() : period->activity();
  editor_.setCurrentActivity(activity);
  editor_.setCurrentEntry(period);
  editor_.fill();
  if (editor_.controls().sheet.run() != EditorSheet::kAccepted) return;
  editor_.saveValues();
  timer_.reloadData();
  log.reloadKeepingChoice();
  log.selectEntry(timer_.currentEntry());
}

}  // namespace pendra
