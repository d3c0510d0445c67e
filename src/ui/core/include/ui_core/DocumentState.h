#pragma once

#include <QString>

#include "document/Session.h"

namespace pendra {

/// What the footer says of the document: "Saved 14:02", or since when it is not saved and why; empty
/// while nothing has been saved yet.
[[nodiscard]] QString documentStateText(const SaveState& state, const Calendar& calendar);

}  // namespace pendra
