#pragma once
// Nobody was there while entries ran. Whether that time counts only the user can say: until then it counts,
// and the entries are marked with it.

#include <vector>

#include "document/AbsenceFinder.h"
#include "model/TimeEntry.h"

namespace pendra {

class ObjectContext;

/// The time that the entry is marked with: none when it has been answered, lies outside of the entry since
/// that was corrected, or may not be touched because the entry was sent or is in doubt. The question of a
/// crash goes first.
[[nodiscard]] std::optional<Absence> unansweredAway(const TimeEntry& entry);

/// Marks the entries that ran all the while. An entry that is marked already with an absence of less than a
/// minute before gets one mark for both; otherwise it is divided between the two, so that each can be
/// answered for itself and the sum stays what it is. No step of the user's.
void markAway(ObjectContext& context, const std::vector<Ref<TimeEntry>>& ran, const Absence& absence);

/// One absence, and the entries of which it is not known whether it counts.
struct TimeAway {
  std::vector<TimeEntry*> entries;
  Absence absence{};  ///< the longest that any of them holds of it
};
/// The latest that waits for an answer; without entries when none does.
[[nodiscard]] TimeAway timeAway(const ObjectContext& context);

/// The answers, for those of the entries that still wait for one. Each is one edit.
using AwayEntries = std::vector<Ref<TimeEntry>>;
/// It counts.
void keepAway(ObjectContext& context, const AwayEntries& entries);
/// Each entry ends where the absence began, and a new one of its activity goes on where the absence ended.
void takeAwayOff(ObjectContext& context, const AwayEntries& entries);
/// As that, and the time becomes a single entry of the other activity.
void bookAway(ObjectContext& context, const AwayEntries& entries, Activity& other);

}  // namespace pendra
