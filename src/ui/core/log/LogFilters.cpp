
#include "LogSearch.h"
#include "model/Queries.h"
#include "platform/Preferences.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "store/ChangeSet.h"
#include "store/Predicate.h"
#include "ui_core/LogController.h"

namespace pendra {

namespace {

/// The first title of every filter limits nothing, whatever it is called and whoever is called so.
QString titleOfAll() { return tr("All"); }
bool isAll(const PopUp& popup) { return popup.selectedIndex() == 0; }

/// What a filter limits to; none when to nothing.
std::optional<QString> limitOf(const PopUp& popup) {
  return isAll(popup) ? std::nullopt : popup.selectedTitle();
}

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

/// What the filter limits to, or the name that the edit gave to that.
template <class Named>
std::optional<QString> limitAfter(const ChangeSet& changes, const PopUp& popup) {
  auto limit = limitOf(popup);
  if (!limit) return limit;
  for (const Named* one : changes.changed<Named>()) {
    if (changes.before(*one, "name") == PropertyValue(*limit)) return queries::nameOf(one);
  }
  return limit;
}

void choose(PopUp& popup, const std::optional<QString>& limit) {
  limit ? popup.selectTitle(*limit) : popup.selectAt(0);
}

}  // namespace

QString LogController::buildPredicate() const {
  QString filter;
  // The names stand in the text as they are: their quotes, stars and question marks act.
  if (const auto customer = limitOf(customerPopup)) {
    filter += formatted(u"customer.name LIKE \"%@\"", {*customer});
  }
  if (const auto job = limitOf(jobPopup)) {
    if (!filter.isEmpty()) filter += u" && ";
    filter += formatted(u"job.name LIKE \"%@\"", {*job});
  }
  if (const auto service = limitOf(servicePopup)) {
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
  return !isAll(customerPopup) || !isAll(jobPopup) || !isAll(servicePopup);
}

void LogController::reloadNames() {
  if (!context()) return;
  const Notifier::Change change(filtersChanges);
  for (PopUp* popup : {&customerPopup, &servicePopup, &jobPopup}) popup->reset(titleOfAll());
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
  const auto customer = limitAfter<Customer>(changes, customerPopup);
  const auto job = limitAfter<Job>(changes, jobPopup);
  const auto service = limitAfter<Service>(changes, servicePopup);
  reloadNames();
  chooseNames(customer, job, service);
  if (filtersByName()) rebuild();  // others may be called so, too
}

/// Where one of them is no more, none limits.
void LogController::chooseNames(const std::optional<QString>& customer, const std::optional<QString>& job,
                                const std::optional<QString>& service) {
  fillJobs(customer);
  choose(customerPopup, customer);
  choose(jobPopup, job);
  choose(servicePopup, service);
  const auto isLost = [](const PopUp& popup) { return popup.selectedIndex() < 0; };
  if (!isLost(customerPopup) && !isLost(jobPopup) && !isLost(servicePopup)) return;
  resetNameFilters();
  sayNamesAreAll(
      tr("Customer, job and service of the time log were set to “All”, because what they named is "
         "no more."));
}

void LogController::fillJobs(const std::optional<QString>& customer) {
  const Notifier::Change change(filtersChanges);
  jobPopup.reset(titleOfAll());
  if (!context() || !customer) return;
  for (const Customer* found : queries::customersNamed(*context(), *customer)) {
    for (const Job* job : found->jobs()) {
      const QString name = queries::nameOf(job);
      if (!name.isEmpty() && job->shown() == true) jobPopup.addItem(name);
    }
  }
}

void LogController::customerPicked(const PopUp& sender) {
  if (&sender != &customerPopup) return;
  fillJobs(limitOf(customerPopup));
  rebuild();
}

void LogController::resetNameFilters() {
  const Notifier::Change change(filtersChanges);
  fillJobs(std::nullopt);
  customerPopup.selectAt(0);
  servicePopup.selectAt(0);
  rebuild();
}

void LogController::reloadNamesFor(const Objects<TimeEntry>& inserted) {
  const Notifier::Change change(filtersChanges);
  const auto customer = limitOf(customerPopup);
  const auto job = limitOf(jobPopup);
  const auto service = limitOf(servicePopup);
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
  rebuild();
}

void LogController::sayNamesAreAll(const QString& text) {
  session_.notices().post({.key = QStringLiteral("filters"),
                           .text = text,
                           .actions = {},
                           .ofDocument = true,
                           .onlyInTimerWindow = true});
}

bool LogController::passesNameFilters(const TimeEntry& entry) const {
  if (!filtersByName()) return true;
  const auto filter = Predicate::parse(buildPredicate());
  return filter && entry.activity() && filter.value().matches(*entry.activity());
}

void LogController::showOnly(QDate first, QDate last, const std::optional<QString>& customer) {
  const Notifier::Change change(filtersChanges);
  clearFilters();
  startDateField = fieldDate(first, locale_);
  endDateField = fieldDate(last, locale_);
  rangePopup.selectAt(static_cast<int>(LogRange::Dates));
  if (customer) customerPopup.selectTitle(*customer);
  fillJobs(customer);
  rebuild();
}

bool LogController::isLimited() const {
  return filtersByName() || !startDateField.isEmpty() || !endDateField.isEmpty() || search_->isActive();
}

void LogController::showAll() {
  const Notifier::Change change(filtersChanges);
  chooseRange(LogRange::AnyTime);
  setSearch({});
  resetNameFilters();
}

void LogController::clearFilters() {
  showAll();
  if (hidesSubmitted()) setHidesSubmitted(false);
}

}  // namespace pendra
