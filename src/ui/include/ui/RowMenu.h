#pragma once
// The menu of a row offers what the menu bar has for it, under the same names and keys and by the same rules.

#include <QPoint>
#include <vector>

#include "ui/CommandTarget.h"

namespace pendra {

/// The commands in groups, as they stand one below the other.
using CommandGroups = std::vector<std::vector<Command>>;

/// A key that only acts in the table, which the menu bar therefore does not show.
struct RowKey {
  Command command;
  Qt::Key key;
};

/// Opens the menu at a point of the screen. What is chosen is performed for `window`; the target must outlive
/// it.
void openRowMenu(CommandTarget& target, QWidget& window, const CommandGroups& groups, QPoint at,
                 const std::vector<RowKey>& keys = {});

}  // namespace pendra
