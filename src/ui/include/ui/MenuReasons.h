#pragma once
// What a menu offers but cannot do now is grey, and where there is a reason it says so; what it turns on and
// off has a tick.

#include <QString>
#include <optional>

class QAction;
class QMenu;

namespace pendra {

/// Why the item cannot be chosen; empty where there is nothing to say.
void giveReason(QAction& item, const QString& reason);
/// Whether that is on which the item turns on and off; none for an item that does something else.
void showIsOn(QAction& item, std::optional<bool> isOn);
/// Shows the reasons of the menu's items as tool tips.
void showReasons(QMenu& menu);

}  // namespace pendra
