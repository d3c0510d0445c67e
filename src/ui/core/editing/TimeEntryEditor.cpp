#include "ui_core/TimeEntryEditor.h"

#include "model/DurationText.h"
#include "model/Queries.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "ui_core/NameLookups.h"
#include "ui_core/NoteLength.h"

namespace pendra {

TimeEntryEditor::TimeEntryEditor(Session& session, const TimeEntryEditorControls& controls)
    : session_(session), controls_(controls) {}

void TimeEntryEditor::show(TimeEntry& entry) {
  currentEntry_ = &entry;
  currentActivity_ = entry.activity();
  if (!currentActivity_) return;
  touched_.clear();
  lengthRuns_ = entry.isRunning();
  // Kept: promised to those who use the editor: the job list follows the customer that the field held before.
  reloadNames();
  showNamesOfActivity();
  controls_.notesField.setText(entry.notes().value_or(QString()));
  const auto& activityNotes = currentActivity_->notes();
  showNotesLength(controls_.notesLength, activityNotes.value_or(QString()));
  if (activityNotes) controls_.activityNotesField.setText(*activityNotes);
  showStart(controls_.entry, entry.start(), session_.ports().calendar);
  controls_.entry.durationField.setText(durationText(entry.storedDuration()));
  enableFields();
  customer_ = currentActivity_->customer();
  showEchoes();
}

void TimeEntryEditor::showNamesOfActivity() {
  const EntryFields& entry = controls_.entry;
  if (const Service* service = currentActivity_->service()) {
    entry.servicePopup.setText(queries::nameOf(service));
  }
  if (const Customer* customer = currentActivity_->customer()) {
    entry.customerPopup.setText(queries::nameOf(customer));
  }
  // Kept: promised to those who use the editor: an activity without a job leaves the text that stood here.
  if (const Job* job = currentActivity_->job()) entry.jobPopup.setText(queries::nameOf(job));
}

void TimeEntryEditor::enableFields() {
  const EntryFields& entry = controls_.entry;
  const bool open = !currentEntry_->timeIsFixed();
  for (Control* popup : {&entry.customerPopup, &entry.jobPopup, &entry.servicePopup}) {
    popup->setEnabled(open);
  }
  enableTimeEditFields(entry, open);
}

EntryTexts TimeEntryEditor::texts() const { return textsOf(controls_.entry, session_); }

void TimeEntryEditor::tick() {
  if (currentEntry_ && currentEntry_->isRunning()) showEchoes();
}

/// Counted from the start that OK will leave.
void TimeEntryEditor::showRunningLength() {
  const auto typed = typedStart(*currentEntry_, texts());
  const Instant now = session_.ports().clock.now();
  const Instant start = typed ? *typed : currentEntry_->start().value_or(now);
  controls_.entry.durationField.setText(durationText(std::trunc(now - start)));
}

void TimeEntryEditor::accept() {
  if (!currentEntry_ || currentEntry_->timeIsFixed()) return controls_.sheet.end(EditorSheet::kAccepted);
  EntryTexts typed = texts();
  if (lengthRuns_) typed.duration.clear();  // it is not typed
  if (namesMayStand() && passes(timeEntryChecks(), typed, session_.ports().alerts)) {
    controls_.sheet.end(EditorSheet::kAccepted);
  }
}

bool TimeEntryEditor::namesMayStand() {
  const EntryFields& entry = controls_.entry;
  for (Control* popup : {&entry.customerPopup, &entry.jobPopup, &entry.servicePopup}) {
    if (!isTouched(*popup)) continue;
    if (!mayLeave(*popup)) {
      popup->takeFocus();
      return false;
    }
    if (popup == &entry.customerPopup) customerPicked();
  }
  return true;
}

void TimeEntryEditor::saveValues() {
  if (!currentEntry_ || !currentActivity_) return;
  TimeEntry& entry = *currentEntry_;
  Activity& activity = *currentActivity_;
  const bool open = !entry.timeIsFixed();
  const auto start = open ? startToStore(entry, texts(), session_.notices()) : std::nullopt;
  std::ignore = context().edit(tr("Edit of an Entry"), [&] {
    if (isTouched(controls_.notesField)) entry.setNotes(controls_.notesField.text());
    if (isTouched(controls_.activityNotesField)) activity.setNotes(controls_.activityNotesField.text());
    if (!open) return;
    if (lengthRuns_) {  // also when it was stopped meanwhile: nobody has typed a length
      entry.setStart(start);
    } else {
      storeTime(entry, start, controls_.entry.durationField.text());
    }
    storeNames(activity);
  });
}

/// Another customer has other jobs, so a job that was not chosen anew goes with the old one.
void TimeEntryEditor::storeNames(Activity& activity) {
  const EntryFields& entry = controls_.entry;
  const Customer* before = activity.customer();
  if (isTouched(entry.customerPopup)) {
    activity.setCustomer(findCustomerByName(context(), entry.customerPopup.text()));
  }
  if (isTouched(entry.jobPopup)) {
    activity.setJob(findJobByName(context(), entry.jobPopup.text(), activity.customer()));
  } else if (activity.customer() != before) {
    activity.setJob(nullptr);
  }
  if (isTouched(entry.servicePopup)) {
    activity.setService(findServiceByName(context(), entry.servicePopup.text()));
  }
}

void TimeEntryEditor::controlEdited(const Control& control) {
  touched_ << &control;
  followNote(session_, controls_.notesLength, controls_.activityNotesField.text());
  showEchoes();
}

void TimeEntryEditor::showEchoes() {
  EntryEchoes echoes;
  if (currentEntry_ && currentActivity_ && !currentEntry_->timeIsFixed()) {
    if (currentEntry_->isRunning()) showRunningLength();
    const EntryFields& entry = controls_.entry;
    echoes.names = namesEcho();
    echoes.job = jobEcho();
    echoTime(echoes, *currentEntry_, texts(),
             {.start = isTouched(entry.startDateField) || isTouched(entry.startTimeField) ||
                       isTouched(entry.startTimeFieldAMPM),
              .length = isTouched(entry.durationField)});
  }
  controls_.echoes.showEchoes(echoes);
}

/// How far a changed name goes; before that, which of the names shown is left over from another activity.
Echo TimeEntryEditor::namesEcho() const {
  const EntryFields& entry = controls_.entry;
  const Activity& activity = *currentActivity_;
  if (isTouched(entry.customerPopup) || isTouched(entry.jobPopup) || isTouched(entry.servicePopup)) {
    return entriesEcho(activity.entries().size());
  }
  const auto isLeftOver = [](const Control& popup, const void* named) {
    return !named && !popup.text().isEmpty();
  };
  QString text;
  if (isLeftOver(entry.servicePopup, activity.service())) text = tr("This activity has no service item");
  if (isLeftOver(entry.jobPopup, activity.job())) text = tr("This activity has no job");
  if (isLeftOver(entry.customerPopup, activity.customer())) text = tr("This activity has no customer");
  return {text, Echo::Tone::Information};
}

/// Why the job's field cannot be left, or that OK leaves the job out.
Echo TimeEntryEditor::jobEcho() const {
  const EntryFields& entry = controls_.entry;
  const QString customer = entry.customerPopup.text();
  if (mayLeaveJob()) {
    const bool isLeftOut =
        isTouched(entry.jobPopup) && !entry.jobPopup.text().isEmpty() && customer.isEmpty();
    return {isLeftOut ? tr("A job without a customer is left out") : QString(), Echo::Tone::Warning};
  }
  return {formatted(tr("No job of %@ has this name"), {customer}), Echo::Tone::Warning};
}

}  // namespace pendra
