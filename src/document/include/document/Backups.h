#pragma once
// Backups that make themselves are not the copies that a user makes with Back Up Document: they lie in a
// folder of the program's own, one for each document, and old ones go. Whatever the user puts there stays.

#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "platform/Calendar.h"
#include "platform/Result.h"

namespace pendra {

class ObjectContext;
class Session;

/// What a backup was made for.
enum class BackupReason { Daily, Restoring, UpdatingLists, Upgrading };

/// "Daily", "Before restoring": what a person reads.
[[nodiscard]] QString titleOf(BackupReason reason);

/// One backup that made itself, as its name tells it.
struct BackupFile {
  QString path;
  Instant madeAt;
  BackupReason reason = BackupReason::Daily;
};

/// Where the backups of the open document lie: a folder for its path and in whose name it is kept.
[[nodiscard]] QString backupFolderOf(const Session& session);
/// The backups of the open document, the newest first.
[[nodiscard]] std::vector<BackupFile> backupsOf(const Session& session);

/// Those that are not kept: the last ten are, of each of the last thirty days the last, and of each month
/// before them the last. `backups` has the newest first.
[[nodiscard]] std::vector<BackupFile> superfluous(const std::vector<BackupFile>& backups, QDate today,
                                                  const Calendar& calendar);

/// Writes the open document, as it is in memory, to a new backup, reads that back, and only when it holds the
/// same removes what is not kept any more. Makes none where nothing has changed since the last one, nor of a
/// document in which there is nothing. A failure is said once in the notice line.
Result<void> makeBackup(Session& session, BackupReason reason);

/// Where the document has just been brought to a newer layout, puts what it was before among its backups.
void keepLayoutCopy(Session& session);

/// Reads a backup without touching it, brought to the newest layout. The context has no file.
[[nodiscard]] Result<std::shared_ptr<ObjectContext>> readBackup(const Session& session, const QString& path);

}  // namespace pendra
