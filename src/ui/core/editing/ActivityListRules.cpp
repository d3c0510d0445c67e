#include "model/ArrayExtensions.h"
#include "model/Queries.h"
#include "ui_core/ListSteps.h"
#include "ui_core/NewActivityController.h"

namespace pendra {

void NewActivityController::reloadComboxes() {
  if (!session_.myContext()) return;
  const auto customers = queries::distinctNames(queries::shownCustomers(context()));
  customerDataArray_ = customers.isEmpty() ? std::nullopt : std::optional(customers);
  const auto services = queries::shownServices(context());
  const auto names = queries::distinctNames(services);
  // Kept: service items that are all nameless leave the list as it was.
  if (services.empty() || !names.isEmpty()) serviceDataArray_ = names;
  pickACustomer();
}

void NewActivityController::pickACustomer() {
  const EntryFields& entry = controls_.entry;
  const QString name = entry.customerPopup.stringValue();
  if (name.isEmpty()) return;
  const auto customers = queries::customersNamed(context(), name);
  if (customers.empty()) return;
  jobDataArray_.clear();
  for (const Customer* customer : customers) {
    for (const Job* job : customer->jobs()) {
      if (job->shown() == true) addStringIfContentsAreUnique(jobDataArray_, job->name());
    }
  }
  queries::sortIgnoringCase(jobDataArray_);
  entry.jobPopup.setEnabled(!jobDataArray_.isEmpty() || isStandalone());
  entry.jobPopup.setStringValue(QString());
  // Kept: a customer without jobs leaves OK as it was.
  if (!jobDataArray_.isEmpty()) pickAService();
}

void NewActivityController::pickAService() {
  const EntryFields& entry = controls_.entry;
  controls_.okButton.setEnabled(!isBlank(entry.servicePopup.stringValue()) &&
                                !isBlank(entry.customerPopup.stringValue()));
}

QStringList NewActivityController::dataArrayForCombobox(const Control& popup) const {
  if (&popup == &controls_.entry.customerPopup) return customerDataArray_.value_or(QStringList());
  return &popup == &controls_.entry.servicePopup ? serviceDataArray_ : jobDataArray_;
}

bool NewActivityController::textShouldEndEditing(const Control& control) {
  if (&control == &controls_.entry.servicePopup) return serviceShouldEndEditing();
  if (&control == &controls_.entry.customerPopup) return customerShouldEndEditing();
  return jobShouldEndEditing();
}

bool NewActivityController::customerShouldEndEditing() {
  const Control& popup = controls_.entry.customerPopup;
  const QString name = popup.stringValue();
  if (isBlank(name) || !queries::customersNamed(context(), name).empty()) return true;
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

bool NewActivityController::jobShouldEndEditing() {
  const Control& popup = controls_.entry.jobPopup;
  const QString customerName = controls_.entry.customerPopup.stringValue();
  const QString name = popup.stringValue();
  if (customerName.isEmpty() || name.isEmpty()) return true;
  if (isBlank(name)) {
    session_.ports().alerts.runAlert({.message = "Please enter a proper job name.", .informative = {}});
    return false;
  }
  // Kept: with an unknown customer any job may stand.
  const auto customers = queries::customersNamed(context(), customerName);
  if (customers.empty()) return true;
  for (const Customer* customer : customers) {
    for (const Job* job : customer->jobs()) {
      if (job->name() == name) return true;
    }
  }
  if (!isStandalone()) {
    session_.ports().alerts.runAlert(
        {.message = "Choose an existing job",
         .informative = "When Pendra is linked to a company file, you can only choose a job already entered "
                        "in Vantor. Choose an existing job to continue."});
    return false;
  }
  Customer* first = customers[0];
  if (!wantsToAdd(name, popup)) return false;
  addJob(*first, name);
  return true;
}

bool NewActivityController::serviceShouldEndEditing() {
  const Control& popup = controls_.entry.servicePopup;
  const QString name = popup.stringValue();
  if (isBlank(name) || !queries::servicesNamed(context(), name).empty()) return true;
  if (!isStandalone()) {
    showChooseExistingService(session_.ports().alerts, "Choose an existing service");
    return false;
  }
  if (!wantsToAdd(name, popup)) return false;
  addService(context(), name);  // Kept: the list of services is not refilled
  return true;
}

bool NewActivityController::wantsToAdd(const QString& name, const Control& toList) {
  return asksToAdd(session_.ports().alerts, name, nameForPopup(toList));
}

QString NewActivityController::nameForPopup(const Control& popup) const {
  return pendra::nameForPopup(controls_.entry, popup);
}

}  // namespace pendra
