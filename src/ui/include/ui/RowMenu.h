#pragma once
// The menu of a row offers what the menu bar has for it, under the same names and keys and by the same rules.

#include <vector>

#include "ui/CommandTarget.h"

class QMenu;

namespace pendra {

/// The commands in groups, as they stand one below the other.
using CommandGroups = std::vector<std::vector<Command>>;

/// A key that only acts in the table, which the menu bar therefore does not show.
struct RowKey {
  Command command;
  Qt::Key key;
};

/// Adds the commands to a menu, parted from what is in it. What is chosen is performed for `window`; the
/// target must outlive it.
void addCommands(QMenu& menu, CommandTarget& target, QWidget& window, const CommandGroups& groups,
                 const std::vector<RowKey>& keys = {});

/// A menu of these commands, to be opened; it goes when it has closed.
[[nodiscard]] QMenu* makeRowMenu(CommandTarget& target, QWidget& window, const CommandGroups& groups,
                                 const std::vector<RowKey>& keys = {});

}  // namespace pendra
