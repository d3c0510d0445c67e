#include "model/DurationText.h"
#include "platform/Preferences.h"
#include "ui_core/ActivityEditor.h"

namespace pendra {

namespace {

/// The only column that can be typed into.
constexpr QStringView kNotesColumn = u"notes";

}  // namespace

void ActivityEditor::applyToSelectedEntry() {
  TimeEntry* period = selectedEntry();
  const EntryTexts texts = textsOf(controls_.entry, session_, period != nullptr);
  if (!passes(selectedPeriodChecks(), texts, session_.ports().alerts)) return;
  if (!period->timeIsFixed()) {
    storeTime(*period, startToStore(*period, texts, session_.notices()), texts.duration);
  }

  const int index = controls_.activityTable.selectedRow();
  TimeEntryRow row = *rows_.row(index);
  row.start = period->start();
  row.duration = durationText(period->storedDuration());
  // Kept: the row's date and time stay as they were until the next reload.
  rows_.replaceRow(index, std::move(row));
  controls_.littleSaveButton.setEnabled(false);
  rows_.sort();
  controls_.activityTable.reloadData();
  if (const auto edited = indexOfEntry(*period)) controls_.activityTable.selectRow(*edited);
}

void ActivityEditor::addTimeEntry() {
  if (!currentActivity_) return;
  const Instant start =
      startOfAddedEntry(*currentActivity_, session_.ports().clock.now(), session_.ports().calendar);
  TimeEntry& period = currentActivity_->addEntry();
  period.setStart(start);
  reloadData();
  if (const auto row = indexOfEntry(period)) controls_.activityTable.selectRow(*row);
  controls_.entry.startDateField.takeFocus();
}

void ActivityEditor::deleteTimeEntry() {
  const Ref<TimeEntry> period(selectedEntry());
  if (!period) return;
  const Alert question{.style = Alert::Style::Critical,
                       .message = "Are you sure you want to delete this time event?",
                       .informative = {},
                       .buttons = {"Delete", "Cancel"}};
  session_.ports().alerts.beginSheet(question, [this, period](int answer) {
    if (answer == kFirstButton && period && currentActivity_) deletePeriod(*period);
  });
}

void ActivityEditor::deletePeriod(TimeEntry& period) {
  if (currentActivity_->runningEntry() == &period) currentActivity_->stop();
  context().deleteObject(period);
  reloadData();
  selectionChanged();  // the selected row went with its entry, and the table does not say so
}

TimeEntry* ActivityEditor::selectedEntry() const {
  const TimeEntryRow* row = rows_.row(controls_.activityTable.selectedRow());
  return row ? row->entries.get() : nullptr;
}

std::optional<int> ActivityEditor::indexOfEntry(const TimeEntry& period) const {
  return rows_.indexOf([&](const TimeEntryRow& row) { return row.entries == &period; });
}

bool ActivityEditor::canDeleteEntries() const {
  return controls_.activityTable.selectedRow() >= 0 && rows_.rowCount() > 0;
}

void ActivityEditor::selectionChanged() {
  const int selected = controls_.activityTable.selectedRow();
  if (selected < 0) {
    const Notifier::Change change(canDeleteEntriesChanges);
    showStart(controls_.entry, std::nullopt, session_.ports().calendar);
    controls_.entry.durationField.setText(QString());
  } else if (const TimeEntryRow* row = rows_.row(selected)) {
    const Notifier::Change change(canDeleteEntriesChanges);
    showStart(controls_.entry, row->start, session_.ports().calendar);
    controls_.entry.durationField.setText(row->duration);
    controls_.littleSaveButton.setEnabled(false);
  }
  const TimeEntry* period = selectedEntry();
  // Kept: past the end there is no entry, and no entry counts as not sent.
  enableTimeEditFields(selected >= 0 && !(period && period->timeIsFixed()));
}

void ActivityEditor::clearTableSelection() {
  controls_.activityTable.clearSelection();
  selectionChanged();  // also when the selected entry was another activity's
}

bool ActivityEditor::isEditable(QStringView column, int) {
  if (column != kNotesColumn) return false;
  session_.ports().defaults.setBoolean(preferences::kUserFoundTableEdit, true);
  return true;
}

QString ActivityEditor::noteForEditing(int row) const {
  const TimeEntryRow* shown = rows_.row(row);
  return shown && shown->entries ? shown->entries->notes().value_or(QString()) : QString();
}

void ActivityEditor::setValue(const QString& value, QStringView column, int row) {
  const TimeEntryRow* shown = rows_.row(row);
  if (column != kNotesColumn || !shown || !shown->entries) return;
  shown->entries->setNotes(value);
  TimeEntryRow edited = *shown;
  edited.notes = value;
  rows_.replaceRow(row, std::move(edited));
}

void ActivityEditor::sortChanged(const SortOrder& descriptor) {
  rows_.sortBy(descriptor);
  controls_.activityTable.reloadData();
}

}  // namespace pendra
