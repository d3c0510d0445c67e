#include "document/Launch.h"

#include <QFileInfo>

#include "document/DocumentClosing.h"
#include "document/DocumentFiles.h"
#include "document/DocumentLoading.h"
#include "document/Documents.h"
#include "document/RunningTimers.h"
#include "document/Session.h"
#include "platform/Preferences.h"

namespace pendra {

namespace {

constexpr std::chrono::seconds kSaveInterval{120};
/// How soon a save that fell into a modal loop is tried again.
constexpr std::chrono::seconds kAfterModalLoop{1};

}  // namespace

Launch::Launch(Session& session) : session_(session) {
  QObject::connect(&saveTimer_, &QTimer::timeout, &saveTimer_, [this] { saveTimerFired(); });
}

void Launch::launch(const QString& file) {
  session_.showIntroSheet = false;
  // Kept: a stored boolean is not a data value, so the preference is true after every launch.
  UserDefaults& defaults = session_.ports().defaults;
  if (!defaults.dataForKey(preferences::kMergeSubmissions)) {
    defaults.setBoolean(preferences::kMergeSubmissions, true);
  }
  session_.showIntroSheet = introductionIsDue();
  if (!file.isEmpty()) {
    [[maybe_unused]] const auto opened = Documents(session_).open(file);
  }
  loadLastDocument(session_);
  if (session_.settings()) haltRunningEntries(session_);
  saveTimer_.start(kSaveInterval);
  if (!checkIdentity(session_)) {
    // Whoever gave setup up the first time has still seen nothing.
    session_.showIntroSheet = !defaults.boolean(preferences::kIntroduced);
    return;
  }
  if (session_.showIntroSheet || session_.window) return;
  session_.ports().interfaces.load(Interface::TimerWindow);
}

bool Launch::introductionIsDue() const {
  const QString folder = documentFolder(session_.ports().places);
  return !lastDocumentPath(session_) && !QFileInfo::exists(folder + u"/Pendra File.xml") &&
         !QFileInfo::exists(folder + u"/Pendra File.pdr");
}

void Launch::saveTimerFired() {
  // What the user is about to confirm in a modal sheet is half made; the save waits until it is settled.
  if (session_.ports().modals.isModal()) {
    saveTimer_.start(kAfterModalLoop);
    return;
  }
  saveTimer_.start(kSaveInterval);
  periodicSave(session_);
}

bool Launch::mayEnd() {
  closeDoc(session_);
  if (session_.context()) return false;
  saveTimer_.stop();
  return true;
}

}  // namespace pendra
