#include "ui_core/EditorFlows.h"

namespace pendra {

void TimeEntrySheetFlow::showTimeEntrySheet() {
  TimeEntry* entry = timer_.currentEntry();
  if (!entry || !entry->activity()) return;
  editor_.show(*entry);
  if (editor_.controls().sheet.run() == EditorSheet::kAccepted) editor_.saveValues();
}

}  // namespace pendra
