#pragma once

#include <span>

#include "ui_core/Menus.h"

namespace pendra {

/// Every command of the program, in the order of its menus: the place where a command is
/// added, after its name in `Menus.h`; its chapter in the help book has the row's title.
[[nodiscard]] std::span<const Menu> allMenus();
[[nodiscard]] const CommandRow& rowOf(Command command);

}  // namespace pendra
