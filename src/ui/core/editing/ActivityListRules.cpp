#include "model/Queries.h"
#include "ui_core/ActivityEditor.h"
#include "ui_core/ListSteps.h"

namespace pendra {

void ActivityEditor::reloadNames() {
  if (!session_.context()) return;
  const auto customers = queries::distinctNames(queries::shownCustomers(context()));
  customerNames_ = customers.isEmpty() ? std::nullopt : std::optional(customers);
  const auto services = queries::shownServices(context());
  const auto names = queries::distinctNames(services);
  // Kept: service items that are all nameless leave the list as it was.
  if (services.empty() || !names.isEmpty()) serviceNames_ = names;
  customerPicked();
}

void ActivityEditor::customerPicked() {
  const EntryFields& entry = controls_.entry;
  const QString name = entry.customerPopup.text();
  if (name.isEmpty()) return;
  const auto customers = queries::customersNamed(context(), name);
  if (customers.empty()) return;
  jobNames_.clear();
  for (const Customer* customer : customers) {
    for (const Job* job : customer->jobs()) {
      if (job->shown() == true && job->name() && !jobNames_.contains(*job->name())) jobNames_ << *job->name();
    }
  }
  queries::sortIgnoringCase(jobNames_);
  entry.jobPopup.setEnabled(!jobNames_.isEmpty() || isStandalone());
  entry.jobPopup.setText(QString());
  // Kept: a customer without jobs leaves OK as it was.
  if (!jobNames_.isEmpty()) enableOk();
}

void ActivityEditor::enableOk() {
  const EntryFields& entry = controls_.entry;
  controls_.okButton.setEnabled(!isBlank(entry.servicePopup.text()) && !isBlank(entry.customerPopup.text()));
}

QStringList ActivityEditor::namesFor(const Control& popup) const {
  if (&popup == &controls_.entry.customerPopup) return customerNames_.value_or(QStringList());
  return &popup == &controls_.entry.servicePopup ? serviceNames_ : jobNames_;
}

bool ActivityEditor::mayLeave(const Control& control) {
  if (&control == &controls_.entry.servicePopup) return mayLeaveService();
  if (&control == &controls_.entry.customerPopup) return mayLeaveCustomer();
  return mayLeaveJob();
}

bool ActivityEditor::mayLeaveCustomer() {
  const Control& popup = controls_.entry.customerPopup;
  const QString name = popup.text();
  if (isBlank(name) || !queries::customersNamed(context(), name).empty()) return true;
  if (!isStandalone()) {
    showChooseExistingCustomer(session_.ports().alerts);
    return false;
  }
  if (!wantsToAdd(name, popup)) return false;
  addCustomer(context(), name);
  customerPicked();
  jobNames_.clear();
  return true;
}

bool ActivityEditor::mayLeaveJob() {
  const Control& popup = controls_.entry.jobPopup;
  const QString customerName = controls_.entry.customerPopup.text();
  const QString name = popup.text();
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

bool ActivityEditor::mayLeaveService() {
  const Control& popup = controls_.entry.servicePopup;
  const QString name = popup.text();
  if (isBlank(name) || !queries::servicesNamed(context(), name).empty()) return true;
  if (!isStandalone()) {
    showChooseExistingService(session_.ports().alerts, "Choose an existing service");
    return false;
  }
  if (!wantsToAdd(name, popup)) return false;
  addService(context(), name);  // Kept: the list of services is not refilled
  return true;
}

bool ActivityEditor::wantsToAdd(const QString& name, const Control& toList) {
  return asksToAdd(session_.ports().alerts, name, listNameFor(toList));
}

QString ActivityEditor::listNameFor(const Control& popup) const {
  return pendra::listNameFor(controls_.entry, popup);
}

}  // namespace pendra
