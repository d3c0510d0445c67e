#include "CommandTable.h"

#include <QApplication>

#include "CommandContext.h"
#include "CommandDeeds.h"
#include "document/Backup.h"
#include "document/DocumentLoading.h"
#include "platform/Resources.h"
#include "ui/FieldUndo.h"
#include "ui/ListWindows.h"
#include "ui/LogPaneView.h"
#include "ui/TimerWindowController.h"
#include "ui_core/ShellCommands.h"

namespace pendra {

namespace {

using At = const CommandContext&;

bool always(At) { return true; }
bool withDocument(At at) { return at.session.document() != nullptr; }
bool notStandalone(At at) { return !at.session.isStandalone(); }
bool withTimerWindow(At at) { return at.timer() != nullptr; }
bool withActivity(At at) { return at.timer() && at.timer()->state().currentActivity(); }
bool withEntry(At at) { return at.timer() && at.timer()->state().currentEntry(); }
bool withStandingActivity(At at) {
  return withActivity(at) && !at.timer()->state().currentActivity()->isRunning();
}
bool withRunningActivity(At at) {
  return withActivity(at) && at.timer()->state().currentActivity()->isRunning();
}
bool withListEditor(At at) { return at.customers() || at.services(); }

bool canEditSelected(At at) { return at.timer() && at.timer()->state().editable(); }
bool linkedTimerWindow(At at) { return at.timer() && notStandalone(at); }
bool canSendSelected(At at) { return linkedTimerWindow(at) && at.timer()->state().canSend(); }
bool canDeleteCustomer(At at) { return at.customers() && at.customers()->canDelete(); }

template <auto Deed>
void inTimerWindow(At at) {
  if (TimerWindowController* timer = at.timer()) (timer->*Deed)();
}
template <auto Deed>
void inTimerState(At at) {
  if (TimerWindowController* timer = at.timer()) (timer->state().*Deed)();
}
template <auto Deed>
void inListInFront(At at) {
  // Which comes to the front first: nobody's ticks go unseen.
  if (ListEditorWindow* list = at.windows.listInFront()) (list->*Deed)();
}
template <auto Deed>
void inSession(At at) {
  Deed(at.session);
}
template <auto Deed>
void onDesktop(At at) {
  Deed(at.session.ports().workspace);
}
template <WindowKind Kind>
void openWindow(At at) {
  at.windows.show(Kind);
}

/// What sends the log, shows it elsewhere, takes an entry of it away, or leaves its document.
constexpr CommandRow onLog(CommandRow row) {
  row.storesTyping = true;
  return row;
}

/// What a button does in more cases than its menu item is there for.
constexpr CommandRow offeredIf(bool (*isOffered)(At), CommandRow row) {
  row.isOffered = isOffered;
  return row;
}

/// What is done to the selected entries of the log, and has a reason where it cannot.
constexpr CommandRow correction(Command command, const char* title, const char* keys, QString (*whyNot)(At),
                                void (*run)(At)) {
  CommandRow row{command, title, 0, keys, command == Command::SplitEntry};
  row.run = run;
  row.whyNot = whyNot;
  return onLog(row);
}

// Where a row has further columns they are: starts a group, rule, deed, shown, shows the document's state.
constexpr CommandRow kPendra[] = {
    {Command::About, "About Pendra", 0, "", false, always, openWindow<WindowKind::About>},
    {Command::Preferences, "Preferences…", 0, "Ctrl+,", true, always, openWindow<WindowKind::Preferences>},
    {Command::QuickEntry, "Quick Entry…", 0, "Ctrl+L", true, withDocument, deeds::quickEntry},
    {Command::Quit, "Quit Pendra", 0, "Ctrl+Q", true, always, deeds::quit},
};

constexpr CommandRow kFile[] = {
    onLog({Command::New, "New…", 12, "Ctrl+N", false, always, inSession<newDoc>}),
    onLog({Command::Open, "Open…", 13, "Ctrl+O", false, always, inSession<openFile>}),
    {Command::Close, "Close", 15, "Ctrl+W", false, always, deeds::closeWindow},
    onLog({Command::SendAllTime, "Send All Time to Vantor…", 10, "", true, withDocument, deeds::sendAllTime,
           notStandalone}),
    {Command::UpdateLists, "Update Lists from Vantor", 11, "", false, notStandalone,
     [](At at) { at.link.lists.updateLists(); }, nullptr, true},
    {Command::ImportCustomers, "Import Customer List…", 14, "", false, always,
     [](At at) { at.link.lists.importCustomers(); }},
    onLog({Command::BackUp, "Back Up Document…", 16, "", true, withDocument, inSession<backUpDocument>}),
    onLog({Command::Restore, "Restore…", 0, "", false, withDocument, openWindow<WindowKind::Restore>}),
    onLog({Command::ExportLog, "Export Time Log…", 43, "", false, withDocument,
           inTimerWindow<&TimerWindowController::exportTimeLog>}),
};

constexpr CommandRow kEdit[] = {
    {Command::Undo, "Undo", 0, "Ctrl+Z", false, deeds::canStep<UndoWay::Undo>, deeds::step<UndoWay::Undo>,
     nullptr, true},
    {Command::Redo, "Redo", 0, "Ctrl+Shift+Z", false, deeds::canStep<UndoWay::Redo>,
     deeds::step<UndoWay::Redo>, nullptr, true},
    {Command::Cut, "Cut", 0, "Ctrl+X", true, always, [](At) { deeds::invokeInFocus("cut"); }},
    {Command::Copy, "Copy", 0, "Ctrl+C", false, always, [](At) { deeds::invokeInFocus("copy"); }},
    {Command::Paste, "Paste", 0, "Ctrl+V", false, always, [](At) { deeds::invokeInFocus("paste"); }},
    {Command::SelectAll, "Select All", 0, "Ctrl+A", false, always,
     [](At) { deeds::invokeInFocus("selectAll"); }},
    {Command::Find, "Find", 0, "Ctrl+F", true, deeds::canFind, deeds::find},
    onLog({Command::Delete, "Delete", 0, "Del", true, deeds::canDelete, deeds::deleteSelected}),
    onLog({Command::EditSelected, "Edit Selected…", 0, "Ctrl+E", false, canEditSelected,
           inTimerWindow<&TimerWindowController::editSelected>}),
    correction(Command::SplitEntry, "Split at…", "", deeds::whyNot<Correction::Split>,
               inTimerWindow<&TimerWindowController::splitEntry>),
    correction(Command::DuplicateEntries, "Duplicate", "Ctrl+D", deeds::whyNot<Correction::Duplicate>,
               deeds::andOfferUndo<duplicateSelected>),
    correction(Command::MergeEntries, "Merge", "", deeds::whyNot<Correction::Merge>,
               deeds::andOfferUndo<mergeSelected>),
    correction(Command::StartAgain, "Start Again", "", deeds::whyNot<Correction::StartAgain>,
               deeds::startAgain),
};

constexpr CommandRow kActivity[] = {
    onLog({Command::AddActivity, "Add Activity…", 0, "Ctrl+Shift+N", false, withTimerWindow,
           inTimerWindow<&TimerWindowController::addActivity>}),
    onLog({Command::EditActivity, "Edit Activity…", 0, "", false, withActivity,
           inTimerWindow<&TimerWindowController::editActivity>}),
    {Command::ToggleTimer, "Start or Stop Timer", 0, "Ctrl+T", true, withTimerWindow,
     inTimerState<&TimerState::toggleTimer>},
    {Command::StartEarlier, "Start Earlier…", 0, "Ctrl+Shift+T", false, withStandingActivity,
     deeds::askEarlier<EarlierDeed::Start>},
    {Command::StopEarlier, "Stop Earlier…", 0, "", false, withRunningActivity,
     deeds::askEarlier<EarlierDeed::Stop>},
    {Command::ChooseKey, "Start and Stop by a Key…", 0, "", false, always, deeds::chooseKey,
     deeds::offersKeys},
    {Command::MarkComplete, "Mark Complete", 0, "Ctrl+M", false, withActivity,
     inTimerState<&TimerState::markSelectedCompleted>},
    {Command::Favourite, "Favourite", 0, "", false, withActivity, inTimerState<&TimerState::toggleFavourite>},
    {Command::CompletedActivities, "Completed Activities…", 0, "", false, withDocument,
     openWindow<WindowKind::CompletedActivities>},
    onLog({Command::MakeCurrent, "Make Activity Current", 0, "", false, withEntry,
           inTimerState<&TimerState::makeCurrent>}),
    offeredIf(canSendSelected, onLog({Command::SendSelected, "Send Selected Time…", 0, "", true,
                                      linkedTimerWindow, deeds::sendSelectedTime})),
    // With or without Shift; the toolkit's own mapping of the two modifiers acts as well.
    onLog({Command::MarkUnsent, "Mark as Unsent", 0,
           "Ctrl+Alt+U Ctrl+Alt+Shift+U Ctrl+Meta+U Ctrl+Meta+Shift+U", false, withEntry,
           [](At at) { at.timer()->state().log().markSelectedUnsent(); }}),
};

constexpr CommandRow kLists[] = {
    {Command::CustomerList, "Customers and Jobs…", 23, "", false, withDocument,
     openWindow<WindowKind::CustomerList>},
    {Command::ServicesList, "Service Items…", 24, "", false, withDocument,
     openWindow<WindowKind::ServicesList>},
    {Command::DeleteCustomerOrJob, "Delete Customer or Job", 20, "", true, canDeleteCustomer,
     [](At at) { at.customers()->deleteRow(); }},
    {Command::MarkAll, "Mark All Shown", 21, "", false, withListEditor,
     inListInFront<&ListEditor::markAllShown>},
    {Command::MarkNone, "Mark None Shown", 22, "", false, withListEditor,
     inListInFront<&ListEditor::markNoneShown>},
};

constexpr CommandRow kWindow[] = {
    {Command::TimerWindow, "Timer Window", 0, "", false, always, inSession<showTimerWindow>},
    {Command::Report, "Report", 0, "Ctrl+R", false, withDocument, openWindow<WindowKind::Report>},
};

constexpr CommandRow kHelp[] = {
    {Command::Help, "Pendra Help", 0, "F1", false, always, deeds::help},
    {Command::Welcome, "Welcome to Pendra", 0, "", false, always, openWindow<WindowKind::Welcome>},
    {Command::Feedback, "Send Feedback", 0, "", true, always, onDesktop<submitFeedback>},
    {Command::Community, "User Community", 0, "", false, always, onDesktop<showCommunity>},
    {Command::Components, "Outside Components", 0, "", false, always,
     [](At at) { showComponents(at.session.ports().workspace, resourceFolder()); }},
};

constexpr Menu kMenus[] = {
    {"Pendra", kPendra}, {"File", kFile, MenuList::RecentDocuments, Command::Open},
    {"Edit", kEdit},     {"Activity", kActivity},
    {"Lists", kLists},   {"Window", kWindow, MenuList::OpenWindows, Command::TimerWindow},
    {"Help", kHelp},
};

/// The row of a command; none when no menu has it.
constexpr const CommandRow* find(Command command) {
  const CommandRow* found = nullptr;
  for (const Menu& menu : kMenus) {
    for (const CommandRow& row : menu.rows) {
      if (row.command != command) continue;
      if (found) return nullptr;  // it would stand in two menus
      found = &row;
    }
  }
  return found;
}

constexpr bool everyCommandHasItsRow() {
  for (int command = 0; command < kCommandCount; ++command) {
    if (!find(static_cast<Command>(command))) return false;
  }
  return true;
}
static_assert(everyCommandHasItsRow(), "a command stands in one menu");

}  // namespace

std::span<const Menu> allMenus() { return kMenus; }

const CommandRow& rowOf(Command command) { return *find(command); }

}  // namespace pendra
