#include "link/AffectedActivities.h"
#include "model/Queries.h"
#include "ui_core/EditorFlows.h"
#include "ui_core/NameLookups.h"
#include "ui_core/NoteLength.h"

namespace pendra {

void ActivitySheetFlow::showActivitySheet(bool forNew) {
  if (!forNew && !timer_.currentActivity()) return;
  editor_.reloadNames();
  const Ref<Activity> previous(timer_.currentActivity());
  if (forNew) {
    openForNew();
  } else {
    openForSelected();
  }
  const int code = editor_.controls().sheet.run();

  Activity* activity = editor_.currentActivity();
  if (!activity) return;  // its document closed under the sheet
  if (code == EditorSheet::kAccepted) {
    timer_.setCurrentActivity(activity);
    applyTo(*activity, forNew);
  } else if (forNew) {
    activity->context()->deleteObject(*activity);
    timer_.setCurrentActivity(previous.get());
  }
}

void ActivitySheetFlow::openForNew() {
  ObjectContext& context = *timer_.session().context();
  timer_.setCurrentActivity(&createNewActivity(context, {}, {}, {}));
  const EntryFields& entry = editor_.controls().entry;
  for (Control* field :
       {&entry.startTimeField, &entry.startTimeFieldAMPM, &entry.startDateField, &entry.durationField}) {
    field->setText(QString());
  }
  updateSheetForNewActivity();
  entry.customerPopup.takeFocus();
  editor_.setShouldDisplayPastTimeEntries(false);
  editor_.setLabels(true);
}

void ActivitySheetFlow::openForSelected() {
  editor_.controls().notesField.takeFocus();
  updateSheetFromSelected();
  editor_.enableOk();
  editor_.setShouldDisplayPastTimeEntries(true);
  editor_.setLabels(false);
}

void ActivitySheetFlow::hand() {
  Activity* activity = timer_.currentActivity();
  editor_.setCurrentActivity(activity);
  editor_.controls().littleSaveButton.setEnabled(false);
  editor_.controls().billableCheckbox.setChecked(activity->billable() == true);
  editor_.controls().autoStartCheckbox.setChecked(activity->shouldAutoStartTimer() == true);
}

void ActivitySheetFlow::updateSheetForNewActivity() {
  hand();
  const ActivityEditorControls& controls = editor_.controls();
  editor_.reloadNames();
  editor_.reloadData();
  controls.notesField.setText(QString());
  controls.entry.jobPopup.setEnabled(false);
  controls.entry.customerPopup.setText(QString());
  editor_.customerPicked();
  controls.entry.servicePopup.setText(QString());
  editor_.enableOk();
  editor_.enableTimeEditFields(false);
  showNotesLength(controls.notesLength, controls.notesField.text());
}

void ActivitySheetFlow::updateSheetFromSelected() {
  hand();
  const Activity& activity = *timer_.currentActivity();
  const ActivityEditorControls& controls = editor_.controls();
  editor_.reloadData();
  controls.notesField.setText(activity.notes().value_or(QString()));
  if (const Customer* customer = activity.customer()) {
    controls.entry.customerPopup.setText(queries::nameOf(customer));
  }
  editor_.customerPicked();
  if (const Job* job = activity.job()) controls.entry.jobPopup.setText(queries::nameOf(job));
  if (const Service* service = activity.service()) {
    controls.entry.servicePopup.setText(queries::nameOf(service));
  }
  editor_.clearTableSelection();
  showNotesLength(controls.notesLength, controls.notesField.text());
}

void ActivitySheetFlow::applyTo(Activity& activity, bool isNew) {
  // Each name that is not found ends it there; what was applied before stays, and nothing is said.
  const EntryFields& entry = editor_.controls().entry;
  ObjectContext& context = *activity.context();
  Customer* customer = findCustomerByName(context, entry.customerPopup.text());
  if (!customer) return;
  activity.setCustomer(customer);
  Service* service = findServiceByName(context, entry.servicePopup.text());
  if (!service) return;
  activity.setService(service);
  const QString jobName = entry.jobPopup.text();
  Job* job = findJobByName(context, jobName, customer);
  // Kept: a job name that is not found leaves the job, even one of another customer.
  if (job || jobName.isEmpty()) activity.setJob(job);
  applyRest(activity, isNew);
}

void ActivitySheetFlow::applyRest(Activity& activity, bool isNew) {
  const ActivityEditorControls& controls = editor_.controls();
  forgetLoss(timer_.session(), activity);
  activity.setNotes(controls.notesField.text());
  activity.setBillable(controls.billableCheckbox.isChecked());
  activity.setShouldAutoStartTimer(controls.autoStartCheckbox.isChecked());
  if (isNew && activity.shouldAutoStartTimer() == true) timer_.toggleTimer();
  timer_.reloadData();
  timer_.updateCustomerJobLabel();
  timer_.log().reloadKeepingChoice();
  if (const auto row = timer_.rowOfCurrentActivity()) activities_.selectRow(*row);
}

}  // namespace pendra
