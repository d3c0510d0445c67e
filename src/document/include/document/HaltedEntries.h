#pragma once
// A program that was killed could not stop its timers: the entries lie in the file as running and without a
// length. Opening halts them and gives them none; what they should have been only the user can say, and the
// document keeps the question until it is answered.

#include <QString>
#include <optional>
#include <vector>

#include "model/TimeEntry.h"

namespace pendra {

class ObjectContext;

/// When the file at `path` was last written, asked before it is opened.
[[nodiscard]] std::optional<Instant> timeOfLastSave(const QString& path);
/// Ends the running of every entry of a document that was just read. One that has no length yet is known to
/// have run until the program was last known to live. A part of an edit.
void haltRunningEntries(ObjectContext& context, std::optional<Instant> lastSave);

/// What one crash cut off and nobody has answered for.
struct HaltedEntries {
  std::vector<TimeEntry*> entries;
  Instant until;  ///< they are known to have run so far
};
/// Those of the latest crash that has any left; empty when nothing is to be answered.
[[nodiscard]] HaltedEntries haltedEntries(const ObjectContext& context);

/// Gives each the length up to which it is known to have run. Only where it still waits for an answer, as do
/// all the answers here; each is one edit.
void setToLastSave(ObjectContext& context, const std::vector<Ref<TimeEntry>>& entries);
/// Lets each run on as if it had not been halted, where `canRunOn` says so.
void runOn(ObjectContext& context, const std::vector<Ref<TimeEntry>>& entries);
/// Whether its activity still stands in the list and nothing else of it runs.
[[nodiscard]] bool canRunOn(const TimeEntry& entry);

}  // namespace pendra
