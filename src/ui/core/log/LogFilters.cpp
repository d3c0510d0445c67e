#include <QCoreApplication>

#include "LogSearch.h"
#include "model/Queries.h"
#include "platform/Preferences.h"
#include "platform/Text.h"
#include "store/ChangeSet.h"
#include "store/Predicate.h"
#include "ui_core/LogController.h"

namespace pendra {

namespace {

const QString kAll = QStringLiteral("All");

QString tr(const char* text) { return QCoreApplication::translate("pendra::LogController", text); }

/// The sorted names of those whose `shown` is present. One of false counts too, so that what was hidden from
/// the pick lists can still be filtered by.
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
    filter += formatted(u"job.name LIKE \"%@\"", {*job});
  }
  if (const auto service = servicePopup.titleOfSelectedItem(); service && *service != kAll) {
    if (!filter.isEmpty()) filter += u" && ";
    filter += formatted(u"service.name LIKE \"%@\"", {*service});
  }
  return filter;
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
  chooseNames(customer, job, service);
  if (filtersByName()) reloadData();  // others may be called so, too
}

/// Where one of them is no more, none limits.
void LogController::chooseNames(const QString& customer, const QString& job, const QString& service) {
  fillJobs(customer);
  customerPopup.selectItemWithTitle(customer);
  jobPopup.selectItemWithTitle(job);
  servicePopup.selectItemWithTitle(service);
  const auto isLost = [](const PopUp& popup) { return popup.indexOfSelectedItem() < 0; };
  if (!isLost(customerPopup) && !isLost(jobPopup) && !isLost(servicePopup)) return;
  resetNameFilters();
  sayNamesAreAll(
      tr("Customer, job and service of the time log were set to “All”, because what they named is "
         "no more."));
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

void LogController::reloadNamesFor(const Objects<TimeEntry>& inserted) {
  const Notifier::Change change(filtersChanges);
  const QString customer = customerPopup.titleOfSelectedItem().value_or(kAll);
  const QString job = jobPopup.titleOfSelectedItem().value_or(kAll);
  const QString service = servicePopup.titleOfSelectedItem().value_or(kAll);
  const bool filtered = filtersByName();
  reloadNames();
  chooseNames(customer, job, service);
  const auto isHidden = [this](const TimeEntry* entry) { return !passesNameFilters(*entry); };
  if (filtered && std::any_of(inserted.begin(), inserted.end(), isHidden)) {
    resetNameFilters();
    sayNamesAreAll(
        tr("Customer, job and service of the time log were set to “All”, because they would hide "
           "the new entry."));
  }
  reloadData();
}

void LogController::sayNamesAreAll(const QString& text) {
  session_.notices().post({.key = QStringLiteral("filters"),
                           .text = text,
                           .actions = {},
                           .ofDocument = true,
                           .onlyInTimerWindow = true});
}

bool LogController::passesNameFilters(const TimeEntry& entry) const {
  const auto filter = Predicate::parse(buildPredicate());
  return !filtersByName() || (filter && entry.activity() && filter.value().matches(*entry.activity()));
}

void LogController::showOnly(QDate first, QDate last, const std::optional<QString>& customer) {
  const Notifier::Change change(filtersChanges);
  clearFilters();
  startDateField = fieldDate(first, locale_);
  endDateField = fieldDate(last, locale_);
  rangePopup.selectItemAtIndex(static_cast<int>(LogRange::Dates));
  if (customer) customerPopup.selectItemWithTitle(*customer);
  fillJobs(customer);
  reloadData();
  updateRunningEntries();
}

bool LogController::isLimited() const {
  return filtersByName() || !startDateField.isEmpty() || !endDateField.isEmpty() || search_->isActive();
}

void LogController::showAll() {
  const Notifier::Change change(filtersChanges);
  chooseRange(LogRange::AnyTime);
  setSearch({});
  resetNameFilters();
  updateRunningEntries();
}

void LogController::clearFilters() {
  showAll();
  if (hidesSubmitted()) setHidesSubmitted(false);
}

}  // namespace pendra
