#include "ui_core/NewActivityController.h"

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
  return {
      .identity =
          [](const TimeEntryRow& row) {
            return row.timePeriod ? static_cast<quint64>(row.timePeriod->objectID()) : 0;
          },
      .running = [](const TimeEntryRow& row) { return row.timePeriod && row.timePeriod->running() == true; }};
}

}  // namespace

NewActivityController::NewActivityController(Session& session, const ActivityEditorControls& controls)
    : session_(session), controls_(controls), tableDataArray_(timeEntryColumns(), timeEntryTraits()) {
  controls_.sheet.setPastTimeViewShown(false);
  reloadComboxes();
}

void NewActivityController::setLabels(bool adding) {
  controls_.activityLabel.setStringValue(adding ? "Add Activity" : "Edit Activity");
  controls_.okButton.setStringValue(adding ? "Add" : "Save");
  controls_.autoStartCheckbox.setHidden(!adding);
  if (!adding) controls_.okButton.setEnabled(true);
}

void NewActivityController::clearFields() {
  myCurrentActivity_ = {};
  const EntryFields& entry = controls_.entry;
  for (Control* field :
       {&entry.startTimeField, &entry.startDateField, &entry.durationField, &entry.startTimeFieldAMPM}) {
    field->setStringValue(QString());
  }
  reloadData();
  reloadComboxes();
  pickACustomer();
  for (Control* popup : {&entry.jobPopup, &entry.servicePopup, &entry.customerPopup}) {
    popup->setStringValue(QString());
  }
  controls_.billableCheckbox.setChecked(true);
  controls_.autoStartCheckbox.setChecked(true);
  controls_.okButton.setEnabled(false);
  controls_.littleSaveButton.setEnabled(false);
}

void NewActivityController::setShouldDisplayPastTimeEntries(bool display) {
  if (display != shouldDisplayPastTimeEntries_) controls_.sheet.setPastTimeViewShown(display);
  shouldDisplayPastTimeEntries_ = display;
}

void NewActivityController::reloadData() {
  {
    const Notifier::Change change(canDeleteTimePeriodsChanges);
    tableDataArray_.setRows(rowsOfActivity());
  }
  showNamesOfActivity();
  controls_.myTableView.reloadData();
}

std::vector<TimeEntryRow> NewActivityController::rowsOfActivity() const {
  std::vector<TimeEntryRow> rows;
  if (!myCurrentActivity_) return rows;
  const bool found = session_.ports().defaults.boolean(preferences::kUserFoundTableEdit);
  const QString placeholder = found ? QString() : QStringLiteral("Double-click to edit...");
  for (TimePeriod* period : myCurrentActivity_->timePeriod()) rows.push_back(rowOf(*period, placeholder));
  return rows;
}

TimeEntryRow NewActivityController::rowOf(TimePeriod& period, const QString& placeholder) const {
  TimeEntryRow row{.timePeriod = &period,
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

void NewActivityController::showNamesOfActivity() {
  if (!myCurrentActivity_) return;
  const EntryFields& entry = controls_.entry;
  if (const Customer* customer = myCurrentActivity_->customer(); customer && customer->name()) {
    entry.customerPopup.setStringValue(*customer->name());
    pickACustomer();
  }
  if (const Service* service = myCurrentActivity_->service(); service && service->name()) {
    entry.servicePopup.setStringValue(*service->name());
  }
  // The job comes last: choosing the customer has emptied it.
  if (const Job* job = myCurrentActivity_->job(); job && job->name()) {
    entry.jobPopup.setStringValue(*job->name());
  }
}

void NewActivityController::controlTextDidChange(const Control& control) {
  if (&control != &controls_.notesField) {
    controls_.littleSaveButton.setEnabled(true);
    return;
  }
  const Notifier::Change change(notesLengthStringChanges);
  noteDidChange(session_, controls_.notesLength, controls_.notesField.stringValue());
}

QString NewActivityController::notesLengthString() const {
  return QString::number(controls_.notesField.stringValue().size());
}

void NewActivityController::showNoteLengthWarning() { pendra::showNoteLengthWarning(session_); }

void NewActivityController::save() {
  if (!passes(activitySaveChecks(), textsOf(controls_.entry, session_), session_.ports().alerts)) return;
  if (!jobShouldEndEditing()) return;
  if (controls_.littleSaveButton.isEnabled()) updateSelectedPeriod();
  controls_.sheet.stopModal(EditorSheet::kAccepted);
}

}  // namespace pendra
