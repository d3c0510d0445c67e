#include "document/DocumentLoading.h"

#include <QDir>
#include <QFileInfo>
#include <cerrno>

#include "document/Backup.h"
#include "document/DocumentClosing.h"
#include "document/DocumentFiles.h"
#include "document/Documents.h"
#include "document/ReadAhead.h"
#include "document/RunningTimers.h"
#include "document/Session.h"
#include "model/Queries.h"
#include "platform/Files.h"
#include "platform/Preferences.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

const QString kNoticeKey = QStringLiteral("document");

}  // namespace

std::optional<QString> lastDocumentPath(const Session& session) {
  const auto path = session.ports().defaults.text(preferences::kLastDocument);
  return path && !path->isEmpty() ? path : std::nullopt;
}

void setLastDocumentPath(Session& session, const QString& path) {
  session.ports().defaults.setText(preferences::kLastDocument, path);
}

void loadLastDocument(Session& session, ReadAhead* ahead) {
  if (session.document()) return;
  const auto last = lastDocumentPath(session);
  if (last && QFileInfo(*last).isFile()) {
    loadDocument(session, last, ahead);
    return;
  }
  if (!last || !isOutOfReach(*last)) {
    QDir().mkpath(documentFolder(session.ports().places));
    loadDocument(session, defaultPath(session.ports().places));
  }
  if (last) sayNotOpened(session, *last, systemError(QFileInfo::exists(*last) ? EISDIR : ENOENT));
}

void sayNotOpened(Session& session, const QString& path, const Error& error) {
  const bool isThere = QFileInfo::exists(path);
  const auto again = [&session, path] { std::ignore = Documents(session).open(path); };
  session.notices().post({.key = kNoticeKey,
                          .text = formatted(tr("“%@” could not be opened: %@."),
                                            {isThere ? QFileInfo(path).fileName() : path, error.text}),
                          .actions = isThere ? std::vector<NoticeAction>()
                                             : std::vector<NoticeAction>{{tr("Try Again"), again}}});
}

namespace {

/// The path at which the document lies that is asked for: moved to its newer name, or restored from a backup.
/// None when the user declined that.
std::optional<QString> placeOf(Session& session, const QString& asked) {
  const QString path = movedFromOlderName(asked, session.objectModel());
  if (!checkForBackupFile(session, path)) return std::nullopt;
  return path.endsWith(u".pdrbackup") ? restoreBackup(session, path) : path;
}

}  // namespace

bool loadDocument(Session& session, const std::optional<QString>& chosen, ReadAhead* ahead) {
  const Ports& ports = session.ports();
  const QString asked = chosen ? *chosen : untitledPath(ports.places);
  if (session.document() && session.document()->isAt(asked)) return true;
  const auto path = placeOf(session, asked);
  if (!path) return false;
  auto context = ahead ? ahead->take() : nullptr;
  auto read = context ? OpenDocument::read(*path, std::move(context))
                      : OpenDocument::read(*path, session.objectModel(), ports.clock, ports.calendar);
  if (read || !session.document()) setLastDocumentPath(session, *path);
  if (!read) {
    sayNotOpened(session, *path, read.error());
    return false;
  }
  leaveDocument(session);
  session.open(std::move(read).value());
  session.notices().withdraw(kNoticeKey);
  noteRecentDocument(session, *path);
  return true;
}

bool checkIdentity(Session& session) {
  const auto context = session.context();
  const Identity* identity = context ? queries::firstIdentity(*context) : nullptr;
  if (identity && !identity->employeeName().value_or(QString()).isEmpty()) return true;
  session.ports().windows.show(WindowKind::Setup);
  return false;
}

bool showFileOpenWarning(Session& session) {
  return session.ports().alerts.runAlert(
             {.style = Alert::Style::Warning,
              .message = tr("Close current file?"),
              .informative = tr(
                  "Before you can open another file, Pendra needs to pause any running timers and close the "
                  "current file. You can open this file again with File>Open Recent."),
              .buttons = {tr("Continue"), tr("Cancel")}}) == kFirstButton;
}

namespace {

/// Asks to close the open document and closes it; false when one is still open.
bool makeRoomForAnother(Session& session) {
  if (!finishEditing(session) || !showFileOpenWarning(session)) return false;
  stopAllActivities(session);  // that timers are paused has just been agreed to
  closeDoc(session);
  return !session.document();
}

void bringToFront(Session& session) {
  if (session.ports().windows.isOpen(WindowKind::Timer)) {
    return session.ports().windows.show(WindowKind::Timer);
  }
  if (checkIdentity(session)) createNewTimer(session);
}

}  // namespace

void openFile(Session& session) {
  if (session.document() && !makeRoomForAnother(session)) return;
  if (const auto chosen = session.ports().panels.runOpenPanel(); chosen && loadDocument(session, chosen)) {
    createNewTimer(session);
  }
  ensureAWindow(session);
}

void ensureAWindow(Session& session) {
  Windows& windows = session.ports().windows;
  if (windows.isOpen(WindowKind::Timer) || windows.isOpen(WindowKind::Setup)) return;
  windows.show(WindowKind::Welcome);
}

void newDoc(Session& session) {
  Windows& windows = session.ports().windows;
  if (windows.isOpen(WindowKind::Timer) && !makeRoomForAnother(session)) return;
  windows.show(WindowKind::Setup);
}

void createNewTimer(Session& session) {
  Windows& windows = session.ports().windows;
  if (!windows.isOpen(WindowKind::Timer)) windows.show(WindowKind::Timer);
}

void showTimerWindow(Session& session) {
  loadLastDocument(session);
  if (session.document()) {
    bringToFront(session);
  } else {
    ensureAWindow(session);
  }
}

bool bringToFrontIfOpen(Session& session, const QString& path) {
  if (!session.document() || !session.document()->isAt(path)) return false;
  bringToFront(session);
  return true;
}

}  // namespace pendra
