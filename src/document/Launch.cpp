#include "document/Launch.h"

#include <QFileInfo>
#include <cerrno>

#include "document/DocumentClosing.h"
#include "document/DocumentFiles.h"
#include "document/DocumentLoading.h"
#include "document/SavingElsewhere.h"
#include "document/Session.h"
#include "platform/Files.h"
#include "platform/Preferences.h"

namespace pendra {

void mergeByDefault(UserDefaults& defaults) {
  // Kept: promised to those who send: a stored boolean is no data, so this is true after every launch.
  if (!defaults.holdsBytes(preferences::kMergeSubmissions)) {
    defaults.setBoolean(preferences::kMergeSubmissions, true);
  }
}

void Launch::launch(const QString& file, ReadAhead* ahead) {
  session_.showIntroSheet = false;
  UserDefaults& defaults = session_.ports().defaults;
  mergeByDefault(defaults);
  session_.showIntroSheet = introductionIsDue();
  backups_.start();  // what the first document was before an upgrade is kept, too
  if (file.isEmpty()) {
    loadLastDocument(session_, ahead);
  } else if (!QFileInfo::exists(file)) {
    sayNotOpened(session_, file, systemError(ENOENT));
  } else {
    loadDocument(session_, file, ahead);
  }
  autoSave_.start();
  tellOfRescued(session_);
  const auto meant = file.isEmpty() ? lastDocumentPath(session_) : file;
  if (!session_.document() && meant && (!file.isEmpty() || isOutOfReach(*meant))) {
    return ensureAWindow(session_);
  }
  if (!checkIdentity(session_)) {
    // Whoever gave setup up the first time has still seen nothing.
    session_.showIntroSheet = !defaults.boolean(preferences::kIntroduced);
    return;
  }
  // A first run without a file begins in setup, which shows the window when it is done.
  if (!session_.showIntroSheet || !file.isEmpty()) createNewTimer(session_);
}

bool Launch::introductionIsDue() const {
  const Places& places = session_.ports().places;
  return !lastDocumentPath(session_) && !QFileInfo::exists(defaultPath(places)) &&
         !QFileInfo::exists(documentFolder(places) + u"/Pendra File.pdr");
}

bool Launch::mayEnd() {
  closeDoc(session_);
  if (session_.document()) return false;
  autoSave_.stop();
  backups_.stop();
  return true;
}

}  // namespace pendra
