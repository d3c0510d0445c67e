#include "document/AwayWatch.h"

#include "document/RunningTimers.h"
#include "document/Session.h"
#include "document/TimeAway.h"
#include "platform/Preferences.h"

namespace pendra {

namespace {

/// The touch that starts a timer is over a little before the entry begins, and counted in whole seconds.
constexpr double kStartOfTouch = 5;

}  // namespace

AwayWatch::AwayWatch(Session& session, IdleSource& idle, SleepSource& sleep)
    : session_(session), idle_(idle), sleep_(sleep) {
  next_.setSingleShot(true);
  QObject::connect(&next_, &QTimer::timeout, &next_, [this] { look(); });
  documents_ = session_.documentChanges().observe([this] { follow(); });
  preference_ =
      session_.ports().defaults.changesOf(preferences::kAwayMinutes.key).observe([this] { follow(); });
  sleeps_ = sleep_.changes().observe([this] {
    if (finder_) look();
  });
  follow();
}

void AwayWatch::follow() {
  edits_ = {};
  reset();
  if (const auto context = session_.context()) {
    edits_ = context->observe([this](const ChangeSet& news) {
      if (news.touches<TimeEntry>()) startOrStop();
      if (finder_ && !isAway_) noteWhatRuns();
    });
  }
  startOrStop();
}

bool AwayWatch::isWanted() const {
  const auto context = session_.context();
  return context && preferences::kAwayMinutes.of(session_.ports().defaults) > 0 && isTimeRunning(*context);
}

void AwayWatch::startOrStop() {
  const bool isWanted = this->isWanted();
  // Whoever comes back and stops the timer at once has been away all the same: one more look.
  if (isWanted != finder_.has_value()) next_.start(0);
  if (!isWanted || finder_) return;
  finder_.emplace(60.0 * preferences::kAwayMinutes.of(session_.ports().defaults));
  noteWhatRuns();
}

void AwayWatch::look() {
  if (!finder_) return;
  idle_.ask(next_, [this](std::optional<double> idle) { seen(idle); });
}

void AwayWatch::seen(std::optional<double> idle) {
  if (!finder_) return;
  const Instant now = session_.ports().clock.now();
  const auto over = finder_->look({.now = now, .uptime = sleep_.uptime(), .idle = idle});
  if (over) {
    finish(*over);
  } else if (const auto since = finder_->awaySince(); since && !std::exchange(isAway_, true)) {
    keepWhatRanAt(*since);  // now: the clock may be set before somebody is back
  }
  if (isWanted()) return next_.start(static_cast<int>(finder_->untilNextLook() * 1000));
  if (const auto since = finder_->awaySince()) finish({*since, now});
  reset();
}

void AwayWatch::reset() {
  finder_.reset();
  ran_.clear();
  isAway_ = false;
  next_.stop();
}

void AwayWatch::noteWhatRuns() {
  for (TimeEntry* entry : session_.context()->flagged<TimeEntry>("running")) {
    const auto known = [entry](const Ref<TimeEntry>& one) { return one.get() == entry; };
    if (std::none_of(ran_.begin(), ran_.end(), known)) ran_.emplace_back(entry);
  }
}

void AwayWatch::keepWhatRanAt(Instant begin) {
  std::erase_if(ran_, [begin](const Ref<TimeEntry>& entry) {
    return !entry || !entry->start() || *entry->start() - begin > kStartOfTouch;
  });
}

void AwayWatch::finish(const Absence& absence) {
  if (!std::exchange(isAway_, false)) keepWhatRanAt(absence.from);
  const auto ran = std::exchange(ran_, {});
  if (!ran.empty()) markAway(*session_.context(), ran, absence);
  noteWhatRuns();
}

}  // namespace pendra
