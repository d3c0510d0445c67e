#pragma once
// An entry can be cut in two, and entries that touch can be joined, without a second lost or won. Both count
// between instants, so that a night in which the clocks are changed is as long as it was.

#include <span>
#include <vector>

#include "model/TimeEntry.h"

namespace pendra {

/// Why the time of an entry is not to be touched.
enum class TimeHold {
  None,
  Sent,
  InDoubt,  ///< it may have been sent
  Halted,   ///< a crash has cut it off, and how long it is has still to be said
};
[[nodiscard]] TimeHold timeHoldOf(const TimeEntry& entry);

/// Where a cut falls that is wanted at an instant: at the next whole second of the entry, so that the parts
/// show, and are sent, as many whole seconds as the entry did. None outside of the entry. A running one may
/// be cut now.
[[nodiscard]] std::optional<Instant> cutNear(const TimeEntry& entry, Instant wanted);

/// The entry ends there, and a new one of its activity, with the same note, goes on to where it ended, or
/// runs on. Time away goes with the part in which it lies and is cut as the entry is; a rest of it too short
/// to be asked about counts.
TimeEntry& cut(TimeEntry& entry, Instant at);

/// Why entries cannot be joined.
enum class JoinObstacle {
  None,
  TooFew,
  Activities,  ///< they are of different ones
  Sent,
  InDoubt,
  Halted,
  Apart,  ///< two of them do not touch
  Away    ///< two of them have time away to be asked about, and it is not the same
};
/// Entries touch when one begins within a second of the other's end. Where seconds were dropped by hand that
/// may be up to two minutes later, or a minute earlier: a start and a length that are whole minutes may have
/// lost less than a minute each.
[[nodiscard]] JoinObstacle obstacleToJoin(std::span<TimeEntry* const> entries);

/// Makes one entry of entries that nothing stands against, and answers it: the one that runs, else the
/// first. It is as long as all of them together. A running one begins earlier by as much as the others
/// lasted, a stopped one where the first did. Different notes stand in it one behind the other.
TimeEntry& join(std::span<TimeEntry* const> entries);

}  // namespace pendra
