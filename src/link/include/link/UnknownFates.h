#pragma once
// A record that left without an answer may be in Vantor or not; only the user can find out. Until the user
// has said so, its entries are neither sent nor unsent, in the file as in memory.

#include <span>

#include "document/Session.h"
#include "model/TimeEntry.h"
#include "platform/Result.h"

namespace pendra {

/// Marks the entries as being sent in a record of that name, in one edit with what is to be stored `before`,
/// durable when it returns; on failure nothing is marked.
Result<void> markSending(Session& session, std::span<TimeEntry* const> entries, const QString& name,
                         const std::function<void()>& before);
/// The entries are unsent as before.
void unmarkSending(Session& session, std::span<TimeEntry* const> entries);
/// The entries have been sent, now.
void markSent(TimeEntry& entry, Instant now);

/// Asks the user about every record of the open document whose fate is unknown. What arrived counts as sent
/// when it left; what did not is unsent, and returned: the user wants it to be sent again. None when the user
/// cancelled.
[[nodiscard]] std::optional<std::vector<Ref<TimeEntry>>> settleUnknownFates(Session& session);
/// Says in a notice that there are such records, until they are settled; called when a document has opened.
void postUnknownFates(Session& session);

}  // namespace pendra
