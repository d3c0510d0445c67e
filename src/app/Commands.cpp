#include "Commands.h"

#include <QApplication>
#include <QMessageBox>
#include <QMetaObject>

#include "LinkServices.h"
#include "WindowLoader.h"
#include "document/Backup.h"
#include "document/DocumentClosing.h"
#include "document/DocumentLoading.h"
#include "platform/Resources.h"
#include "ui/LogPaneView.h"
#include "ui/TimerWindowController.h"
#include "ui_core/HelpAnchors.h"
#include "ui_core/ListEditor.h"
#include "ui_core/RunCommand.h"
#include "ui_core/ShellCommands.h"

namespace pendra {

namespace {

/// The command's title without its dots, for the notice line.
QString spokenName(const MenuModel& menus, Command command) {
  for (const Menu& menu : menus.menus()) {
    for (const MenuItem& item : menu.items) {
      if (item.command == command) return QString(item.title).remove(u'…');
    }
  }
  return {};
}

/// The place in the help book for a window or an alert, or for the window that it belongs to.
QString anchorOf(const QWidget* sender) {
  for (; sender; sender = sender->parentWidget()) {
    if (!sender->isWindow()) continue;
    if (const auto* alert = qobject_cast<const QMessageBox*>(sender)) {
      if (const auto anchor = help::anchorOfAlert(alert->text())) return *anchor;
    }
    if (const auto anchor = help::anchorOfWindow(sender->windowTitle())) return *anchor;
  }
  return help::kTimerWindow;
}

/// Hands an edit command to the field that has the keyboard focus.
bool invokeInFocus(const char* slot) {
  QWidget* focus = QApplication::focusWidget();
  return focus && QMetaObject::invokeMethod(focus, slot);
}

}  // namespace

Commands::Commands(Session& session, const MenuModel& menus, WindowLoader& windows, LinkServices& link,
                   std::function<void()> terminate)
    : session_(session),
      menus_(menus),
      windows_(windows),
      link_(link),
      terminate_(std::move(terminate)),
      documents_(session) {}

void Commands::perform(Command command, QWidget* sender) {
  runCommand(session_, spokenName(menus_, command), [&] {
    [[maybe_unused]] const bool done = performForProgram(command, sender) ||
                                       performForShell(command, sender) || performForDocument(command) ||
                                       performForVantor(command) || performForTimerWindow(command) ||
                                       performForLists(command) || performInFocus(command);
  });
}

bool Commands::performForProgram(Command command, QWidget* sender) {
  switch (command) {
    case Command::Quit:
      if (finishEditing(session_)) terminate_();
      return true;
    case Command::Close:
      if (sender) sender->window()->close();
      return true;
    case Command::About:
      windows_.load(Interface::AboutBox);
      return true;
    case Command::Preferences:
      windows_.showPreferences();
      return true;
    case Command::Welcome:
      windows_.load(Interface::WelcomeController);
      return true;
    default:
      return false;
  }
}

bool Commands::performForDocument(Command command) {
  switch (command) {
    case Command::New:
      newDoc(session_);
      return true;
    case Command::Open:
      openFile(session_);
      return true;
    case Command::BackUp:
      backUpDocument(session_);
      return true;
    case Command::TimerWindow:
      showTimerWindow(session_);
      return true;
    default:
      return false;
  }
}

bool Commands::performForVantor(Command command) {
  TimerWindowController* timer = windows_.timerWindow();
  switch (command) {
    case Command::SendAllTime:
      if (timer) link_.sendAllTime(*timer);
      return true;
    case Command::SendSelected:
      if (timer) link_.sendSelectedTime(*timer);
      return true;
    case Command::UpdateLists:
      link_.lists.updateLists();
      return true;
    case Command::ImportCustomers:
      link_.lists.importCustomers();
      return true;
    default:
      return false;
  }
}

bool Commands::performForShell(Command command, QWidget* sender) {
  Workspace& workspace = session_.ports().workspace;
  switch (command) {
    case Command::Help:
      showHelp({.text = anchorOf(sender)}, workspace, resourceFolder());
      return true;
    case Command::Feedback:
      submitFeedback(workspace);
      return true;
    case Command::Community:
      showCommunity(workspace);
      return true;
    case Command::Components:
      showComponents(workspace, resourceFolder());
      return true;
    default:
      return false;
  }
}

bool Commands::performForTimerWindow(Command command) {
  TimerWindowController* timer = windows_.timerWindow();
  if (!timer) return false;
  switch (command) {
    case Command::AddActivity:
      addActivity();
      return true;
    case Command::EditActivity:
      timer->editActivity();
      return true;
    case Command::EditSelected:
      timer->editSelected();
      return true;
    case Command::ToggleTimer:
      timer->state().toggleTimer();
      return true;
    case Command::MarkComplete:
      timer->state().markSelectedCompleted();
      return true;
    case Command::MakeCurrent:
      timer->state().makeCurrent();
      return true;
    case Command::MarkUnsent:
      timer->state().log().markSelectedUnsent();
      return true;
    case Command::ExportLog:
      timer->log().exportTimeLog();
      return true;
    default:
      return false;
  }
}

bool Commands::performForLists(Command command) {
  switch (command) {
    case Command::CustomerList:
      showCustomerList(session_);
      return true;
    case Command::ServicesList:
      showServicesList(session_);
      return true;
    case Command::Delete:
      deleteActivity();
      return true;
    case Command::DeleteCustomerOrJob:
      if (auto* list = customerEditor()) list->deleteRow();
      return true;
    case Command::MarkAll:
      if (ListEditor* list = listInFront()) list->markAllShown();
      return true;
    case Command::MarkNone:
      if (ListEditor* list = listInFront()) list->markNoneShown();
      return true;
    default:
      return false;
  }
}

bool Commands::performInFocus(Command command) {
  switch (command) {
    case Command::Cut:
      return invokeInFocus("cut");
    case Command::Copy:
      return invokeInFocus("copy");
    case Command::Paste:
      return invokeInFocus("paste");
    case Command::SelectAll:
      return invokeInFocus("selectAll");
    default:
      return false;
  }
}

ListEditor* Commands::customerEditor() const { return listEditorOf(session_.customerListController); }
ListEditor* Commands::servicesEditor() const { return listEditorOf(session_.servicesListController); }

ListEditor* Commands::listInFront() const {
  ListEditor* services = servicesEditor();
  const QWidget* active = QApplication::activeWindow();
  return services && (!customerEditor() || dynamic_cast<const ListEditor*>(active) == services)
             ? services
             : customerEditor();
}

void Commands::addActivity() {
  if (TimerWindowController* timer = windows_.timerWindow()) timer->addActivity();
}

void Commands::deleteActivity() {
  // Kept: a list editor that is open takes the command, also from behind; both ask before they delete.
  if (auto* list = customerEditor()) {
    list->deleteRow();
  } else if (auto* services = servicesEditor()) {
    services->deleteRow();
  } else if (TimerWindowController* timer = windows_.timerWindow()) {
    timer->deleteActivity();
  }
}

void Commands::openRecent(const QString& path) {
  runCommand(session_, path, [&] { [[maybe_unused]] const auto opened = documents_.open(path); });
  ensureAWindow(session_);
}

bool Commands::validate(const MenuItem& item) const { return validateMenuItem(item, state()); }

bool Commands::canDelete() const {
  TimerWindowController* timer = windows_.timerWindow();
  const auto* customers = customerEditor();
  const auto* services = servicesEditor();
  return pendra::canDelete({.timerWindowOpen = timer != nullptr,
                            .logSelected = timer && timer->state().log().numberOfSelectedRows() > 0,
                            .activitySelected = timer && timer->state().selectedActivity(),
                            .customerListOpen = customers != nullptr,
                            .customerSelected = customers && customers->isDeleteOK(),
                            .servicesListOpen = services != nullptr,
                            .serviceSelected = services && services->isDeleteOK()});
}

CommandState Commands::state() const {
  TimerWindowController* timer = windows_.timerWindow();
  const auto* customers = customerEditor();
  return {.documentOpen = session_.settings() != nullptr,
          .timerWindowOpen = timer != nullptr,
          .customerListOpen = customers != nullptr,
          .customerDeleteOK = customers && customers->isDeleteOK(),
          .listEditorOpen = customers || servicesEditor(),
          .canDelete = canDelete(),
          .editable = timer && timer->state().editable(),
          .exportable = timer && timer->state().exportable(),
          .canSend = timer && !session_.isStandalone() && timer->state().canSend(),
          .activitySelected = timer && timer->state().currentActivity(),
          .entrySelected = timer && timer->state().currentEntry()};
}

}  // namespace pendra
