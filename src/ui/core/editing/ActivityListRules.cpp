#include "model/Queries.h"
#include "platform/Translation.h"
#include "ui_core/ActivityEditor.h"
#include "ui_core/ListSteps.h"

namespace pendra {

void ActivityEditor::customerPicked() {
  const EntryFields& entry = controls_.entry;
  const QString name = entry.customerPopup.text();
  if (name.isEmpty() || queries::customersNamed(context(), name).empty()) return;
  entry.jobPopup.setEnabled(isStandalone() || !jobNames().isEmpty());
  entry.jobPopup.setText(QString());
}

QStringList ActivityEditor::namesFor(const Control& popup) const {
  if (!session_.document()) return {};
  if (&popup == &controls_.entry.jobPopup) return jobNames();
  return &popup == &controls_.entry.servicePopup ? queries::distinctNames(queries::shownServices(context()))
                                                 : queries::distinctNames(queries::shownCustomers(context()));
}

/// The jobs that are offered for the customer that is typed in.
QStringList ActivityEditor::jobNames() const {
  QStringList names;
  for (const Customer* customer : queries::customersNamed(context(), controls_.entry.customerPopup.text())) {
    for (const Job* job : customer->jobs()) {
      if (job->shown() == true && job->name()) names << *job->name();
    }
  }
  names.removeDuplicates();
  queries::sortIgnoringCase(names);
  return names;
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
  return true;
}

bool ActivityEditor::mayLeaveJob() {
  const Control& popup = controls_.entry.jobPopup;
  const QString customerName = controls_.entry.customerPopup.text();
  const QString name = popup.text();
  if (customerName.isEmpty() || name.isEmpty()) return true;
  if (isBlank(name)) {
    session_.ports().alerts.runAlert({.message = tr("Please enter a proper job name."), .informative = {}});
    return false;
  }
  // Kept: promised to those who use the sheet: with an unknown customer any job may stand.
  const auto customers = queries::customersNamed(context(), customerName);
  if (customers.empty()) return true;
  for (const Customer* customer : customers) {
    for (const Job* job : customer->jobs()) {
      if (job->name() == name) return true;
    }
  }
  if (!isStandalone()) {
    session_.ports().alerts.runAlert(
        {.message = tr("Choose an existing job"),
         .informative =
             tr("When Pendra is linked to a company file, you can only choose a job already entered "
                "in Vantor. Choose an existing job to continue.")});
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
    showChooseExistingService(session_.ports().alerts, tr("Choose an existing service"));
    return false;
  }
  if (!wantsToAdd(name, popup)) return false;
  addService(context(), name);
  return true;
}

bool ActivityEditor::wantsToAdd(const QString& name, const Control& toList) {
  return asksToAdd(session_.ports().alerts, name, listNameFor(controls_.entry, toList));
}

}  // namespace pendra
