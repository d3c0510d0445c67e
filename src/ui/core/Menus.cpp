#include "ui_core/Menus.h"

#include <QStringList>

namespace pendra {

namespace {

constexpr std::size_t kFileMenu = 1;
constexpr int kSendAllTag = 10;
constexpr int kUpdateListsTag = 11;

Menu pendraMenu() {
  return {
      .title = QStringLiteral("Pendra"),
      .items = {{Command::About, QStringLiteral("About Pendra")},
                {Command::Preferences, QStringLiteral("Preferences…"), 0, {QStringLiteral("Ctrl+,")}, true},
                {Command::Quit, QStringLiteral("Quit Pendra"), 0, {QStringLiteral("Ctrl+Q")}, true}}};
}

Menu fileMenu() {
  return {.title = QStringLiteral("File"),
          .items = {{Command::New, QStringLiteral("New…"), 12, {QStringLiteral("Ctrl+N")}},
                    {Command::Open, QStringLiteral("Open…"), 13, {QStringLiteral("Ctrl+O")}},
                    {Command::OpenRecent, QStringLiteral("Open Recent")},
                    {Command::Close, QStringLiteral("Close"), 15, {QStringLiteral("Ctrl+W")}},
                    {Command::SendAllTime, QStringLiteral("Send All Time to Vantor…"), kSendAllTag, {}, true},
                    {Command::UpdateLists, QStringLiteral("Update Lists from Vantor"), kUpdateListsTag},
                    {Command::ImportCustomers, QStringLiteral("Import Customer List…"), 14},
                    {Command::BackUp, QStringLiteral("Back Up Document…"), 16, {}, true},
                    {Command::ExportLog, QStringLiteral("Export Time Log…"), 43}}};
}

Menu editMenu() {
  return {
      .title = QStringLiteral("Edit"),
      .items = {{Command::Cut, QStringLiteral("Cut"), 0, {QStringLiteral("Ctrl+X")}},
                {Command::Copy, QStringLiteral("Copy"), 0, {QStringLiteral("Ctrl+C")}},
                {Command::Paste, QStringLiteral("Paste"), 0, {QStringLiteral("Ctrl+V")}},
                {Command::SelectAll, QStringLiteral("Select All"), 0, {QStringLiteral("Ctrl+A")}},
                {Command::Delete, QStringLiteral("Delete"), 0, {QStringLiteral("Del")}, true},
                {Command::EditSelected, QStringLiteral("Edit Selected…"), 0, {QStringLiteral("Ctrl+E")}}}};
}

Menu activityMenu() {
  // Ctrl+Alt+U with or without Shift; the toolkit's own mapping of the two modifiers acts as well.
  const QStringList unsent{QStringLiteral("Ctrl+Alt+U"), QStringLiteral("Ctrl+Alt+Shift+U"),
                           QStringLiteral("Ctrl+Meta+U"), QStringLiteral("Ctrl+Meta+Shift+U")};
  return {
      .title = QStringLiteral("Activity"),
      .items = {
          {Command::AddActivity, QStringLiteral("Add Activity…"), 0, {QStringLiteral("Ctrl+Shift+N")}},
          {Command::EditActivity, QStringLiteral("Edit Activity…")},
          {Command::ToggleTimer, QStringLiteral("Start or Stop Timer"), 0, {QStringLiteral("Ctrl+T")}, true},
          {Command::MarkComplete, QStringLiteral("Mark Complete")},
          {Command::MakeCurrent, QStringLiteral("Make Activity Current")},
          {Command::SendSelected, QStringLiteral("Send Selected Time…"), 0, {}, true},
          {Command::MarkUnsent, QStringLiteral("Mark as Unsent"), 0, unsent}}};
}

Menu listsMenu() {
  return {.title = QStringLiteral("Lists"),
          .items = {{Command::CustomerList, QStringLiteral("Customers and Jobs…"), 23},
                    {Command::ServicesList, QStringLiteral("Service Items…"), 24},
                    {Command::DeleteCustomerOrJob, QStringLiteral("Delete Customer or Job"), 20, {}, true},
                    {Command::MarkAll, QStringLiteral("Mark All Shown"), 21},
                    {Command::MarkNone, QStringLiteral("Mark None Shown"), 22}}};
}

Menu windowMenu() {
  return {
      .title = QStringLiteral("Window"),
      .items = {{Command::TimerWindow, QStringLiteral("Timer Window")}, {Command::OpenWindows, QString()}}};
}

Menu helpMenu() {
  return {.title = QStringLiteral("Help"),
          .items = {{Command::Help, QStringLiteral("Pendra Help"), 0, {QStringLiteral("F1")}},
                    {Command::Welcome, QStringLiteral("Welcome to Pendra")},
                    {Command::Feedback, QStringLiteral("Send Feedback"), 0, {}, true},
                    {Command::Community, QStringLiteral("User Community")},
                    {Command::Components, QStringLiteral("Outside Components")}}};
}

}  // namespace

MenuModel::MenuModel()
    : menus_{pendraMenu(), fileMenu(), editMenu(), activityMenu(), listsMenu(), windowMenu(), helpMenu()} {}

void MenuModel::setVantorItemsShown(bool shown) {
  if (std::exchange(vantorItemsShown_, shown) == shown) return;
  const Notifier::Change change(changes_);
  menus_[kFileMenu] = fileMenu();
  if (shown) return;
  auto& items = menus_[kFileMenu].items;
  std::erase_if(items, [](const MenuItem& item) { return item.tag == kSendAllTag; });
  for (MenuItem& item : items) {
    if (item.tag == kUpdateListsTag) item.enabled = false;
  }
}

bool validateMenuItem(const MenuItem& item, const CommandState& state) {
  if (!item.enabled) return false;
  switch (item.tag) {
    case 20:
      return state.customerListOpen && state.customerDeleteOK;
    case 10:
    case 16:
    case 23:
    case 24:
    case 43:
      return state.documentOpen;
    case 21:
    case 22:
      return state.listEditorOpen;
    default:
      break;
  }
  switch (item.command) {
    case Command::Delete:
      return state.canDelete;
    case Command::EditSelected:
      return state.editable;
    case Command::EditActivity:
    case Command::MarkComplete:
      return state.activitySelected;
    case Command::AddActivity:
    case Command::ToggleTimer:
      return state.timerWindowOpen;
    case Command::MakeCurrent:
    case Command::MarkUnsent:
      return state.entrySelected;
    case Command::SendSelected:
      return state.canSend;
    default:
      return true;
  }
}

bool canDelete(const DeleteState& state) {
  bool answer = !state.timerWindowOpen || state.logSelected || state.activitySelected;
  if (state.customerListOpen) answer = state.customerSelected;
  if (state.servicesListOpen) answer = state.serviceSelected;
  return answer;
}

}  // namespace pendra
