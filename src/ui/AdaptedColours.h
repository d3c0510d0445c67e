#pragma once

#include "platform/DesktopLook.h"
#include "ui/Theme.h"

namespace pendra {

/// The colours of one look as the desktop wishes them: its accent in the place of blue, and everything
/// further apart where it asks for contrast. What is text stays readable whatever the accent is.
[[nodiscard]] Colours adapted(const Colours& colours, const Wishes& look);

}  // namespace pendra
