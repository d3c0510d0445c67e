#pragma once
// A menu item is known by its command and its tag, never by its title: titles are what people read, tags
// are what rules and the help book are keyed by.

#include <QString>
#include <QStringList>
#include <vector>

#include "document/Windows.h"
#include "platform/Notifier.h"

namespace pendra {

/// Everything that a menu item can ask for.
enum class Command {
  About,
  Preferences,
  Quit,
  New,
  Open,
  OpenRecent,
  Close,
  SendAllTime,
  UpdateLists,
  ImportCustomers,
  BackUp,
  ExportLog,
  Cut,
  Copy,
  Paste,
  SelectAll,
  Delete,
  EditSelected,
  AddActivity,
  EditActivity,
  ToggleTimer,
  MarkComplete,
  MakeCurrent,
  SendSelected,
  MarkUnsent,
  CustomerList,
  ServicesList,
  DeleteCustomerOrJob,
  MarkAll,
  MarkNone,
  TimerWindow,
  OpenWindows,
  Help,
  Welcome,
  Feedback,
  Community,
  Components,
};

struct MenuItem {
  Command command;
  QString title;
  int tag = 0;
  QStringList keys = {};     ///< the first is shown; all act
  bool startsGroup = false;  ///< a line stands above it
  bool enabled = true;       ///< false: disabled for good, whatever the rules say
};

struct Menu {
  QString title;
  std::vector<MenuItem> items;
};

/// The one menu bar of the program; every top-level window shows it whole.
class MenuModel final : public VantorMenus {
 public:
  MenuModel();

  [[nodiscard]] const std::vector<Menu>& menus() const { return menus_; }
  /// Takes effect for the windows that are open and for every later one.
  void setVantorItemsShown(bool shown) override;
  [[nodiscard]] Notifier& changes() { return changes_; }

 private:
  std::vector<Menu> menus_;
  bool vantorItemsShown_ = true;
  Notifier changes_;
};

/// What the enabling rules look at.
struct CommandState {
  bool documentOpen = false;
  bool timerWindowOpen = false;
  bool customerListOpen = false;
  bool customerDeleteOK = false;
  bool listEditorOpen = false;
  bool canDelete = false;
  bool editable = false;
  bool exportable = false;
  bool canSend = false;
  bool activitySelected = false;
  bool entrySelected = false;
};

/// Whether a command may run now. Asked when a menu opens and again when the command is triggered, because
/// a shortcut does not pass through the menu.
[[nodiscard]] bool validateMenuItem(const MenuItem& item, const CommandState& state);

/// Whether Delete applies: where a list editor is open its selection decides, the service list's last.
struct DeleteState {
  bool timerWindowOpen = false;
  bool logSelected = false;
  bool activitySelected = false;
  bool customerListOpen = false;
  bool customerSelected = false;
  bool servicesListOpen = false;
  bool serviceSelected = false;
};
[[nodiscard]] bool canDelete(const DeleteState& state);

}  // namespace pendra
