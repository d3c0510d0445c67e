#include "ui_core/CustomerListController.h"

#include "ListColumns.h"
#include "model/Queries.h"
#include "platform/Text.h"

namespace pendra {

namespace {

using namespace lists;

QString nameOfCustomer(const CustomerListRow& row) { return row.isJob ? QString() : row.name; }
QString nameOfJob(const CustomerListRow& row) { return row.isJob ? row.name : QString(); }
bool isShown(const CustomerListRow& row) { return row.checkbox; }

std::vector<Column<CustomerListRow>> columns(const CustomerListController& list) {
  return {nameColumn(list, QStringLiteral("customerName"), QStringLiteral("Customer"), nameOfCustomer),
          nameColumn(list, QStringLiteral("jobName"), QStringLiteral("Job"), nameOfJob),
          shownColumn(isShown)};
}

/// Customers and jobs are numbered apart; the last bit tells them apart.
quint64 identityOf(const CustomerListRow& row) {
  const ManagedObject* shown = row.isJob ? static_cast<const ManagedObject*>(row.job.get())
                                         : static_cast<const ManagedObject*>(row.customer.get());
  return shown ? static_cast<quint64>(shown->objectID()) * 2 + (row.isJob ? 1 : 0) : 0;
}

CustomerListRow rowOf(Customer& customer) {
  return {.isJob = false,
          .name = queries::nameOf(&customer),
          .checkbox = customer.shown().value_or(false),
          .customer = &customer,
          .job = {}};
}

CustomerListRow rowOf(Job& job) {
  return {.isJob = true,
          .name = queries::nameOf(&job),
          .checkbox = job.shown().value_or(false),
          .customer = job.customer(),
          .job = &job};
}

void setShown(CustomerListRow& row, bool shown) {
  row.checkbox = shown;
  if (row.isJob) {
    if (row.job) row.job->setShown(shown);
  } else if (row.customer) {
    row.customer->setShown(shown);
  }
}

}  // namespace

CustomerListController::CustomerListController(Session& session, TablePort& table, ListView& view)
    : ListController(session, table, view), rows_(columns(*this), {.identity = identityOf, .running = {}}) {}

std::vector<Customer*> CustomerListController::listedCustomers() const {
  if (searchString().isEmpty()) return context()->fetch<Customer>();
  const auto found = [this](const auto* named) {
    return queries::nameContains(named->name(), searchString());
  };
  return context()->fetch<Customer>([&](const Customer& customer) {
    const auto jobs = customer.jobs();
    return found(&customer) || std::any_of(jobs.begin(), jobs.end(), found);
  });
}

void CustomerListController::reloadData() {
  std::vector<CustomerListRow> rows;
  if (context()) {
    auto customers = listedCustomers();
    sortByName(customers);
    if (searchString().isEmpty()) rows.reserve(customers.size() + context()->all<Job>().size());
    const Customer* last = nullptr;
    for (Customer* customer : customers) {
      // Kept: of several customers of one name only the first is listed, with its own jobs.
      if (last && queries::compareNames(last->name(), customer->name()) == 0) continue;
      last = customer;
      rows.push_back(rowOf(*customer));
      for (Job* job : customer->jobs()) rows.push_back(rowOf(*job));
    }
  }
  rows_.setRows(std::move(rows));
  table().reloadData();
}

Job* CustomerListController::jobForRow(int row) const {
  const CustomerListRow* one = rows_.row(row);
  return one && one->isJob ? one->job.get() : nullptr;
}

Customer* CustomerListController::customerForRow(int row) const {
  const CustomerListRow* one = rows_.row(row);
  return one && !one->isJob ? one->customer.get() : nullptr;
}

void CustomerListController::setValue(const CellValue& value, const QString& column, int row) {
  const CustomerListRow* old = rows_.row(row);
  if (!old) return;
  if (const QString* name = std::get_if<QString>(&value)) return storeName(*old, *name, row);
  if (column != kCheckbox) return;
  CustomerListRow changed = *old;
  setShown(changed, std::get<bool>(value));
  rows_.replaceRow(row, std::move(changed));
  table().redrawRow(row);
}

void CustomerListController::storeName(CustomerListRow row, const QString& name, int index) {
  // Kept: a job's name is compared with the customers' names too.
  if (standalone() && !mayLeaveCustomer(name)) return;
  row.name = name;
  if (row.isJob) {
    if (row.job) row.job->setName(name);
    rows_.replaceRow(index, std::move(row));
    return table().redrawRow(index);
  }
  if (row.customer) row.customer->setName(name);
  reloadData();
}

bool CustomerListController::mayLeaveCustomer(const QString& name) {
  // While the alert is up the editor loses the keyboard and hands in its text once more.
  if (refusing_) return false;
  if (name.isEmpty() || !context() || queries::customersNamed(*context(), name).empty()) return true;
  refusing_ = true;
  session().ports().alerts.runAlert(
      {.style = Alert::Style::Warning,
       .message = formatted(u"%@ already exists!", {name}),
       .informative = QStringLiteral("Please choose a different name for the customer."),
       .buttons = {QStringLiteral("OK")}});
  refusing_ = false;
  // Kept: the row's number is passed for the column too.
  view().editColumn(table().selectedRow(), table().selectedRow());
  return false;
}

void CustomerListController::addNewCustomer() {
  if (!standalone() || !context()) return;
  auto& customer = insertLocal<Customer>(*context(), QStringLiteral("Customer"));
  // "index == %@": nothing writes it, so all customers count, the new one too.
  const auto customers = context()->all<Customer>();
  const auto number = std::count_if(customers.begin(), customers.end(),
                                    [&](const Customer* one) { return one->index() == customer.index(); });
  const auto numbered = [](auto n) { return formatted(u"Customer%@", {QString::number(n)}); };
  const bool taken = !queries::customersNamed(*context(), numbered(number)).empty();
  // Kept: one try more, and no further look whether that name is taken too.
  customer.setName(numbered(taken ? number + 1 : number));
  rows_.insertRow(0, rowOf(customer));
  table().reloadData();
  table().selectRow(0);
}

void CustomerListController::addNewJob() {
  const auto row = selectedRow();
  Customer* customer = row && standalone() ? customerForRow(*row) : nullptr;
  if (!customer) return;
  auto& job = insertLocal<Job>(*context(), QStringLiteral("Job Name"));
  job.setCustomer(customer);
  rows_.insertRow(*row + 1, rowOf(job));
  table().reloadData();
  table().selectRow(*row + 1);
}

void CustomerListController::setAllShown(bool shown) {
  rows_.changeRows([shown](CustomerListRow& row) { setShown(row, shown); });
  table().reloadData();
}

bool CustomerListController::validateMenuItem(ListCommand item) const {
  if (item == ListCommand::MarkAllShown || item == ListCommand::MarkNoneShown) return true;
  if (!standalone()) return false;
  if (item != ListCommand::AddNewJob) return true;
  const auto row = selectedRow();
  return row && !rows_.row(*row)->isJob;
}

}  // namespace pendra
