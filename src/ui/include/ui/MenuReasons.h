#pragma once
// What a menu offers but cannot do now is grey, and where there is a reason it says so.

#include <QString>

class QAction;
class QMenu;

namespace pendra {

/// Why the item cannot be chosen; empty where there is nothing to say.
void giveReason(QAction& item, const QString& reason);
/// Shows the reasons of the menu's items as tool tips.
void showReasons(QMenu& menu);

}  // namespace pendra
