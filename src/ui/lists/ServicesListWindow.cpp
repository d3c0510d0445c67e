#include "ServicesListWindow.h"

#include <QPushButton>

#include "platform/Preferences.h"
#include "ui/HelpPlace.h"
#include "ui/ListWindows.h"
#include "ui/RowTableView.h"
#include "ui_core/HelpAnchors.h"

namespace pendra {

ServicesListWindow::ServicesListWindow(const WindowFrame& frame)
    : ListWindow(frame, {.title = tr("Service Items"),
                         .table = tr("Service items"),
                         .add = tr("Add &Service Item"),
                         .addAccessible = tr("Add service item"),
                         .empty = tr("No service items yet. Add the kinds of work that you bill."),
                         .emptyLinked = tr("No service items yet. “Update Lists from Vantor” brings them."),
                         .place = preferences::kServicesListPlace}) {
  auto controller = std::make_unique<ServicesListController>(session(), *this);
  services_ = controller.get();
  setHelpAnchor(*this, help::kServiceItems);
  addJobButton().hide();
  start(std::move(controller));
}

void ServicesListWindow::addNew() {
  services_->addNewService();
  editName(table().selectedRow());
}

std::unique_ptr<ListEditorWindow> makeServicesList(const WindowFrame& frame) {
  return std::make_unique<ServicesListWindow>(frame);
}

}  // namespace pendra
