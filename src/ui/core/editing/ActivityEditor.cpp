#include "ui_core/ActivityEditor.h"

#include "model/DurationText.h"
#include "model/Queries.h"
#include "platform/Preferences.h"
#include "ui_core/ListSteps.h"
#include "ui_core/NoteLength.h"

namespace pendra {

namespace {

std::vector<Column<TimeEntryRow>> timeEntryColumns() {
  return {
      {.head = {.identifier = "date", .title = "Date", .widest = {"12/30/2026"}},
       .text = [](const TimeEntryRow& row) { return row.date; }},
      {.head = {.identifier = "time",
                .title = "Time",
                .alignment = Alignment::Right,
                .kind = CellKind::Time,
                .widest = {"00:00"}},
       .text = [](const TimeEntryRow& row) { return row.time; }},
      {.head = {.identifier = "duration",
                .title = "Duration",
                .alignment = Alignment::Right,
                .kind = CellKind::Time},
       .text = [](const TimeEntryRow& row) { return row.duration; }},
      {.head = {.identifier = "notes", .title = "Notes", .kind = CellKind::Secondary, .weight = 1},
       .text = [](const TimeEntryRow& row) { return row.notes; },
       .editable = [](const TimeEntryRow&) { return true; }},
  };
}

RowTraits<TimeEntryRow> timeEntryTraits() {
  return {.identity =
              [](const TimeEntryRow& row) {
                return row.entries ? static_cast<quint64>(row.entries->objectID()) : 0;
              },
          .running = [](const TimeEntryRow& row) { return row.entries && row.entries->running() == true; }};
}

}  // namespace

ActivityEditor::ActivityEditor(Session& session, const ActivityEditorControls& controls)
    : session_(session), controls_(controls), rows_(timeEntryColumns(), timeEntryTraits()) {
  controls_.sheet.setPastTimeViewShown(false);
  reloadNames();
}

void ActivityEditor::setLabels(bool adding) {
  controls_.activityLabel.setText(adding ? "Add Activity" : "Edit Activity");
  controls_.okButton.setText(adding ? "Add" : "Save");
  controls_.autoStartCheckbox.setHidden(!adding);
  if (!adding) controls_.okButton.setEnabled(true);
}

void ActivityEditor::setShouldDisplayPastTimeEntries(bool display) {
  if (display != shouldDisplayPastTimeEntries_) controls_.sheet.setPastTimeViewShown(display);
  shouldDisplayPastTimeEntries_ = display;
}

void ActivityEditor::reloadData() {
  {
    const Notifier::Change change(canDeleteEntriesChanges);
    rows_.setRows(rowsOfActivity());
  }
  showNamesOfActivity();
  controls_.activityTable.reloadData();
}

std::vector<TimeEntryRow> ActivityEditor::rowsOfActivity() const {
  std::vector<TimeEntryRow> rows;
  if (!currentActivity_) return rows;
  const bool found = session_.ports().defaults.boolean(preferences::kUserFoundTableEdit);
  const QString placeholder = found ? QString() : QStringLiteral("Double-click to edit...");
  for (TimeEntry* period : currentActivity_->entries()) rows.push_back(rowOf(*period, placeholder));
  return rows;
}

TimeEntryRow ActivityEditor::rowOf(TimeEntry& period, const QString& placeholder) const {
  TimeEntryRow row{.entries = &period,
                   .start = period.start(),
                   .duration = durationText(period.storedDuration()),
                   .date = {},
                   .time = {},
                   .notes = period.notes().value_or(QString())};
  if (row.notes.isEmpty()) row.notes = placeholder;
  if (row.start) {
    const QDateTime local = session_.ports().calendar.local(*row.start);
    const QDate day = local.date();
    row.date = QString::asprintf("%d/%d/%d", day.month(), day.day(), day.year());
    row.time = QString::asprintf("%02d:%02d", local.time().hour(), local.time().minute());
  }
  return row;
}

void ActivityEditor::showNamesOfActivity() {
  if (!currentActivity_) return;
  const EntryFields& entry = controls_.entry;
  if (const Customer* customer = currentActivity_->customer(); customer && customer->name()) {
    entry.customerPopup.setText(*customer->name());
    customerPicked();
  }
  if (const Service* service = currentActivity_->service(); service && service->name()) {
    entry.servicePopup.setText(*service->name());
  }
  // The job comes last: choosing the customer has emptied it.
  if (const Job* job = currentActivity_->job(); job && job->name()) {
    entry.jobPopup.setText(*job->name());
  }
}

void ActivityEditor::controlEdited(const Control& control) {
  if (&control != &controls_.notesField) {
    controls_.littleSaveButton.setEnabled(true);
    return;
  }
  followNote(session_, controls_.notesLength, controls_.notesField.text());
}

void ActivityEditor::save() {
  if (!passes(activitySaveChecks(), textsOf(controls_.entry, session_), session_.ports().alerts)) return;
  if (!mayLeaveJob()) return;
  if (controls_.littleSaveButton.isEnabled()) applyToSelectedEntry();
  controls_.sheet.end(EditorSheet::kAccepted);
}

}  // namespace pendra
