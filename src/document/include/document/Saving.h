#pragma once
// Every edit is stored when it ends. What stands here is for what no edit has stored: it is tried again, told
// once, and a document that would lose it is not closed at the first try.

#include "platform/Result.h"

namespace pendra {

class OpenDocument;
class Session;

/// Saves the open document, waiting for others that read its file; a failure is not logged. Succeeds without
/// a document.
Result<void> saveContext(Session& session);

/// saveContext; a failure is logged as "PENDRA Save Error = %@" and otherwise passed over.
void saveContextOrLog(Session& session);

/// Says in the notice line why the document cannot be stored, once for each reason, and takes it back when it
/// can. Called by the session after every attempt to store.
void sayWhetherSaved(Session& session);
/// Says of a document that has just been opened that it cannot be written to, or not be kept from others.
void sayHowFileIsHeld(Session& session);

/// Says in the notice line that the user's settings could not be stored, and takes it back.
void sayWhetherSettingsAreStored(Session& session);

/// Whether letting go of the document would lose what is neither in its file nor in a copy.
[[nodiscard]] bool wouldLoseWork(const OpenDocument& document);

/// Saves, so that closing loses nothing; false when the document must stay open for now. The first try to
/// close what cannot be stored, and was not copied elsewhere, is refused, and the notice line says what would
/// be lost; who tries again knows, and may.
[[nodiscard]] bool saveBeforeClosing(Session& session);

}  // namespace pendra
