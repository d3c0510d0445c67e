#include "ui/EditorSheets.h"

#include <QMainWindow>
#include <QMenuBar>

namespace pendra {

EditorSheets::EditorSheets(TimerState& timer, CommandTarget& target, QWidget& window)
    : session_(timer.session()),
      target_(target),
      activitySheet_(*new ActivitySheet(timer.session(), &window)),
      timeEntrySheet_(*new TimeEntrySheet(timer.session(), &window)),
      activityFlow_(timer, activitySheet_.controller()),
      timeEntryFlow_(timer, timeEntrySheet_.controller()) {
  QObject::connect(&activitySheet_, &ActivitySheet::serviceItemsWanted, &activitySheet_,
                   [this] { showServiceItems(); });
}

/// A window that a sheet opens takes everything until it is closed, as the sheet does below it; the commands
/// in its menus are for when nothing waits.
void EditorSheets::showServiceItems() {
  target_.perform(Command::ServicesList, &activitySheet_);
  auto* list = dynamic_cast<QMainWindow*>(session_.servicesListController);
  if (!list) return;
  list->hide();
  list->setWindowModality(Qt::ApplicationModal);
  list->menuBar()->setEnabled(false);
  session_.servicesListController->bringToFront();
}

}  // namespace pendra
