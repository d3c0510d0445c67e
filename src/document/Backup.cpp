#include "document/Backup.h"

#include <QFile>
#include <QFileInfo>

#include "document/DocumentFiles.h"
#include "document/Session.h"
#include "platform/Files.h"
#include "platform/Text.h"

namespace pendra {

namespace {

const QString kBackupSuffix = QStringLiteral(".pdrbackup");

}  // namespace

bool checkForBackupFile(Session& session, const QString& path) {
  return !path.endsWith(kBackupSuffix) || showBackupFileWarning(session);
}

bool showBackupFileWarning(Session& session) {
  return session.ports().alerts.runAlert(
             {.style = Alert::Style::Informational,
              .message = QStringLiteral("Open Backup File?"),
              .informative =
                  QStringLiteral("You are opening a backup file. If this is not a recent backup, you "
                                 "may not see  your latest activities or notes."),
              .buttons = {QStringLiteral("Continue"), QStringLiteral("Cancel")}}) == kFirstButton;
}

std::optional<QString> copyBackup(Session& session, const QString& path) {
  const QString base = QString(path).remove(kBackupSuffix);
  const QString suggestion = firstFreePath(base, QStringLiteral("pdr"));
  const QString source = base + kBackupSuffix;
  const auto target =
      session.ports().panels.runSavePanel({.title = QStringLiteral("Save the restored backup"),
                                           .proposedName = QFileInfo(suggestion).fileName(),
                                           .folder = {},
                                           .requiredType = QStringLiteral("pdr")});
  if (!target) return std::nullopt;
  QFile::remove(*target);
  if (!QFile::copy(source, *target)) return std::nullopt;
  session.ports().alerts.runAlert(
      {.style = Alert::Style::Informational,
       .message = QStringLiteral("File restored"),
       .informative = formatted(u"Your restored file is named %@", {QFileInfo(*target).fileName()}),
       .buttons = {QStringLiteral("OK")}});
  return target;
}

}  // namespace pendra
