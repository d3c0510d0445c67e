#pragma once
// A program that was killed could not stop its timers: the entries lie in the file as running and without a
// length. Opening halts them and gives them none; what they should have been only the user can say.

#include <optional>
#include <vector>

#include "model/TimeEntry.h"

namespace pendra {

class ObjectContext;

/// What was being timed when the program ended without stopping it.
struct HaltedEntries {
  std::vector<Ref<TimeEntry>> entries;
  /// When the file was last known to hold everything; none when that is not known.
  std::optional<Instant> lastSave;
};

/// When the file at `path` was last saved, asked before it is opened.
[[nodiscard]] std::optional<Instant> timeOfLastSave(const QString& path);
/// The entries of a document just read that still run and have no length, asked before they are halted.
[[nodiscard]] HaltedEntries haltedEntries(const ObjectContext& context, std::optional<Instant> lastSave);

}  // namespace pendra
