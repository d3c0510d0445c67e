#pragma once
// Notes are never cut here, however long: the limit is Vantor's. A person is warned once, ever, whichever
// editor the note was typed into.

#include "document/Session.h"
#include "ui_core/EditorControls.h"

namespace pendra {

/// The longest note that Vantor takes, in UTF-16 units.
inline constexpr qsizetype kVantorNoteLimit = 99;

/// Shows how long a note is.
void showNotesLength(LengthLabel& label, const QString& note);
/// Warns of a note that is too long, unless the user was ever warned before.
void showNoteLengthWarning(Session& session);
/// What follows an edit of a note: the count, and the warning when it is too long.
void followNote(Session& session, LengthLabel& label, const QString& note);

}  // namespace pendra
