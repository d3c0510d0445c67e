#pragma once
// A command is known by its enum and by its tag, never by its title: titles are what people read, tags are
// what scripts and the help book are keyed by.

#include <QStringList>
#include <span>

namespace pendra {

/// Everything that a menu item can ask for.
enum class Command {
  About,
  Preferences,
  QuickEntry,
  Quit,
  New,
  Open,
  Close,
  SendAllTime,
  UpdateLists,
  ImportCustomers,
  BackUp,
  Restore,
  ExportLog,
  Undo,
  Redo,
  Cut,
  Copy,
  Paste,
  SelectAll,
  Find,
  Delete,
  EditSelected,
  SplitEntry,
  DuplicateEntries,
  MergeEntries,
  StartAgain,
  AddActivity,
  EditActivity,
  ToggleTimer,
  StartEarlier,
  StopEarlier,
  ChooseKey,
  MarkComplete,
  Favourite,
  MakeCurrent,
  SendSelected,
  MarkUnsent,
  CompletedActivities,
  CustomerList,
  ServicesList,
  DeleteCustomerOrJob,
  MarkAll,
  MarkNone,
  TimerWindow,
  Report,
  Help,
  Welcome,
  Feedback,
  Community,
  Components,
};
inline constexpr int kCommandCount = static_cast<int>(Command::Components) + 1;

struct CommandContext;

/// A command: what a menu shows of it, when it may run, and what it does.
struct CommandRow {
  Command command;
  const char* title;         ///< in English, to be translated in the context "pendra::Commands"
  int tag = 0;               ///< 0: it has none
  const char* keys = "";     ///< parted by blanks; the first is shown, all act
  bool startsGroup = false;  ///< a line stands above it
  /// Asked when a menu opens, and again whenever the command is to be performed: a shortcut passes no menu.
  bool (*mayRun)(const CommandContext&) = nullptr;
  void (*run)(const CommandContext&) = nullptr;
  /// Whether menus have it at all; none: always.
  bool (*isShown)(const CommandContext&) = nullptr;
  /// Whether it also looks disabled while its menu is closed, as what stands for the document's state does.
  bool showsState = false;
  /// Why it may not run, as a sentence, and empty when it may; it stands in the place of `mayRun`. Whoever
  /// uses its key all the same is told.
  QString (*whyNot)(const CommandContext&) = nullptr;
  /// Whether its menu item can be chosen, where that asks for more than the command itself, which then has
  /// a button, too; none: whenever it may run.
  bool (*isOffered)(const CommandContext&) = nullptr;
  /// Whether what is being typed into the log is stored before it, or else keeps it from being done.
  bool storesTyping = false;
};

/// What stands at the end of a menu, or after one of its commands, and is as long as it happens to be.
enum class MenuList { None, RecentDocuments, OpenWindows };

struct Menu {
  const char* title;
  std::span<const CommandRow> rows;
  MenuList list = MenuList::None;
  Command listAfter = Command::About;  ///< the row that the list follows
};

/// The title of the submenu of recent documents.
inline constexpr const char* kOpenRecentTitle = QT_TRANSLATE_NOOP("pendra", "Open Recent");

/// The keys of a row, one a text.
[[nodiscard]] inline QStringList keysOf(const CommandRow& row) {
  return QString::fromLatin1(row.keys).split(u' ', Qt::SkipEmptyParts);
}

}  // namespace pendra
