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
  switch (listOf(controls_.entry, popup)) {
    case OfferedList::Customers:
      return queries::distinctNames(queries::shownCustomers(context()));
    case OfferedList::Services:
      return queries::distinctNames(queries::shownServices(context()));
    case OfferedList::Jobs:
      break;
  }
  return jobNames();
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
  const OfferedList list = listOf(controls_.entry, control);
  if (list == OfferedList::Customers) return mayLeaveCustomer();
  return list == OfferedList::Services ? mayLeaveService() : mayLeaveJob();
}

bool ActivityEditor::mayLeaveCustomer() {
  const QString name = controls_.entry.customerPopup.text();
  if (isBlank(name) || !queries::customersNamed(context(), name).empty()) return true;
  return takesUnknownName(
      session_, [&] { showChooseExistingCustomer(session_.ports().alerts); },
      [&] { return wantsToAdd(name, OfferedList::Customers); },
      [&] {
        addCustomer(context(), name);
        customerPicked();
      });
}

bool ActivityEditor::mayLeaveJob() {
  const QString customerName = controls_.entry.customerPopup.text();
  const QString name = controls_.entry.jobPopup.text();
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
  const auto refuse = [this] {
    session_.ports().alerts.runAlert(
        {.message = tr("Choose an existing job"),
         .informative =
             tr("When Pendra is linked to a company file, you can only choose a job already entered "
                "in Vantor. Choose an existing job to continue.")});
  };
  return takesUnknownName(
      session_, refuse, [&] { return wantsToAdd(name, OfferedList::Jobs); },
      [&] { addJob(*customers[0], name); });
}

bool ActivityEditor::mayLeaveService() {
  const QString name = controls_.entry.servicePopup.text();
  if (isBlank(name) || !queries::servicesNamed(context(), name).empty()) return true;
  return takesUnknownName(
      session_, [&] { showChooseExistingService(session_.ports().alerts, tr("Choose an existing service")); },
      [&] { return wantsToAdd(name, OfferedList::Services); }, [&] { addService(context(), name); });
}

bool ActivityEditor::wantsToAdd(const QString& name, OfferedList list) {
  return asksToAdd(session_.ports().alerts, name, nameOf(list));
}

}  // namespace pendra
