#include "document/Documents.h"

#include <QFileInfo>
#include <cerrno>

#include "document/DocumentClosing.h"
#include "document/DocumentLoading.h"
#include "document/RunningTimers.h"
#include "document/Saving.h"
#include "document/Session.h"
#include "platform/Files.h"
#include "platform/Preferences.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

constexpr qsizetype kMostRecent = 10;

Error declined() { return {QStringLiteral("NSURLErrorDomain"), -1, tr("nothing was opened")}; }

}  // namespace

Result<void> Documents::open(const QString& path) {
  if (bringToFrontIfOpen(session_, path)) return {};
  if (!QFileInfo::exists(path)) {
    sayNotOpened(session_, path, systemError(ENOENT));
    return systemError(ENOENT);
  }
  if (session_.document()) {
    if (!finishEditing(session_)) {
      const Error why{QStringLiteral("document"), -1, tr("a text that is being typed cannot be stored yet")};
      sayNotOpened(session_, path, why);
      return why;
    }
    if (!showFileOpenWarning(session_)) return declined();
    stopAllActivities(session_);  // that timers are paused has just been agreed to
    saveContextOrLog(session_);
    if (!mayCloseDocument(session_)) return declined();
  }
  if (!loadDocument(session_, path)) return declined();
  createNewTimer(session_);
  return {};
}

QStringList Documents::recentDocuments() const {
  QStringList paths = session_.ports().defaults.texts(preferences::kRecentDocuments);
  paths.removeIf([](const QString& path) { return !QFileInfo(path).isFile(); });
  return paths;
}

void Documents::clearRecentDocuments() {
  session_.ports().defaults.setTexts(preferences::kRecentDocuments, {});
}

void forgetRecentDocument(Session& session, const QString& path) {
  QStringList paths = session.ports().defaults.texts(preferences::kRecentDocuments);
  paths.removeAll(path);
  session.ports().defaults.setTexts(preferences::kRecentDocuments, paths);
}

void noteRecentDocument(Session& session, const QString& path) {
  QStringList paths = session.ports().defaults.texts(preferences::kRecentDocuments);
  paths.removeAll(path);
  paths.prepend(path);
  session.ports().defaults.setTexts(preferences::kRecentDocuments, paths.mid(0, kMostRecent));
}

}  // namespace pendra
