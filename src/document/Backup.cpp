#include "document/Backup.h"

#include <QFileInfo>
#include <cerrno>

#include "document/DocumentClosing.h"
#include "document/DocumentFiles.h"
#include "document/Documents.h"
#include "document/RunningTimers.h"
#include "document/Saving.h"
#include "document/SavingElsewhere.h"
#include "document/Session.h"
#include "platform/DateTexts.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "store/PersistentStore.h"

namespace pendra {

namespace {

const QString kBackupSuffix = QStringLiteral(".pdrbackup");
const QString kBackupNotice = QStringLiteral("backup");
const QString kRestoreNotice = QStringLiteral("restore");

Result<void> copyDocument(const ObjectModel& model, const QString& from, const QString& to,
                          Existing existing) {
  return copyFile(from, to, existing, [&](const QString& copy) {
    auto whole = PersistentStore::check(copy, model);
    return whole && existing == Existing::Replace ? takeJournalAway(to, model) : whole;
  });
}

void sayWhetherBackedUp(Session& session, const QString& target, const Result<void>& copied) {
  if (copied) return sayWritten(session, kBackupNotice, target);
  const bool exists = copied.error().code == EEXIST;
  session.notices().post(
      {.key = kBackupNotice,
       .text = exists ? formatted(tr("No backup was made: “%@” exists already and was left alone."), {target})
                      : formatted(tr("No backup was made at “%@”: %@."), {target, copied.error().text}),
       .actions = {},
       .ofDocument = true});
}

/// Another document may have been opened beside the panel.
void sayThatAnotherIsOpen(Session& session, const QString& chosen) {
  session.notices().post(
      {.key = kBackupNotice,
       .text = formatted(tr("No backup was made at “%@”: the document that it was meant for is closed."),
                         {chosen}),
       .actions = {}});
}

/// The document that is open has to be closed before its file can be another one.
bool mayReplace(Session& session, const QString& target) {
  if (session.document() && session.document()->isAt(target)) closeDoc(session);
  return !session.document() || !session.document()->isAt(target);
}

}  // namespace

QString backupPath(const QString& chosen) {
  if (chosen.endsWith(kBackupSuffix)) return chosen;
  const qsizetype name = chosen.lastIndexOf(u'/') + 1;
  const qsizetype dot = chosen.lastIndexOf(u'.');
  return chosen.left(dot > name ? dot : chosen.size()) + kBackupSuffix;
}

void backUpDocument(Session& session) {
  if (!session.document() || !checkForRunningTimers(session)) return;
  const Ports& ports = session.ports();
  const QString today = dashedDate(ports.clock.now(), ports.calendar);
  ports.panels.beginSavePanel(
      {.title = {},
       .proposedName = formatted(u"%@ %@.pdrbackup", {session.document()->displayName(), today}),
       .folder = {},
       .requiredType = {},
       .replaces = false},
      [&session, asked = session.document()->path()](const std::optional<QString>& chosen) {
        const OpenDocument* document = session.document();
        if (document && document->path() == asked) return backUpTo(session, chosen);
        if (chosen) sayThatAnotherIsOpen(session, *chosen);
      });
}

void backUpTo(Session& session, const std::optional<QString>& chosen) {
  OpenDocument* document = session.document();
  if (!chosen || !document) return;
  stopAllActivities(session);  // one may have been started while the panel stood open
  sayWhetherBackedUp(session, backupPath(*chosen), writeBackup(*document, session.objectModel(), *chosen));
}

Result<void> writeBackup(OpenDocument& document, const ObjectModel& model, const QString& chosen) {
  const QString target = backupPath(chosen);
  // What could not be saved is only in memory, and a copy of the file would lack it.
  ObjectContext& context = *document.context();
  auto made = context.save() ? copyDocument(model, document.path(), target, Existing::Keep)
                             : context.store()->writeCopy(context, target, Existing::Keep);
  if (made) document.told.copiedAt = context.changeCount();
  return made;
}

bool checkForBackupFile(Session& session, const QString& path) {
  return !path.endsWith(kBackupSuffix) || showBackupFileWarning(session);
}

bool showBackupFileWarning(Session& session) {
  return session.ports().alerts.runAlert(
             {.style = Alert::Style::Informational,
              .message = tr("Open Backup File?"),
              .informative = tr("You are opening a backup file. If this is not a recent backup, you "
                                "may not see  your latest activities or notes."),
              .buttons = {tr("Continue"), tr("Cancel")},
              .topic = Alert::Topic::Backups}) == kFirstButton;
}

std::optional<QString> restoreBackup(Session& session, const QString& path) {
  const QString base = QString(path).remove(kBackupSuffix);
  const QString suggestion = firstFreePath(base, QStringLiteral("pdr"));
  const QString source = base + kBackupSuffix;
  auto target = session.ports().panels.runSavePanel({.title = tr("Save the restored backup"),
                                                     .proposedName = QFileInfo(suggestion).fileName(),
                                                     .folder = {},
                                                     .requiredType = QStringLiteral("pdr")});
  if (!target || !mayReplace(session, *target)) return std::nullopt;
  if (const auto copied = copyDocument(session.objectModel(), source, *target, Existing::Replace); !copied) {
    session.notices().post(
        {.key = kRestoreNotice,
         .text = formatted(tr("“%@” was not restored to “%@”: %@."), {source, *target, copied.error().text}),
         .actions = {}});
    return std::nullopt;
  }
  noteRecentDocument(session, source);
  session.notices().withdraw(kRestoreNotice);
  session.ports().alerts.runAlert(
      {.style = Alert::Style::Informational,
       .message = tr("File restored"),
       .informative = formatted(tr("Your restored file is named %@"), {QFileInfo(*target).fileName()}),
       .buttons = {tr("OK")},
       .topic = Alert::Topic::Backups});
  return target;
}

}  // namespace pendra
