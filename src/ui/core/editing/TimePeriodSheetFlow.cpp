#include "ui_core/EditorFlows.h"

namespace pendra {

void TimePeriodSheetFlow::showTimePeriodSheet() {
  TimePeriod* period = timer_.myCurrentTimePeriod();
  if (!period) return;
  LogPane& log = timer_.log();
  // The log can be asked for its activity only while a row is selected.
  Activity* activity = log.numberOfSelectedRows() > 0 ? log.selectedActivity() : period->activity();
  editor_.setMyCurrentActivity(activity);
  editor_.setMyCurrentTimePeriod(period);
  editor_.updateUI();
  if (editor_.controls().sheet.runModal() != EditorSheet::kAccepted) return;
  editor_.saveValues();
  timer_.reloadData();
  log.reloadPopupsToSameChoice();
  log.selectPeriod(timer_.myCurrentTimePeriod());
}

}  // namespace pendra
