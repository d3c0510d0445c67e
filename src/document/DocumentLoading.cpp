#include "document/DocumentLoading.h"

#include <QDir>
#include <QFileInfo>

#include "DocumentReading.h"
#include "document/Backup.h"
#include "document/CorvelDocController.h"
#include "document/DocumentClosing.h"
#include "document/DocumentFiles.h"
#include "document/Session.h"
#include "model/Queries.h"
#include "platform/Preferences.h"

namespace pendra {

std::optional<QString> getLastOpenURL(const Session& session) {
  const auto path = session.ports().defaults.text(preferences::kLastURL);
  return path && !path->isEmpty() ? path : std::nullopt;
}

void setLastOpenURL(Session& session, const QString& path) {
  session.ports().defaults.setText(preferences::kLastURL, path);
}

void loadData(Session& session) {
  if (session.myDoc()) return;
  if (const auto last = getLastOpenURL(session); last && QFileInfo(*last).isFile()) {
    loadURL(session, last);
    return;
  }
  const QString folder = applicationSupportFolder(session.ports().places);
  QDir().mkpath(folder);
  // Kept: the default document is always asked for under its older name.
  loadURL(session, folder + u"/Pendra File.xml");
}

void loadURL(Session& session, const std::optional<QString>& url) {
  QString path = changeXMLtoPDR(url ? *url : tempURL(session.ports().places));
  if (!checkForBackupFile(session, path)) return;
  if (path.endsWith(u".pdrbackup")) {
    const auto restored = copyBackup(session, path);
    if (!restored) return;
    path = *restored;
  }
  session.clearDoc();
  // The document may be the very one that is open; nobody can hold its file twice.
  if (session.myContext()) session.myContext()->close();
  auto document = makeDocument(session);
  if (!readDocument(session, document, path, std::nullopt)) return;
  session.setMyContext(document->managedObjectContext());
  checkStandalone(session);
}

void reloadData(Session& session) {
  session.setMyDoc(nullptr);
  loadData(session);
}

void checkStandalone(Session& session) {
  ObjectContext& context = *session.myContext();
  if (CorvelDoc* first = queries::firstDocument(context)) {
    session.setMyDoc(first);
    session.setMyStandalone(first->standalone().value_or(false));
    if (session.myStandalone()) session.ports().menus.removeVTMenus();
    return;
  }
  auto& identity = context.insert<Identity>();
  auto& document = context.insert<CorvelDoc>();
  session.setMyDoc(&document);
  document.setIdentity(&identity);
}

bool checkIdentity(Session& session) {
  if (const CorvelFileDoc* document = session.theFileDoc()) {
    session.setMyContext(document->managedObjectContext());
    if (Identity* identity = queries::firstIdentity(*session.myContext())) {
      if (session.myDoc()) session.myDoc()->setIdentity(identity);
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
  return !session.myContext();
}

}  // namespace

void openFile(Session& session) {
  if (session.hasReadDocument() && !makeRoomForAnother(session)) return;
  if (const auto chosen = session.ports().panels.runOpenPanel()) loadURL(session, chosen);
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
