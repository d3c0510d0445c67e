#include "ui_core/ServicesListController.h"

#include "ListColumns.h"
#include "model/Queries.h"

namespace pendra {

namespace {

using namespace lists;

QString nameOfService(const ServicesListRow& row) { return row.serviceName; }
bool isShown(const ServicesListRow& row) { return row.checkbox.value_or(false); }

std::vector<Column<ServicesListRow>> columns(const ServicesListController& list) {
  return {nameColumn(list, QStringLiteral("serviceName"), QStringLiteral("Service"), nameOfService),
          shownColumn(isShown)};
}

quint64 identityOf(const ServicesListRow& row) {
  return row.service ? static_cast<quint64>(row.service->objectID()) : 0;
}

ServicesListRow rowOf(Service& service) {
  return {.serviceName = queries::nameOf(&service), .checkbox = service.shown(), .service = &service};
}

void setShown(ServicesListRow& row, bool shown) {
  row.checkbox = shown;
  if (row.service) row.service->setShown(shown);
}

}  // namespace

ServicesListController::ServicesListController(Session& session, TablePort& table, ListView& view)
    : ListController(session, table, view), rows_(columns(*this), {.identity = identityOf, .running = {}}) {}

void ServicesListController::reloadData() {
  std::vector<Service*> services;
  if (context()) {
    services = context()->fetch<Service>([this](const Service& service) {
      return searchString().isEmpty() || queries::nameContains(service.name(), searchString());
    });
  }
  sortByName(services);
  std::vector<ServicesListRow> rows;
  rows.reserve(services.size());
  for (Service* service : services) rows.push_back(rowOf(*service));
  rows_.setRows(std::move(rows));
  table().reloadData();
}

void ServicesListController::setValue(const CellValue& value, const QString& column, int row) {
  const ServicesListRow* old = rows_.row(row);
  if (!old) return;
  ServicesListRow changed = *old;
  const QString* name = std::get_if<QString>(&value);
  if (name) {
    changed.serviceName = *name;
    if (changed.service) changed.service->setName(*name);
  } else if (column == kCheckbox) {
    setShown(changed, std::get<bool>(value));
  }
  rows_.replaceRow(row, std::move(changed));
  if (name) {
    reloadData();
  } else {
    table().redrawRow(row);
  }
}

void ServicesListController::addNewService() {
  if (!standalone() || !context()) return;
  auto& service = insertLocal<Service>(*context(), QStringLiteral("Service Name"));
  rows_.insertRow(0, rowOf(service));
  table().reloadData();
  table().selectRow(0);
}

void ServicesListController::setAllShown(bool shown) {
  rows_.changeRows([shown](ServicesListRow& row) { setShown(row, shown); });
  table().reloadData();
}

void ServicesListController::deleteRow() {
  const auto row = selectedRow();
  if (!standalone() || !row || !context()) return;
  const Ref<Service> service = rows_.row(*row)->service;
  if (!service || !confirmDelete(queries::nameOf(service.get())) || !service) return;
  context()->deleteObject(*service);
  reloadData();
}

bool ServicesListController::validateMenuItem(ListCommand item) const {
  return item == ListCommand::MarkAllShown || item == ListCommand::MarkNoneShown || standalone();
}

}  // namespace pendra
