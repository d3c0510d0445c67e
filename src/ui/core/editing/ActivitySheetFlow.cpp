#include "link/AffectedActivities.h"
#include "model/Queries.h"
#include "ui_core/EditorFlows.h"
#include "ui_core/NameLookups.h"
#include "ui_core/NoteLength.h"

namespace pendra {

void ActivitySheetFlow::showActivitySheet(bool forNew) {
  if (!forNew && !timer_.myCurrentActivity()) return;
  editor_.reloadComboxes();
  const Ref<Activity> previous(timer_.myCurrentActivity());
  if (forNew) {
    openForNew();
  } else {
    openForSelected();
  }
  const int code = editor_.controls().sheet.runModal();

  Activity* activity = editor_.myCurrentActivity();
  if (!activity) return;  // its document closed under the sheet
  if (code == EditorSheet::kAccepted) {
    timer_.setMyCurrentActivity(activity);
    applyTo(*activity, forNew);
  } else if (forNew) {
    activity->context()->deleteObject(*activity);
    timer_.setMyCurrentActivity(previous.get());
  }
}

void ActivitySheetFlow::openForNew() {
  ObjectContext& context = *timer_.session().myContext();
  timer_.setMyCurrentActivity(&createNewActivity(context, {}, {}, {}));
  const EntryFields& entry = editor_.controls().entry;
  for (Control* field :
       {&entry.startTimeField, &entry.startTimeFieldAMPM, &entry.startDateField, &entry.durationField}) {
    field->setStringValue(QString());
  }
  updateSheetForNewActivity();
  entry.customerPopup.makeFirstResponder();
  editor_.setShouldDisplayPastTimeEntries(false);
  editor_.setLabels(true);
}

void ActivitySheetFlow::openForSelected() {
  editor_.controls().notesField.makeFirstResponder();
  updateSheetFromSelected();
  editor_.pickAService();
  editor_.setShouldDisplayPastTimeEntries(true);
  editor_.setLabels(false);
}

void ActivitySheetFlow::hand() {
  Activity* activity = timer_.myCurrentActivity();
  editor_.setMyCurrentActivity(activity);
  editor_.controls().littleSaveButton.setEnabled(false);
  editor_.controls().billableCheckbox.setChecked(activity->billable() == true);
  editor_.controls().autoStartCheckbox.setChecked(activity->shouldAutoStartTimer() == true);
}

void ActivitySheetFlow::updateSheetForNewActivity() {
  hand();
  const ActivityEditorControls& controls = editor_.controls();
  editor_.reloadComboxes();
  editor_.reloadData();
  controls.notesField.setStringValue(QString());
  controls.entry.jobPopup.setEnabled(false);
  controls.entry.customerPopup.setStringValue(QString());
  editor_.pickACustomer();
  controls.entry.servicePopup.setStringValue(QString());
  editor_.pickAService();
  editor_.enableTimeEditFields(false);
  showNotesLength(controls.notesLength, controls.notesField.stringValue());
}

void ActivitySheetFlow::updateSheetFromSelected() {
  hand();
  const Activity& activity = *timer_.myCurrentActivity();
  const ActivityEditorControls& controls = editor_.controls();
  editor_.reloadData();
  controls.notesField.setStringValue(activity.notes().value_or(QString()));
  if (const Customer* customer = activity.customer()) {
    controls.entry.customerPopup.setStringValue(queries::nameOf(customer));
  }
  editor_.pickACustomer();
  if (const Job* job = activity.job()) controls.entry.jobPopup.setStringValue(queries::nameOf(job));
  if (const Service* service = activity.service()) {
    controls.entry.servicePopup.setStringValue(queries::nameOf(service));
  }
  editor_.clearTableSelection();
  showNotesLength(controls.notesLength, controls.notesField.stringValue());
}

void ActivitySheetFlow::applyTo(Activity& activity, bool isNew) {
  // Each name that is not found ends it there; what was applied before stays, and nothing is said.
  const EntryFields& entry = editor_.controls().entry;
  ObjectContext& context = *activity.context();
  Customer* customer = findCustomerByName(context, entry.customerPopup.stringValue());
  if (!customer) return;
  activity.setCustomer(customer);
  Service* service = findServiceByName(context, entry.servicePopup.stringValue());
  if (!service) return;
  activity.setService(service);
  const QString jobName = entry.jobPopup.stringValue();
  Job* job = findJobByName(context, jobName, customer);
  // Kept: a job name that is not found leaves the job, even one of another customer.
  if (job || jobName.isEmpty()) activity.setJob(job);
  applyRest(activity, isNew);
}

void ActivitySheetFlow::applyRest(Activity& activity, bool isNew) {
  const ActivityEditorControls& controls = editor_.controls();
  forgetLoss(timer_.session(), activity);
  activity.setNotes(controls.notesField.stringValue());
  activity.setBillable(controls.billableCheckbox.isChecked());
  activity.setShouldAutoStartTimer(controls.autoStartCheckbox.isChecked());
  if (isNew && activity.shouldAutoStartTimer() == true) timer_.toggleTimer();
  timer_.reloadData();
  timer_.updateCustomerJobLabel();
  timer_.log().reloadPopupsToSameChoice();
  if (const auto row = timer_.indexSetOfCurActivity()) activities_.selectRow(*row);
}

}  // namespace pendra
