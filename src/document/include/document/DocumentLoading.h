#pragma once

#include <QString>
#include <optional>

namespace pendra {

class Session;

/// The path of the document last read; none when there was none.
std::optional<QString> lastDocumentPath(const Session& session);
void setLastDocumentPath(Session& session, const QString& path);

/// Loads the last document, else the default one. Does nothing while a document is loaded.
void loadLastDocument(Session& session);
/// Loads the document at `url`, or a new untitled one, in place of the open one. When the file cannot be
/// read there is no message: a context without a file is left, and the notice line says so.
void loadDocument(Session& session, const std::optional<QString>& url);
/// Forgets the settings object and loads again.
void reloadData(Session& session);

/// Makes the first settings object `settings`, or inserts one with an identity; applies standalone mode.
void checkStandalone(Session& session);
/// Whether the document has an identity with an employee's name; opens the setup window when not.
bool checkIdentity(Session& session);

/// File > Open.
void openFile(Session& session);
/// Shows the welcome window where neither a document nor setup has one: there is no program without windows.
void ensureAWindow(Session& session);
/// File > New.
void newDoc(Session& session);
/// "Close current file?"; true to continue.
[[nodiscard]] bool showFileOpenWarning(Session& session);
/// Loads the timer window when there is none.
void createNewTimer(Session& session);

}  // namespace pendra
