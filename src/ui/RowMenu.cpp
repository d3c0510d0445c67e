#include "ui/RowMenu.h"

#include <QMenu>

#include "ui/MenuReasons.h"

namespace pendra {

namespace {

const CommandRow* rowOf(const CommandTarget& target, Command command) {
  for (const Menu& menu : target.menus()) {
    for (const CommandRow& row : menu.rows) {
      if (row.command == command) return &row;
    }
  }
  return nullptr;
}

QKeySequence keyOf(const CommandRow& row, const std::vector<RowKey>& own) {
  for (const RowKey& key : own) {
    if (key.command == row.command) return key.key;
  }
  return QKeySequence(keysOf(row).value(0));
}

void addItem(QMenu& menu, CommandTarget& target, QWidget& window, const CommandRow& row,
             const QKeySequence& key) {
  QAction* item = menu.addAction(target.titleOf(row).replace(u'&', QStringLiteral("&&")));
  item->setShortcut(key);
  item->setShortcutVisibleInContextMenu(true);
  item->setShortcutContext(Qt::WidgetShortcut);  // the menu bar, or the table, answers the key
  item->setEnabled(target.isOffered(row));
  showIsOn(*item, target.isOn(row));
  giveReason(*item, target.whyNot(row));
  QObject::connect(item, &QAction::triggered, &window,
                   [&target, &window, command = row.command] { target.perform(command, &window); });
}

}  // namespace

void addCommands(QMenu& menu, CommandTarget& target, QWidget& window, const CommandGroups& groups,
                 const std::vector<RowKey>& keys) {
  showReasons(menu);
  for (const auto& group : groups) {
    if (!menu.isEmpty()) menu.addSeparator();
    for (const Command command : group) {
      const CommandRow* row = rowOf(target, command);
      if (row && target.isShown(*row)) addItem(menu, target, window, *row, keyOf(*row, keys));
    }
  }
}

QMenu* makeRowMenu(CommandTarget& target, QWidget& window, const CommandGroups& groups,
                   const std::vector<RowKey>& keys) {
  auto* menu = new QMenu(&window);
  menu->setObjectName(QStringLiteral("rowMenu"));
  menu->setAttribute(Qt::WA_DeleteOnClose);
  addCommands(*menu, target, window, groups, keys);
  return menu;
}

}  // namespace pendra
