#pragma once
// The deeds and rules of the commands that need more than a line.

#include "CommandContext.h"
#include "ui/FieldUndo.h"
#include "ui_core/EarlierTimer.h"
#include "ui_core/LogCorrections.h"
#include "ui_core/Menus.h"

namespace pendra::deeds {

void quit(const CommandContext& at);
void closeWindow(const CommandContext& at);
/// Not while something is asked.
void quickEntry(const CommandContext& at);
void help(const CommandContext& at);
/// Whether the desktop has keys that act from everywhere, and has it ask for Pendra's.
[[nodiscard]] bool offersKeys(const CommandContext& at);
void chooseKey(const CommandContext& at);
void sendAllTime(const CommandContext& at);
void sendSelectedTime(const CommandContext& at);
/// Hands an edit command to the field that has the keyboard focus.
void invokeInFocus(const char* slot);

/// The window in front has a field that searches it; the timer window one for each table.
[[nodiscard]] bool canFind(const CommandContext& at);
void find(const CommandContext& at);

/// Where a list editor is open its selection decides, the service list's last.
[[nodiscard]] bool canDelete(const CommandContext& at);
void deleteSelected(const CommandContext& at);

/// Asks as of when the current activity is to be started or stopped.
template <EarlierDeed Deed>
void askEarlier(const CommandContext& at);

/// A field undoes its own text first; then a step of the document, unless something is asked or Vantor is.
template <UndoWay Way>
[[nodiscard]] bool canStep(const CommandContext& at);
template <UndoWay Way>
void step(const CommandContext& at);

/// Why a correction cannot be done to what is selected in the log.
template <Correction What>
[[nodiscard]] QString whyNot(const CommandContext& at);
/// Does it, and offers to take it back where it has something to say.
template <QString (&Correct)(LogController&)>
void andOfferUndo(const CommandContext& at);
void startAgain(const CommandContext& at);

}  // namespace pendra::deeds
