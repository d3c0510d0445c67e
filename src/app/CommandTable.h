#pragma once

#include <span>

#include "ui_core/Menus.h"

namespace pendra {

/// Every command of the program, in the order of its menus: the one place where a command is added.
[[nodiscard]] std::span<const Menu> allMenus();
[[nodiscard]] const CommandRow& rowOf(Command command);

}  // namespace pendra
