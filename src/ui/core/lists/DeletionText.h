#pragma once

#include <QString>

#include "model/Activity.h"

namespace pendra::lists {

/// What becomes of the activities that name what is to be deleted, as a sentence ("12 completed activities
/// with 23 entries, 4 of them unsent, keep their time and lose this name."); empty when there are none.
/// Nothing is sent from a standalone document, so there nothing is called unsent.
[[nodiscard]] QString lossSentence(const Objects<Activity>& activities, bool standalone);

}  // namespace pendra::lists
