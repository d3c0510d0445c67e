#pragma once
// A backup is never opened in place: it is copied to a new document, and that one is opened.

#include <QString>
#include <optional>

namespace pendra {

class Session;

/// True to go on with this path: the user agreed, or it is no backup.
[[nodiscard]] bool checkForBackupFile(Session& session, const QString& path);
/// "Open Backup File?"; true to continue.
[[nodiscard]] bool showBackupFileWarning(Session& session);
/// Copies a backup to a document that the user names and returns its path; none when cancelled or failed.
std::optional<QString> copyBackup(Session& session, const QString& path);

}  // namespace pendra
