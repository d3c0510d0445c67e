#pragma once

#include <QVariant>

#include "Order.h"

namespace pendra {

/// An answer as a person reads it in a terminal; what it is made of is the same as in JSON. Whatever was
/// typed into the document is on one line and cannot move the cursor.
[[nodiscard]] QString plainText(Verb verb, const QVariant& answer);

}  // namespace pendra
