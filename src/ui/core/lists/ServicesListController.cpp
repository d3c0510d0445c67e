#include "ui_core/ServicesListController.h"

#include "DeletionText.h"
#include "ListColumns.h"
#include "model/Queries.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

using namespace lists;

QString nameOfService(const ServicesListRow& row) { return queries::nameOf(row.service.get()); }
bool isShown(const ServicesListRow& row) { return row.service && row.service->shown().value_or(false); }

std::vector<Column<ServicesListRow>> columns(const Session& session) {
  return {nameColumn(session, QStringLiteral("serviceName"), tr("Service"), nameOfService),
          shownColumn(isShown)};
}

}  // namespace

ServicesListController::ServicesListController(Session& session, ListView& view)
    : ListOf(session, view, columns(session),
             {.identity = [](const ServicesListRow& row) { return identityOf(row.service.get()); }}) {}

std::vector<ServicesListRow> ServicesListController::listedRows() const {
  std::vector<Service*> services;
  if (context()) {
    services = context()->fetch<Service>([this](const Service& service) {
      return wasAdded(service) || searchString().isEmpty() ||
             queries::nameContains(service.name(), searchString());
    });
  }
  sortByName(services);
  putAddedFirst(services, [this](const Service& service) { return wasAdded(service); });
  std::vector<ServicesListRow> rows;
  rows.reserve(services.size());
  for (Service* service : services) rows.push_back({service});
  return rows;
}

void ServicesListController::documentEdited(const ChangeSet& changes) {
  if (!changes.touches<Service>()) return;
  const bool other = !changes.inserted<Service>().empty() || !changes.deleted<Service>().empty() ||
                     changes.changedAny<Service>("name");
  if (other) rows().updateRows(listedRows());
  rows().changeRows([changed = changedObjects<Service>(changes)](const ServicesListRow& row) {
    return changed.contains(row.service.get());
  });
}

Service* ServicesListController::serviceForRow(int row) const {
  const ServicesListRow* one = rows().row(row);
  return one ? one->service.get() : nullptr;
}

QString ServicesListController::nameInRow(int row) const { return queries::nameOf(serviceForRow(row)); }

bool ServicesListController::takeName(int row, const QString& name) {
  Service* service = serviceForRow(row);
  if (!service) return true;
  edit(formatted(tr("Rename of %@"), {nameInRow(row)}), [&] { service->setName(name); });
  settleAdded();
  return true;
}

void ServicesListController::markShown(int row, bool shown) {
  if (Service* service = serviceForRow(row)) service->setShown(shown);
}

void ServicesListController::addNewService() {
  if (!standalone() || !context()) return;
  add(tr("Add Service Item"),
      [this] { return &insertLocal<Service>(*context(), QStringLiteral("Service Name")); });
}

void ServicesListController::deleteRow() {
  const Ref<Service> service(serviceForRow(selection().row()));
  if (!standalone() || !service) return;
  const QString name = queries::nameOf(service.get());
  if (confirmDelete(name, lossSentence(service->activities(), standalone())) && service) {
    deleteNamed(*service, name);
  }
}

}  // namespace pendra
