#include "CustomerListWindow.h"

#include <QPushButton>

#include "platform/Preferences.h"
#include "ui/HelpPlace.h"
#include "ui/ListWindows.h"
#include "ui/RowTableView.h"
#include "ui_core/HelpAnchors.h"

namespace pendra {

CustomerListWindow::CustomerListWindow(const WindowFrame& frame)
    : ListWindow(frame, {.title = tr("Customers and Jobs"),
                         .table = tr("Customers and jobs"),
                         .add = tr("Add &Customer"),
                         .addAccessible = tr("Add customer"),
                         .empty = tr("No customers yet. Add the ones that you work for."),
                         .emptyLinked = tr("No customers yet. “Update Lists from Vantor” brings them."),
                         .place = preferences::kCustomerListPlace}) {
  auto controller = std::make_unique<CustomerListController>(session(), *this);
  customers_ = controller.get();
  setHelpAnchor(*this, help::kCustomersAndJobs);
  setUpAdding(addJobButton(), tr("Add &Job"), tr("Add job"), [this] { addJob(); });
  start(std::move(controller));
}

void CustomerListWindow::standaloneChanged() {
  ListWindow::standaloneChanged();
  addJobButton().setVisible(customers_->standalone());
}

void CustomerListWindow::addNew() {
  customers_->addNewCustomer();
  editName(table().selectedRow());
}

void CustomerListWindow::addJob() {
  if (!takeEdit()) return;
  const int rows = customers_->table().rowCount();
  customers_->addNewJob();
  if (customers_->table().rowCount() > rows) editName(table().selectedRow());
}

std::unique_ptr<ListEditorWindow> makeCustomerList(const WindowFrame& frame) {
  return std::make_unique<CustomerListWindow>(frame);
}

}  // namespace pendra
