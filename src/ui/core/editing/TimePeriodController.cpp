#include "ui_core/TimePeriodController.h"

#include "model/DurationText.h"
#include "model/Queries.h"
#include "ui_core/NameLookups.h"
#include "ui_core/NoteLength.h"

namespace pendra {

TimePeriodController::TimePeriodController(Session& session, const TimePeriodControls& controls)
    : session_(session), controls_(controls) {}

void TimePeriodController::updateUI() {
  if (!myCurrentTimePeriod_ || !myCurrentActivity_) return;
  const TimePeriod& period = *myCurrentTimePeriod_;
  const EntryFields& entry = controls_.entry;
  // Kept: the job list follows the customer that the field held before.
  reloadComboxes();
  showNamesOfActivity();
  controls_.notesField.setStringValue(period.notes().value_or(QString()));
  const auto& activityNotes = myCurrentActivity_->notes();
  showNotesLength(controls_.notesLength, activityNotes.value_or(QString()));
  if (activityNotes) controls_.activityNotesField.setStringValue(*activityNotes);
  showStart(entry, period.start(), session_.ports().calendar);
  entry.durationField.setStringValue(durationText(period.storedDuration()));
  const bool open = !period.timeIsFixed();
  for (Control* popup : {&entry.customerPopup, &entry.jobPopup, &entry.servicePopup}) {
    popup->setEnabled(open);
  }
  enableTimeEditFields(entry, open);
  customer_ = myCurrentActivity_->customer();
}

void TimePeriodController::showNamesOfActivity() {
  const EntryFields& entry = controls_.entry;
  if (const Service* service = myCurrentActivity_->service()) {
    entry.servicePopup.setStringValue(queries::nameOf(service));
  }
  if (const Customer* customer = myCurrentActivity_->customer()) {
    entry.customerPopup.setStringValue(queries::nameOf(customer));
  }
  // Kept: an activity without a job leaves the text that stood here before.
  if (const Job* job = myCurrentActivity_->job()) entry.jobPopup.setStringValue(queries::nameOf(job));
}

void TimePeriodController::doSave() {
  const EntryTexts texts = textsOf(controls_.entry, session_);
  if (passes(timeEntryChecks(), texts, session_.ports().alerts)) {
    controls_.sheet.stopModal(EditorSheet::kAccepted);
  }
}

void TimePeriodController::saveValues() {
  if (!myCurrentTimePeriod_ || !myCurrentActivity_) return;
  TimePeriod& period = *myCurrentTimePeriod_;
  Activity& activity = *myCurrentActivity_;
  const EntryTexts texts = textsOf(controls_.entry, session_);
  period.setNotes(controls_.notesField.stringValue());
  activity.setNotes(controls_.activityNotesField.stringValue());
  takeStart(period, texts, session_.notices());
  period.setDuration(durationInSeconds(texts.duration));

  const EntryFields& entry = controls_.entry;
  activity.setCustomer(findCustomerByName(context(), entry.customerPopup.stringValue()));
  activity.setJob(findJobByName(context(), entry.jobPopup.stringValue(), activity.customer()));
  activity.setService(findServiceByName(context(), entry.servicePopup.stringValue()));
}

void TimePeriodController::controlTextDidChange() {
  const Notifier::Change change(notesLengthStringChanges);
  noteDidChange(session_, controls_.notesLength, controls_.activityNotesField.stringValue());
}

QString TimePeriodController::notesLengthString() const {
  return QString::number(controls_.activityNotesField.stringValue().size());
}

void TimePeriodController::showNoteLengthWarning() { pendra::showNoteLengthWarning(session_); }

}  // namespace pendra
