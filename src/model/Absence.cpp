#include "model/Absence.h"

#include "model/TimeEntry.h"

namespace pendra {

std::optional<Absence> awayWithin(const TimeEntry& entry) {
  if (!entry.awayFrom() || !entry.awayTo()) return std::nullopt;
  const Absence away{*entry.awayFrom(), *entry.awayTo()};
  const bool isWithin = *entry.start() - away.from < kSameMoment && away.to - entry.end() < kSameMoment;
  return isWithin && away.length() > 0 ? std::optional(away) : std::nullopt;
}

void setAway(TimeEntry& entry, const std::optional<Absence>& away) {
  const bool isWorthIt = away && away->length() >= Absence::kShortest;
  entry.setAwayFrom(isWorthIt ? std::optional(away->from) : std::nullopt);
  entry.setAwayTo(isWorthIt ? std::optional(away->to) : std::nullopt);
}

}  // namespace pendra
