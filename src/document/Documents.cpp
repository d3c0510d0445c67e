#include "document/Documents.h"

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

Result<void> Documents::open(const QString& url) {
  const QString path = movedFromOlderName(url);
  if (session_.hasReadDocument()) {
    if (!showFileOpenWarning(session_)) return declined();
    saveAction(session_);
    closeDoc(session_);
    if (session_.context()) return declined();
    session_.clearDoc();
  }
  if (auto document = readFrom(path)) showDocument(session_, std::move(document));
  return {};
}

std::shared_ptr<OpenDocument> Documents::readFrom(const QString& url) {
  if (!checkForBackupFile(session_, url)) return nullptr;
  QString path = url;
  if (path.endsWith(u".pdrbackup")) {
    const auto restored = restoreBackup(session_, path);
    if (!restored) return nullptr;
    path = *restored;
  }
  auto document = makeDocument(session_);
  return readDocument(session_, document, path) ? document : nullptr;
}

QStringList Documents::recentDocuments() const {
  QStringList paths = session_.ports().defaults.texts(preferences::kRecentDocuments);
  paths.removeIf([](const QString& path) { return !QFileInfo(path).isFile(); });
  return paths;
}

void Documents::clearRecentDocuments() {
  session_.ports().defaults.setTexts(preferences::kRecentDocuments, {});
}

void noteRecentDocument(Session& session, const QString& path) {
  QStringList paths = session.ports().defaults.texts(preferences::kRecentDocuments);
  paths.removeAll(path);
  paths.prepend(path);
  session.ports().defaults.setTexts(preferences::kRecentDocuments, paths.mid(0, kMostRecent));
}

void showDocument(Session& session, std::shared_ptr<OpenDocument> document) {
  auto context = document->context();
  session.setDocument(std::move(document));
  session.setContext(std::move(context));
  session.ports().interfaces.load(Interface::TimerWindow);
}

}  // namespace pendra
