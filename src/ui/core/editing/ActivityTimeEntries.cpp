#include "model/DurationText.h"
#include "platform/Preferences.h"
#include "ui_core/NewActivityController.h"

namespace pendra {

namespace {

/// The only column that can be typed into.
constexpr QStringView kNotesColumn = u"notes";

}  // namespace

void NewActivityController::updateSelectedPeriod() {
  TimePeriod* period = selectedTimePeriod();
  const EntryTexts texts = textsOf(controls_.entry, session_, period != nullptr);
  if (!passes(selectedPeriodChecks(), texts, session_.ports().alerts)) return;
  takeStart(*period, texts, session_.notices());
  period->setDuration(durationInSeconds(texts.duration));

  const int index = controls_.myTableView.selectedRow();
  TimeEntryRow row = *tableDataArray_.row(index);
  row.start = period->start();
  row.duration = durationText(period->storedDuration());
  // Kept: the row's date and time stay as they were until the next reload.
  tableDataArray_.replaceRow(index, std::move(row));
  controls_.littleSaveButton.setEnabled(false);
  tableDataArray_.sort();
  controls_.myTableView.reloadData();
  if (const auto edited = indexOfTimePeriod(*period)) controls_.myTableView.selectRow(*edited);
}

void NewActivityController::addTimeEntry() {
  if (!myCurrentActivity_) return;
  const TimePeriod& period = myCurrentActivity_->addTimePeriod();
  reloadData();
  if (const auto row = indexOfTimePeriod(period)) controls_.myTableView.selectRow(*row);
  controls_.entry.startDateField.makeFirstResponder();
}

void NewActivityController::deleteTimeEntry() {
  const Ref<TimePeriod> period(selectedTimePeriod());
  if (!period) return;
  const Alert question{.style = Alert::Style::Critical,
                       .message = "Are you sure you want to delete this time event?",
                       .informative = {},
                       .buttons = {"Delete", "Cancel"}};
  session_.ports().alerts.beginSheet(question, [this, period](int answer) {
    if (answer == kFirstButton && period && myCurrentActivity_) deletePeriod(*period);
  });
}

void NewActivityController::deletePeriod(TimePeriod& period) {
  if (myCurrentActivity_->runningTimePeriod() == &period) myCurrentActivity_->stop();
  myCurrentActivity_->deletTimePeriod(period);
  reloadData();
  tableViewSelectionDidChange();  // the selected row went with its entry, and the table does not say so
}

TimePeriod* NewActivityController::selectedTimePeriod() const {
  const TimeEntryRow* row = tableDataArray_.row(controls_.myTableView.selectedRow());
  return row ? row->timePeriod.get() : nullptr;
}

std::optional<int> NewActivityController::indexOfTimePeriod(const TimePeriod& period) const {
  return tableDataArray_.indexOf([&](const TimeEntryRow& row) { return row.timePeriod == &period; });
}

bool NewActivityController::canDeleteTimePeriods() const {
  return controls_.myTableView.selectedRow() >= 0 && tableDataArray_.rowCount() > 0;
}

void NewActivityController::tableViewSelectionDidChange() {
  const int selected = controls_.myTableView.selectedRow();
  if (selected < 0) {
    const Notifier::Change change(canDeleteTimePeriodsChanges);
    showStart(controls_.entry, std::nullopt, session_.ports().calendar);
    controls_.entry.durationField.setStringValue(QString());
  } else if (const TimeEntryRow* row = tableDataArray_.row(selected)) {
    const Notifier::Change change(canDeleteTimePeriodsChanges);
    showStart(controls_.entry, row->start, session_.ports().calendar);
    controls_.entry.durationField.setStringValue(row->duration);
    controls_.littleSaveButton.setEnabled(false);
  }
  const TimePeriod* period = selectedTimePeriod();
  // Kept: past the end there is no entry, and no entry counts as not sent.
  enableTimeEditFields(selected >= 0 && !(period && period->timeIsFixed()));
}

void NewActivityController::clearTableSelection() {
  controls_.myTableView.clearSelection();
  tableViewSelectionDidChange();  // also when the selected entry was another activity's
}

bool NewActivityController::shouldEditTableColumn(QStringView column, int) {
  if (column != kNotesColumn) return false;
  session_.ports().defaults.setBoolean(preferences::kUserFoundTableEdit, true);
  return true;
}

QString NewActivityController::noteForEditing(int row) const {
  const TimeEntryRow* shown = tableDataArray_.row(row);
  return shown && shown->timePeriod ? shown->timePeriod->notes().value_or(QString()) : QString();
}

void NewActivityController::setObjectValue(const QString& value, QStringView column, int row) {
  const TimeEntryRow* shown = tableDataArray_.row(row);
  if (column != kNotesColumn || !shown || !shown->timePeriod) return;
  shown->timePeriod->setNotes(value);
  TimeEntryRow edited = *shown;
  edited.notes = value;
  tableDataArray_.replaceRow(row, std::move(edited));
}

void NewActivityController::sortDescriptorsDidChange(const SortDescriptor& descriptor) {
  tableDataArray_.sortBy(descriptor);
  controls_.myTableView.reloadData();
}

}  // namespace pendra
