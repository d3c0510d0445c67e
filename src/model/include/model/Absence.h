#pragma once
// The time within an entry in which nobody was there, which it keeps until it is answered whether that
// counts.

#include <optional>

#include "platform/Clock.h"

namespace pendra {

class TimeEntry;

/// A stretch of time in which nobody was there.
struct Absence {
  /// Worth a question from this length on, in seconds.
  static constexpr double kShortest = 60;

  Instant from;
  Instant to;

  [[nodiscard]] double length() const { return to - from; }
  friend bool operator==(const Absence&, const Absence&) = default;
};

/// What the entry is marked with; none where the entry, which has a start, was corrected so that it lies
/// outside.
[[nodiscard]] std::optional<Absence> awayWithin(const TimeEntry& entry);
/// Marks the entry with it, or with nothing, as when it is not worth a question.
void setAway(TimeEntry& entry, const std::optional<Absence>& away);

}  // namespace pendra
