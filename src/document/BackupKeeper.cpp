#include "document/BackupKeeper.h"

#include "document/Backups.h"
#include "platform/Preferences.h"

namespace pendra {

BackupKeeper::BackupKeeper(Session& session, Pace pace) : session_(session), pace_(pace) {
  soon_.setSingleShot(true);
  QObject::connect(&soon_, &QTimer::timeout, &soon_, [this] { makeDaily(); });
}

void BackupKeeper::start() {
  documents_ = session_.documentChanges().observe([this] { followDocument(); });
  leaving_ = session_.documentLeaving().observe([this] {
    if (isWanted()) std::ignore = makeBackup(session_, BackupReason::Daily);
  });
  followDocument();
}

void BackupKeeper::stop() {
  documents_ = {};
  leaving_ = {};
  edits_ = {};
  soon_.stop();
}

void BackupKeeper::followDocument() {
  edits_ = {};
  done_ = {};
  soon_.stop();
  const auto context = session_.context();
  if (!context) return;
  keepLayoutCopy(session_);
  edits_ = context->observe([this](const ChangeSet&) { changed(); });
}

/// Whoever is told of an edit is still inside it.
void BackupKeeper::changed() {
  const bool isNews = session_.document()->isBackedUp == false;
  if (isWanted() && isNews && done_ != today() && !soon_.isActive()) soon_.start(pace_.afterChange);
}

void BackupKeeper::makeDaily() {
  if (!isWanted() || !session_.document() || session_.document()->isBackedUp == true) return;
  const auto backups = backupsOf(session_);
  const bool isThere = !backups.empty() && session_.ports().calendar.day(backups.front().madeAt) == today();
  if (isThere || makeBackup(session_, BackupReason::Daily)) {
    done_ = today();
  } else {
    soon_.start(pace_.afterFailure);
  }
}

bool BackupKeeper::isWanted() const { return preferences::kDailyBackups.isOn(session_.ports().defaults); }

QDate BackupKeeper::today() const { return session_.ports().calendar.day(session_.ports().clock.now()); }

}  // namespace pendra
