#pragma once
// A field that can undo undoes its own text first, by key and by menu; one that cannot leaves the key to the
// menu, which then undoes a step of the document.

class QEvent;

namespace pendra {

enum class UndoWay { Undo, Redo };

/// Whether the field that has the keyboard focus has typing to undo, or to do again.
[[nodiscard]] bool canUndoInField(UndoWay way);
/// Undoes the typing in the field that has the keyboard focus.
void undoInField(UndoWay way);
/// Whether the event is the key of an undo or a redo that the focused field cannot use, which it would take
/// from the menu.
[[nodiscard]] bool belongsToMenu(const QEvent& event);

}  // namespace pendra
