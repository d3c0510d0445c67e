#include "model/Queries.h"
#include "ui_core/ListSteps.h"
#include "ui_core/TimePeriodController.h"

namespace pendra {

void TimePeriodController::reloadComboxes() {
  if (!session_.myContext()) return;
  customerDataArray_ = queries::distinctNames(queries::shownCustomers(context()));
  serviceDataArray_ = queries::distinctNames(queries::shownServices(context()));
  pickACustomer();
  controls_.entry.jobPopup.setEnabled(isStandalone());
}

void TimePeriodController::pickACustomer() {
  const EntryFields& entry = controls_.entry;
  const QString name = entry.customerPopup.stringValue();
  if (name.isEmpty()) {
    entry.jobPopup.setStringValue(QString());
    return;
  }
  const auto customers = queries::customersNamed(context(), name);
  if (customers.empty()) return;
  jobDataArray_.clear();
  for (Customer* customer : customers) {
    // The job's text goes only when the customer is another one than before.
    if (customer != customer_.get()) entry.jobPopup.setStringValue(QString());
    for (const Job* job : customer->jobs()) {
      const QString jobName = queries::nameOf(job);
      if (!jobName.isEmpty() && job->shown() == true) jobDataArray_ << jobName;
    }
    customer_ = customer;
  }
  queries::sortIgnoringCase(jobDataArray_);
  if (jobDataArray_.isEmpty()) entry.jobPopup.setStringValue(QString());
  entry.jobPopup.setEnabled(!jobDataArray_.isEmpty() || isStandalone());
}

const QStringList& TimePeriodController::dataArrayForCombobox(const Control& popup) const {
  if (&popup == &controls_.entry.customerPopup) return customerDataArray_;
  return &popup == &controls_.entry.servicePopup ? serviceDataArray_ : jobDataArray_;
}

bool TimePeriodController::textShouldEndEditing(const Control& control) {
  if (&control == &controls_.entry.servicePopup) return serviceShouldEndEditing();
  if (&control == &controls_.entry.customerPopup) return customerShouldEndEditing();
  return jobShouldEndEditing();
}

// Kept: unlike in the activity editor, blanks alone are a name here, for customers and for service items.
bool TimePeriodController::customerShouldEndEditing() {
  const Control& popup = controls_.entry.customerPopup;
  const QString name = popup.stringValue();
  if (name.isEmpty() || !queries::customersNamed(context(), name).empty()) return true;
  if (!isStandalone()) {
    showChooseExistingCustomer(session_.ports().alerts);
    return false;
  }
  if (!wantsToAdd(name, popup)) return false;
  addCustomer(context(), name);
  pickACustomer();
  jobDataArray_.clear();
  return true;
}

bool TimePeriodController::serviceShouldEndEditing() {
  const Control& popup = controls_.entry.servicePopup;
  const QString name = popup.stringValue();
  if (name.isEmpty() || !queries::servicesNamed(context(), name).empty()) return true;
  if (!isStandalone()) {
    showChooseExistingService(session_.ports().alerts, "Choose an existing service item");
    return false;
  }
  if (!wantsToAdd(name, popup)) return false;
  addService(context(), name);
  return true;
}

// Kept: a job is never added from here, and nothing is said; an unknown customer holds the field.
bool TimePeriodController::jobShouldEndEditing() const {
  const QString customerName = controls_.entry.customerPopup.stringValue();
  const QString name = controls_.entry.jobPopup.stringValue();
  if (customerName.isEmpty() || name.isEmpty()) return true;
  for (const Customer* customer : queries::customersNamed(context(), customerName)) {
    for (const Job* job : customer->jobs()) {
      if (job->name() == name) return true;
    }
  }
  return false;
}

bool TimePeriodController::wantsToAdd(const QString& name, const Control& toList) {
  // Kept: asked twice, and only the second answer counts.
  std::ignore = asksToAdd(session_.ports().alerts, name, nameForPopup(toList));
  return asksToAdd(session_.ports().alerts, name, nameForPopup(toList));
}

QString TimePeriodController::nameForPopup(const Control& popup) const {
  return pendra::nameForPopup(controls_.entry, popup);
}

}  // namespace pendra
