#pragma once
// Time that two entries hold is not wrong by itself, as several timers may run at once; but whoever types a
// time should see it.

#include <vector>

#include "platform/Clock.h"

namespace pendra {

class ObjectContext;
class TimeEntry;

/// The entries that hold some of a stretch of time.
struct Overlaps {
  struct Part {
    TimeEntry* entry;
    double seconds;  ///< that it holds of it
  };
  std::vector<Part> parts;  ///< the longest first
  double seconds = 0;       ///< that one of them holds, or several
};
/// A second that is shared is worth a word. Without `except`, which is the entry that is asked about.
[[nodiscard]] Overlaps overlapsWith(const ObjectContext& context, Instant from, Instant to,
                                    const TimeEntry* except = nullptr);

}  // namespace pendra
