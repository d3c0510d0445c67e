#include "ui_core/TimeEntryEditor.h"

#include "model/DurationText.h"
#include "model/Queries.h"
#include "ui_core/NameLookups.h"
#include "ui_core/NoteLength.h"

namespace pendra {

TimeEntryEditor::TimeEntryEditor(Session& session, const TimeEntryEditorControls& controls)
    : session_(session), controls_(controls) {}

void TimeEntryEditor::fill() {
  if (!currentEntry_ || !currentActivity_) return;
  const TimeEntry& period = *currentEntry_;
  const EntryFields& entry = controls_.entry;
  // Kept: the job list follows the customer that the field held before.
  reloadNames();
  showNamesOfActivity();
  controls_.notesField.setText(period.notes().value_or(QString()));
  const auto& activityNotes = currentActivity_->notes();
  showNotesLength(controls_.notesLength, activityNotes.value_or(QString()));
  if (activityNotes) controls_.activityNotesField.setText(*activityNotes);
  showStart(entry, period.start(), session_.ports().calendar);
  entry.durationField.setText(durationText(period.storedDuration()));
  const bool open = !period.timeIsFixed();
  for (Control* popup : {&entry.customerPopup, &entry.jobPopup, &entry.servicePopup}) {
    popup->setEnabled(open);
  }
  enableTimeEditFields(entry, open);
  customer_ = currentActivity_->customer();
}

void TimeEntryEditor::showNamesOfActivity() {
  const EntryFields& entry = controls_.entry;
  if (const Service* service = currentActivity_->service()) {
    entry.servicePopup.setText(queries::nameOf(service));
  }
  if (const Customer* customer = currentActivity_->customer()) {
    entry.customerPopup.setText(queries::nameOf(customer));
  }
  // Kept: an activity without a job leaves the text that stood here before.
  if (const Job* job = currentActivity_->job()) entry.jobPopup.setText(queries::nameOf(job));
}

void TimeEntryEditor::accept() {
  const EntryTexts texts = textsOf(controls_.entry, session_);
  if (passes(timeEntryChecks(), texts, session_.ports().alerts)) {
    controls_.sheet.end(EditorSheet::kAccepted);
  }
}

void TimeEntryEditor::saveValues() {
  if (!currentEntry_ || !currentActivity_) return;
  TimeEntry& period = *currentEntry_;
  Activity& activity = *currentActivity_;
  const EntryTexts texts = textsOf(controls_.entry, session_);
  period.setNotes(controls_.notesField.text());
  activity.setNotes(controls_.activityNotesField.text());
  takeStart(period, texts, session_.notices());
  period.setDuration(durationInSeconds(texts.duration));

  const EntryFields& entry = controls_.entry;
  activity.setCustomer(findCustomerByName(context(), entry.customerPopup.text()));
  activity.setJob(findJobByName(context(), entry.jobPopup.text(), activity.customer()));
  activity.setService(findServiceByName(context(), entry.servicePopup.text()));
}

void TimeEntryEditor::controlEdited() {
  followNote(session_, controls_.notesLength, controls_.activityNotesField.text());
}

}  // namespace pendra
