#pragma once

namespace pendra {

class Session;

/// Stores what is being typed in a list editor. False when it was refused, which the user has been told.
[[nodiscard]] bool finishEditing(const Session& session);

/// Whether the open document may be left: asks for running timers, and saves. False when the user cancelled,
/// or when it could not be saved and closing was refused once.
[[nodiscard]] bool mayCloseDocument(Session& session);
/// Closes the document with its windows and lets go of its file, without asking.
void leaveDocument(Session& session);
/// Closes the document if it may be closed; whether it did is seen by there being one.
void closeDoc(Session& session);

/// Whether the user may close the timer window.
[[nodiscard]] bool mayCloseWindow(Session& session);
/// Saves and closes the document with its window. Harmless when the document is already closed.
void closeAfterWindow(Session& session);

}  // namespace pendra
