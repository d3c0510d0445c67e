#pragma once

#include <QString>
#include <optional>

namespace pendra {

struct Error;
class ReadAhead;
class Session;

/// The path of the document last read; none when there was none.
std::optional<QString> lastDocumentPath(const Session& session);
void setLastDocumentPath(Session& session, const QString& path);

/// Loads the last document, else the default one. Does nothing while a document is open. A last document that
/// is gone is told with its path; while not even its folder is there, as on a medium that was taken out, no
/// other document is put in its place. It may have been read ahead.
void loadLastDocument(Session& session, ReadAhead* ahead = nullptr);
/// Opens the document at `path`, or a new untitled one, in place of the one that is open; a missing file
/// becomes a new document, a backup is restored first. It is read before the one that is open is touched,
/// which then goes without a question. False when nothing was opened: the notice line says why, or the user
/// declined.
bool loadDocument(Session& session, const std::optional<QString>& path, ReadAhead* ahead = nullptr);

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
/// Window > Timer Window: brings it to the front, with the last document where none is open.
void showTimerWindow(Session& session);
/// Brings the document to the front if it is the open one, whatever it is called by.
[[nodiscard]] bool bringToFrontIfOpen(Session& session, const QString& path);

/// Says in the notice line that a file could not be opened. One that is not there can be tried again.
void sayNotOpened(Session& session, const QString& path, const Error& error);

}  // namespace pendra
