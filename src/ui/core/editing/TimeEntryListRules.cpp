#include "model/Queries.h"
#include "platform/Translation.h"
#include "ui_core/ListSteps.h"
#include "ui_core/TimeEntryEditor.h"

namespace pendra {

void TimeEntryEditor::reloadNames() {
  if (!session_.context()) return;
  customerNames_ = queries::distinctNames(queries::shownCustomers(context()));
  serviceNames_ = queries::distinctNames(queries::shownServices(context()));
  refillJobs();
  controls_.entry.jobPopup.setEnabled(isStandalone());
}

void TimeEntryEditor::customerPicked() {
  refillJobs();
  showEchoes();
}

void TimeEntryEditor::refillJobs() {
  const EntryFields& entry = controls_.entry;
  const QString name = entry.customerPopup.text();
  if (name.isEmpty()) {
    entry.jobPopup.setText(QString());
    return;
  }
  const auto customers = queries::customersNamed(context(), name);
  if (customers.empty()) return;
  jobNames_.clear();
  for (Customer* customer : customers) {
    // The job's text goes only when the customer is another one than before.
    if (customer != customer_.get()) entry.jobPopup.setText(QString());
    for (const Job* job : customer->jobs()) {
      const QString jobName = queries::nameOf(job);
      if (!jobName.isEmpty() && job->shown() == true) jobNames_ << jobName;
    }
    customer_ = customer;
  }
  queries::sortIgnoringCase(jobNames_);
  if (jobNames_.isEmpty()) entry.jobPopup.setText(QString());
  entry.jobPopup.setEnabled(!jobNames_.isEmpty() || isStandalone());
}

const QStringList& TimeEntryEditor::namesFor(const Control& popup) const {
  const OfferedList list = listOf(controls_.entry, popup);
  if (list == OfferedList::Customers) return customerNames_;
  return list == OfferedList::Services ? serviceNames_ : jobNames_;
}

bool TimeEntryEditor::mayLeave(const Control& control) {
  const OfferedList list = listOf(controls_.entry, control);
  if (list == OfferedList::Customers) return mayLeaveCustomer();
  return list == OfferedList::Services ? mayLeaveService() : mayLeaveJob();
}

// Kept: promised to those who use the editor: unlike in the activity editor, blanks alone are a name here,
// for customers and for service items.
bool TimeEntryEditor::mayLeaveCustomer() {
  const QString name = controls_.entry.customerPopup.text();
  if (name.isEmpty() || !queries::customersNamed(context(), name).empty()) return true;
  return takesUnknownName(
      session_, [&] { showChooseExistingCustomer(session_.ports().alerts); },
      [&] { return wantsToAdd(name, OfferedList::Customers); },
      [&] {
        addCustomer(context(), name);
        customerPicked();
        jobNames_.clear();
      });
}

bool TimeEntryEditor::mayLeaveService() {
  const QString name = controls_.entry.servicePopup.text();
  if (name.isEmpty() || !queries::servicesNamed(context(), name).empty()) return true;
  return takesUnknownName(
      session_,
      [&] { showChooseExistingService(session_.ports().alerts, tr("Choose an existing service item")); },
      [&] { return wantsToAdd(name, OfferedList::Services); }, [&] { addService(context(), name); });
}

// Kept: promised to those who use the editor: a job is never added from here, and no alert is shown; an
// unknown customer holds the field. Why stands beside it.
bool TimeEntryEditor::mayLeaveJob() const {
  const QString customerName = controls_.entry.customerPopup.text();
  const QString name = controls_.entry.jobPopup.text();
  if (customerName.isEmpty() || name.isEmpty() || !isTouched(controls_.entry.jobPopup)) return true;
  for (const Customer* customer : queries::customersNamed(context(), customerName)) {
    for (const Job* job : customer->jobs()) {
      if (job->name() == name) return true;
    }
  }
  return false;
}

bool TimeEntryEditor::wantsToAdd(const QString& name, OfferedList list) {
  // Kept: promised to those who use the editor: it is asked twice, and only the second answer counts.
  std::ignore = asksToAdd(session_.ports().alerts, name, nameOf(list));
  return asksToAdd(session_.ports().alerts, name, nameOf(list));
}

}  // namespace pendra
