#include "ui_core/CustomerListController.h"

#include "ListColumns.h"
#include "model/Queries.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

using namespace lists;

QString nameOfCustomer(const CustomerListRow& row) { return queries::nameOf(row.customer.get()); }
QString nameOfJob(const CustomerListRow& row) { return queries::nameOf(row.job.get()); }
bool isShown(const CustomerListRow& row) {
  const auto shown = row.isJob ? (row.job ? row.job->shown() : std::nullopt)
                               : (row.customer ? row.customer->shown() : std::nullopt);
  return shown.value_or(false);
}

std::vector<Column<CustomerListRow>> columns(const Session& session) {
  return {nameColumn(session, QStringLiteral("customerName"), tr("Customer"), nameOfCustomer),
          nameColumn(session, QStringLiteral("jobName"), tr("Job"), nameOfJob), shownColumn(isShown)};
}

const ManagedObject* objectOf(const CustomerListRow& row) {
  return row.isJob ? static_cast<const ManagedObject*>(row.job.get()) : row.customer.get();
}

}  // namespace

CustomerListController::CustomerListController(Session& session, ListView& view)
    : ListOf(session, view, columns(session),
             {.identity = [](const CustomerListRow& row) { return identityOf(objectOf(row)); }}) {}

std::vector<Customer*> CustomerListController::listedCustomers() const {
  if (searchString().isEmpty()) return context()->fetch<Customer>();
  const auto found = [this](const auto* named) {
    return queries::nameContains(named->name(), searchString());
  };
  return context()->fetch<Customer>([&](const Customer& customer) {
    const auto jobs = customer.jobs();
    return wasAdded(customer) || found(&customer) || std::any_of(jobs.begin(), jobs.end(), found);
  });
}

std::vector<CustomerListRow> CustomerListController::listedRows() const {
  const auto added = [this](const ManagedObject& object) { return wasAdded(object); };
  std::vector<CustomerListRow> rows;
  if (context()) {
    auto customers = listedCustomers();
    sortByName(customers);
    putAddedFirst(customers, added);
    if (searchString().isEmpty()) rows.reserve(customers.size() + context()->all<Job>().size());
    const Customer* last = nullptr;
    for (Customer* customer : customers) {
      // Kept: promised to those who keep the lists: of several customers of one name only the first is
      // listed, with its own jobs.
      if (last && queries::compareNames(last->name(), customer->name()) == 0) continue;
      if (!added(*customer)) last = customer;
      rows.push_back({.isJob = false, .customer = customer, .job = {}});
      auto jobs = customer->jobs().copy();
      putAddedFirst(jobs, added);
      for (Job* job : jobs) rows.push_back({.isJob = true, .customer = {}, .job = job});
    }
  }
  return rows;
}

void CustomerListController::documentEdited(const ChangeSet& changes) {
  const bool other = !changes.inserted<Customer>().empty() || !changes.deleted<Customer>().empty() ||
                     !changes.inserted<Job>().empty() || !changes.deleted<Job>().empty() ||
                     changes.changedAny<Customer>("name") || changes.changedAny<Job>("customer");
  if (other) rows().updateRows(listedRows());
  if (!other && !changes.touches<Customer>() && !changes.touches<Job>()) return;
  rows().changeRows([changed = changedObjects<Customer, Job>(changes)](const CustomerListRow& row) {
    return changed.contains(objectOf(row));
  });
}

Job* CustomerListController::jobForRow(int row) const {
  const CustomerListRow* one = rows().row(row);
  return one ? one->job.get() : nullptr;
}

Customer* CustomerListController::customerForRow(int row) const {
  const CustomerListRow* one = rows().row(row);
  return one ? one->customer.get() : nullptr;
}

QString CustomerListController::nameInRow(int row) const {
  const Job* job = jobForRow(row);
  return job ? queries::nameOf(job) : queries::nameOf(customerForRow(row));
}

bool CustomerListController::takeName(int row, const QString& name) {
  // Kept: promised to those who keep the lists: a job is not called as a customer either.
  if (standalone() && !mayLeaveCustomer(name)) return false;
  Job* job = jobForRow(row);
  Customer* customer = customerForRow(row);
  if (!job && !customer) return true;
  edit(formatted(tr("Rename of %@"), {nameInRow(row)}), [&] {
    if (job) job->setName(name);
    if (customer) customer->setName(name);
  });
  if (customer) settleAdded();
  return true;
}

void CustomerListController::markShown(int row, bool shown) {
  if (Job* job = jobForRow(row)) job->setShown(shown);
  if (Customer* customer = customerForRow(row)) customer->setShown(shown);
}

bool CustomerListController::mayLeaveCustomer(const QString& name) {
  // While the alert is up the editor loses the keyboard and hands in its text once more.
  if (refusing_) return false;
  if (name.isEmpty() || !context() || queries::customersNamed(*context(), name).empty()) return true;
  refusing_ = true;
  session().ports().alerts.runAlert({.style = Alert::Style::Warning,
                                     .message = formatted(tr("%@ already exists!"), {name}),
                                     .informative = tr("Please choose a different name for the customer."),
                                     .buttons = {tr("OK")}});
  refusing_ = false;
  // Kept: promised to those who keep the lists: the row's number is passed for the column too.
  view().editColumn(selection().row(), selection().row());
  return false;
}

namespace {

/// A name for the newest customer.
QString numberedName(const ObjectContext& context, const Customer& made) {
  // "index == %@": nothing writes it, so all customers count, the new one too.
  const auto customers = context.all<Customer>();
  const auto number = std::count_if(customers.begin(), customers.end(),
                                    [&](const Customer* one) { return one->index() == made.index(); });
  const auto numbered = [](auto n) { return formatted(u"Customer%@", {QString::number(n)}); };
  const bool taken = !queries::customersNamed(context, numbered(number)).empty();
  // Kept: promised to those who keep the lists: one try more, whether or not that name is taken too.
  return numbered(taken ? number + 1 : number);
}

}  // namespace

void CustomerListController::addNewCustomer() {
  if (!standalone() || !context()) return;
  add(tr("Add Customer"), [this] {
    auto& customer = insertLocal<Customer>(*context(), QStringLiteral("Customer"));
    customer.setName(numberedName(*context(), customer));
    return &customer;
  });
}

void CustomerListController::addNewJob() {
  Customer* customer = customerForRow(selection().row());
  if (!customer || !standalone()) return;
  add(tr("Add Job"), [&] {
    auto& job = insertLocal<Job>(*context(), QStringLiteral("Job Name"));
    job.setCustomer(customer);
    return &job;
  });
}

}  // namespace pendra
