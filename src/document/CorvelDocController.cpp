#include "document/CorvelDocController.h"

#include <QFileInfo>

#include "DocumentReading.h"
#include "document/Backup.h"
#include "document/DocumentClosing.h"
#include "document/DocumentFiles.h"
#include "document/DocumentLoading.h"
#include "document/Saving.h"
#include "document/Session.h"
#include "model/Identity.h"
#include "platform/Preferences.h"

namespace pendra {

namespace {

constexpr qsizetype kMostRecent = 10;

Error declined() {
  return {QStringLiteral("NSURLErrorDomain"), -1, QStringLiteral("the user kept the current file")};
}

}  // namespace

Result<void> CorvelDocController::openDocumentWithContentsOfURL(const QString& url) {
  const QString path = changeXMLtoPDR(url);
  if (session_.hasReadDocument()) {
    if (!showFileOpenWarning(session_)) return declined();
    saveAction(session_);
    closeDoc(session_);
    if (session_.myContext()) return declined();
    session_.clearDoc();
  }
  if (auto document = initWithContentsOfURL(path)) makeWindowControllers(session_, std::move(document));
  return {};
}

std::shared_ptr<CorvelFileDoc> CorvelDocController::initWithType(const QString& type) {
  if (session_.hasReadDocument()) {
    if (!showFileOpenWarning(session_)) return nullptr;
    closeDoc(session_);
    if (session_.myContext()) return nullptr;
  }
  auto document = makeDocument(session_);
  document->setCurFileExtension(type);
  session_.setTheFileDoc(document);
  return document;
}

std::shared_ptr<CorvelFileDoc> CorvelDocController::initWithContentsOfURL(const QString& url) {
  if (!checkForBackupFile(session_, url)) return nullptr;
  QString path = url;
  if (path.endsWith(u".pdrbackup")) {
    const auto restored = copyBackup(session_, path);
    if (!restored) return nullptr;
    path = *restored;
  }
  auto document = makeDocument(session_);
  return readDocument(session_, document, path, std::nullopt) ? document : nullptr;
}

void CorvelDocController::newDocument() {
  auto document = initWithType(QStringLiteral("xml"));
  if (!document) return;
  makeWindowControllers(session_, document);
  loadURL(session_, document->fileURL());
  auto& context = *session_.myContext();
  context.insert<CorvelDoc>().setIdentity(&context.insert<Identity>());
  session_.ports().interfaces.load(Interface::Setup);
}

void CorvelDocController::saveAllDocuments() {
  saveAction(session_);
  if (session_.window) session_.window->close();
}

QStringList CorvelDocController::fileExtensionsFromType(const QString&) const {
  return {QStringLiteral("xml"), QStringLiteral("pdr")};
}

QStringList CorvelDocController::recentDocuments() const {
  QStringList paths = session_.ports().defaults.texts(preferences::kRecentDocuments);
  paths.removeIf([](const QString& path) { return !QFileInfo(path).isFile(); });
  return paths;
}

void CorvelDocController::clearRecentDocuments() {
  session_.ports().defaults.setTexts(preferences::kRecentDocuments, {});
}

void noteRecentDocument(Session& session, const QString& path) {
  QStringList paths = session.ports().defaults.texts(preferences::kRecentDocuments);
  paths.removeAll(path);
  paths.prepend(path);
  session.ports().defaults.setTexts(preferences::kRecentDocuments, paths.mid(0, kMostRecent));
}

void makeWindowControllers(Session& session, std::shared_ptr<CorvelFileDoc> document) {
  auto context = document->managedObjectContext();
  session.setTheFileDoc(std::move(document));
  session.setMyContext(std::move(context));
  session.ports().interfaces.load(Interface::TimerWindow);
}

}  // namespace pendra
