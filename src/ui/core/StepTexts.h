#pragma once

#include <QStringList>
#include <vector>

#include "store/ChangeSet.h"
#include "store/UndoStack.h"

namespace pendra {

/// What an edit did, in one sentence, where it cannot be seen easily: something was completed or deleted, or
/// more entries moved than the one that was meant, or an entry came that is not of today or brought names
/// with it. Empty for any other edit.
[[nodiscard]] QString whatWasDone(const ChangeSet& changes);

/// How much time went with the entries that a step back took away: "00:37:00 of “Acme - Roof”"; empty when it
/// was less than a minute.
[[nodiscard]] QString timeTakenAway(const ChangeSet& changes, Instant now);

/// What a step back let run on as if it had not been stopped: "“Acme - Roof” runs on, 00:37:00 by now.";
/// empty when it had stood for less than a minute.
[[nodiscard]] QString whatRunsOn(const ChangeSet& changes, Instant now);

/// What a step left alone, each thing once: "an entry of “Acme - Roof”", "“Acme”". Of many the first ones and
/// how many more.
[[nodiscard]] QStringList whatWasLeftAlone(const std::vector<Skipped>& skipped);

}  // namespace pendra
