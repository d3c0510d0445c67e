#pragma once

#include "Album.h"

namespace pendra {

/// A day beside Vantor, from setting up to the report: a picture of each step, and "tour.md" that tells what
/// is seen. False when what Vantor has received is not what was timed, or a step could not be done.
[[nodiscard]] bool drawDay(Album& album);

}  // namespace pendra
