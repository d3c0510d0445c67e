#pragma once

namespace pendra {

class Session;

/// Stores what is being typed in a list editor. False when it was refused, which the user has been told.
[[nodiscard]] bool finishEditing(const Session& session);
/// Asks for running timers, saves and closes the document and its windows. Whether it closed is seen by
/// the context: it is still set when the user cancelled, or when it could not be saved and closing was
/// refused once.
void closeDoc(Session& session);
/// Whether the user may close the timer window.
[[nodiscard]] bool mayCloseWindow(Session& session);
/// Saves and closes the document with its window. Harmless when the document is already closed.
void closeAfterWindow(Session& session);

}  // namespace pendra
