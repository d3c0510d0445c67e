#include "document/DocumentLoading.h"

#include <QDir>
#include <QFileInfo>

#include "DocumentReading.h"
#include "document/Backup.h"
#include "document/DocumentClosing.h"
#include "document/DocumentFiles.h"
#include "document/Documents.h"
#include "document/Session.h"
#include "model/Queries.h"
#include "platform/Preferences.h"

namespace pendra {

std::optional<QString> lastDocumentPath(const Session& session) {
  const auto path = session.ports().defaults.text(preferences::kLastDocument);
  return path && !path->isEmpty() ? path : std::nullopt;
}

void setLastDocumentPath(Session& session, const QString& path) {
  session.ports().defaults.setText(preferences::kLastDocument, path);
}

void loadLastDocument(Session& session) {
  if (session.settings()) return;
  if (const auto last = lastDocumentPath(session); last && QFileInfo(*last).isFile()) {
    loadDocument(session, last);
    return;
  }
  const QString folder = documentFolder(session.ports().places);
  QDir().mkpath(folder);
  // Kept: the default document is always asked for under its older name.
  loadDocument(session, folder + u"/Pendra File.xml");
}

void loadDocument(Session& session, const std::optional<QString>& url) {
  QString path = movedFromOlderName(url ? *url : untitledPath(session.ports().places));
  if (!checkForBackupFile(session, path)) return;
  if (path.endsWith(u".pdrbackup")) {
    const auto restored = restoreBackup(session, path);
    if (!restored) return;
    path = *restored;
  }
  session.clearDoc();
  // The document may be the very one that is open; nobody can hold its file twice.
  if (session.context()) session.context()->close();
  auto document = makeDocument(session);
  if (!readDocument(session, document, path)) return;
  session.setContext(document->context());
  checkStandalone(session);
}

void reloadData(Session& session) {
  session.setSettings(nullptr);
  loadLastDocument(session);
}

void checkStandalone(Session& session) {
  ObjectContext& context = *session.context();
  if (DocumentSettings* first = queries::firstDocument(context)) {
    session.setSettings(first);
    session.setStandalone(first->standalone().value_or(false));
    if (session.isStandalone()) session.ports().menus.hideVantorItems();
    return;
  }
  auto& identity = context.insert<Identity>();
  auto& document = context.insert<DocumentSettings>();
  session.setSettings(&document);
  document.setIdentity(&identity);
}

bool checkIdentity(Session& session) {
  if (const OpenDocument* document = session.document()) {
    session.setContext(document->context());
    if (Identity* identity = queries::firstIdentity(*session.context())) {
      if (session.settings()) session.settings()->setIdentity(identity);
      if (!identity->employeeName().value_or(QString()).isEmpty()) return true;
    }
  }
  session.ports().interfaces.load(Interface::Setup);
  return false;
}

bool showFileOpenWarning(Session& session) {
  return session.ports().alerts.runAlert(
             {.style = Alert::Style::Warning,
              .message = QStringLiteral("Close current file?"),
              .informative = QStringLiteral(
                  "Before you can open another file, Pendra needs to pause any running timers and close the "
                  "current file. You can open this file again with File>Open Recent."),
              .buttons = {QStringLiteral("Continue"), QStringLiteral("Cancel")}}) == kFirstButton;
}

namespace {

/// Asks to close the open document and closes it; false when one is still open.
bool makeRoomForAnother(Session& session) {
  if (!showFileOpenWarning(session)) return false;
  closeDoc(session);
  return !session.context();
}

}  // namespace

void openFile(Session& session) {
  if (session.hasReadDocument() && !makeRoomForAnother(session)) return;
  if (const auto chosen = session.ports().panels.runOpenPanel()) loadDocument(session, chosen);
  if (session.hasReadDocument()) session.ports().interfaces.load(Interface::TimerWindow);
  ensureAWindow(session);
}

void ensureAWindow(Session& session) {
  if (session.window || session.setupController) return;
  session.ports().interfaces.load(Interface::WelcomeController);
}

void newDoc(Session& session) {
  if (session.window && session.window->isVisible() && !makeRoomForAnother(session)) return;
  if (!session.setupController) session.ports().interfaces.load(Interface::Setup);
  if (session.setupController) session.setupController->bringToFront();
}

void createNewTimer(Session& session) {
  if (!session.window) session.ports().interfaces.load(Interface::TimerWindow);
}

}  // namespace pendra
