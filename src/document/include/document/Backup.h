#pragma once
// A backup is never opened in place: it is copied to a new document, and that one is opened. A copy, in
// either direction, counts only once it was found to be whole; one that was not made says why in the notice
// line, and what stood at its place still stands there.

#include <QString>
#include <optional>

#include "platform/Result.h"

namespace pendra {

class OpenDocument;
class Session;
struct ObjectModel;

/// File > Back Up: stops the timers, with the user's consent, and asks for a name.
void backUpDocument(Session& session);
/// What follows when the panel ended: the open document is saved and copied to `chosen`; what cannot be saved
/// is written there from memory. None when the panel was cancelled.
void backUpTo(Session& session, const std::optional<QString>& chosen);
/// The backup that is made where that path is asked for: its last extension is replaced, unless it already is
/// a backup's.
[[nodiscard]] QString backupPath(const QString& chosen);
/// Saves and copies a document there, without stopping what runs; what cannot be saved is written from
/// memory. A file that has the name is left alone.
[[nodiscard]] Result<void> writeBackup(OpenDocument& document, const ObjectModel& model,
                                       const QString& chosen);

/// True to go on with this path: the user agreed, or it is no backup.
[[nodiscard]] bool checkForBackupFile(Session& session, const QString& path);
/// "Open Backup File?"; true to continue.
[[nodiscard]] bool showBackupFileWarning(Session& session);
/// Copies a backup to a document that the user names and returns its path; none when cancelled or failed.
/// A document that the user chose to replace stands until the copy is whole; the open one is closed first.
std::optional<QString> restoreBackup(Session& session, const QString& path);

}  // namespace pendra
