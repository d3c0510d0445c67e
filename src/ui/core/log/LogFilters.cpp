#include "model/Queries.h"
#include "platform/DateTexts.h"
#include "platform/NaturalDate.h"
#include "platform/Preferences.h"
#include "platform/Text.h"
#include "store/ChangeSet.h"
#include "ui_core/LogController.h"

namespace pendra {

namespace {

const QString kAll = QStringLiteral("All");

/// The sorted names of those whose `shown` is present. Kept: a `shown` of false counts too, so that what
/// was hidden from the pick lists can still be filtered by.
class FilterNames {
 public:
  template <class Named>
  void collect(const Named* named) {
    if (named && named->shown()) names_ << queries::nameOf(named);
  }
  void addTo(PopUp& popup) {
    names_.removeDuplicates();
    queries::sortIgnoringCase(names_);
    for (const QString& name : std::as_const(names_)) {
      if (!name.isEmpty()) popup.addItem(name);
    }
  }

 private:
  QStringList names_;
};

/// The chosen title, or the name that the edit gave to whatever it named.
template <class Named>
QString chosenAfter(const ChangeSet& changes, const PopUp& popup) {
  QString chosen = popup.titleOfSelectedItem().value_or(kAll);
  for (const Named* one : changes.changed<Named>()) {
    if (changes.before(*one, "name") == PropertyValue(chosen)) return queries::nameOf(one);
  }
  return chosen;
}

}  // namespace

QString LogController::buildPredicate() const {
  QString filter;
  // The names stand in the text as they are: their quotes, stars and question marks act.
  if (const QString customer = customerPopup.titleOfSelectedItem().value_or(customerPopup.titles().first());
      customer != kAll) {
    filter += formatted(u"customer.name LIKE \"%@\"", {customer});
  }
  if (const auto job = jobPopup.titleOfSelectedItem(); job && *job != kAll) {
    if (!filter.isEmpty()) filter += u" && ";
    filter += formatted(u" job.name LIKE \"%@\"", {*job});  // Kept: the blank before the key
  }
  if (const auto service = servicePopup.titleOfSelectedItem(); service && *service != kAll) {
    if (!filter.isEmpty()) filter += u" && ";
    filter += formatted(u"service.name LIKE \"%@\"", {*service});
  }
  return filter;
}

std::optional<Instant> LogController::dateOf(const QString& field) const {
  if (field.isEmpty()) return std::nullopt;
  return dateWithNaturalLanguageString(field, session_.ports().clock.now(), session_.ports().calendar);
}

bool LogController::isReadable(const QString& dateField) const {
  return dateField.isEmpty() || dateOf(dateField).has_value();
}

bool LogController::hidesSubmitted() const {
  return session_.ports().defaults.boolean(preferences::kHideSubmitted) && !session_.isStandalone();
}

void LogController::setHidesSubmitted(bool hides) {
  session_.ports().defaults.setBoolean(preferences::kHideSubmitted, hides);
}

bool LogController::filtersByName() const {
  const auto isAll = [](const PopUp& popup) { return popup.titleOfSelectedItem() == kAll; };
  return !isAll(customerPopup) || !isAll(jobPopup) || !isAll(servicePopup);
}

void LogController::reloadNames() {
  if (!context()) return;
  const Notifier::Change change(filtersChanges);
  for (PopUp* popup : {&customerPopup, &servicePopup, &jobPopup}) popup->reset(kAll);
  FilterNames customers;
  FilterNames services;
  for (const Activity* activity : context()->all<Activity>()) {
    customers.collect(activity->customer());
    services.collect(activity->service());
  }
  customers.addTo(customerPopup);
  services.addTo(servicePopup);
}

void LogController::renameFilters(const ChangeSet& changes) {
  const Notifier::Change change(filtersChanges);
  const QString customer = chosenAfter<Customer>(changes, customerPopup);
  const QString job = chosenAfter<Job>(changes, jobPopup);
  const QString service = chosenAfter<Service>(changes, servicePopup);
  reloadNames();
  fillJobs(customer);
  customerPopup.selectItemWithTitle(customer);
  jobPopup.selectItemWithTitle(job);
  servicePopup.selectItemWithTitle(service);
  const auto isLost = [](const PopUp& popup) { return popup.indexOfSelectedItem() < 0; };
  if (isLost(customerPopup) || isLost(jobPopup) || isLost(servicePopup)) resetNameFilters();
  if (filtersByName()) reloadData();  // others may be called so, too
}

void LogController::fillJobs(const std::optional<QString>& customer) {
  const Notifier::Change change(filtersChanges);
  jobPopup.reset(kAll);
  if (!context() || !customer || *customer == kAll) return;
  for (const Customer* found : queries::customersNamed(*context(), *customer)) {
    for (const Job* job : found->jobs()) {
      const QString name = queries::nameOf(job);
      if (!name.isEmpty() && job->shown() == true) jobPopup.addItem(name);
    }
  }
}

void LogController::customerPicked(const PopUp& sender) {
  if (&sender != &customerPopup) return;
  fillJobs(customerPopup.titleOfSelectedItem());
  reloadData();
}

void LogController::resetNameFilters() {
  const Notifier::Change change(filtersChanges);
  fillJobs(customerPopup.titles().first());
  customerPopup.selectItemWithTitle(kAll);
  servicePopup.selectItemWithTitle(kAll);
  reloadData();
}

void LogController::reloadKeepingChoice() {
  const Notifier::Change change(filtersChanges);
  const int customer = customerPopup.indexOfSelectedItem();
  const int job = jobPopup.indexOfSelectedItem();
  const int service = servicePopup.indexOfSelectedItem();
  reloadNames();
  customerPopup.selectItemAtIndex(customer);
  servicePopup.selectItemAtIndex(service);
  // Kept: this undoes the two lines before it, and leaves one title for the job's index.
  resetNameFilters();
  jobPopup.selectItemAtIndex(job);
}

void LogController::showOnly(QDate first, QDate last, const std::optional<QString>& customer) {
  const Notifier::Change change(filtersChanges);
  clearFilters();
  const Calendar& calendar = session_.ports().calendar;
  startDateField = shortDate(calendar.startOfDay(first), calendar);
  endDateField = shortDate(calendar.startOfDay(last), calendar);
  if (customer) customerPopup.selectItemWithTitle(*customer);
  fillJobs(customer);
  reloadData();
  updateRunningEntries();
}

void LogController::clearFilters() {
  const Notifier::Change change(filtersChanges);
  startDateField.clear();
  endDateField.clear();
  resetNameFilters();
  if (hidesSubmitted()) setHidesSubmitted(false);
}

}  // namespace pendra
