#pragma once

#include <QString>

#include "platform/Result.h"

namespace pendra {

class Session;

/// Saves the open context, keeps the save state, and says in the notice line when it cannot; a failure is
/// not logged. Succeeds without a context.
Result<void> saveContext(Session& session);

/// saveContext; a failure is logged as "PENDRA Save Error = %@" and otherwise passed over.
void saveContextOrLog(Session& session);

/// Saves, so that closing loses nothing; false when the document must stay open for now. The first try to
/// close what cannot be stored is refused and says so in the notice line; who tries again knows, and may.
[[nodiscard]] bool saveBeforeClosing(Session& session);

/// The save command: the context (a failure is logged), then the document.
void saveAction(Session& session);

}  // namespace pendra
