#include "document/IdleReminder.h"

#include "document/RunningTimers.h"
#include "document/Session.h"
#include "model/TimeEntry.h"
#include "platform/Preferences.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

constexpr double kMinute = 60;
constexpr int kDaysAhead = 7;
/// A timer that waits for days would run late by the time that the machine slept; so it looks now and then.
constexpr double kLongestWait = 600;
const QString kKey = QStringLiteral("reminder");

}  // namespace

IdleReminder::IdleReminder(Session& session, std::function<void(const QString&)> told)
    : session_(session), told_(std::move(told)) {
  next_.setSingleShot(true);
  QObject::connect(&next_, &QTimer::timeout, &next_, [this] { look(); });
  documents_ = session_.documentChanges().observe([this] { followDocument(); });
  UserDefaults& defaults = session_.ports().defaults;
  for (const QString& key : {preferences::kReminder.key, preferences::kRemindMinutes.key,
                             preferences::kRemindFrom.key, preferences::kRemindUntil.key}) {
    preferences_.push_back(defaults.changesOf(key).observe([this] { followPreferences(); }));
  }
  followDocument();
}

void IdleReminder::followPreferences() {
  if (!preferences::kReminder.isOn(session_.ports().defaults)) session_.notices().withdraw(kKey);
  wait();
}

void IdleReminder::followDocument() {
  edits_ = {};
  idleSince_.reset();
  if (const auto context = session_.context()) {
    edits_ = context->observe([this](const ChangeSet& news) {
      if (news.touches<TimeEntry>()) followWhatRuns();
    });
  }
  followWhatRuns();
}

void IdleReminder::followWhatRuns() {
  const auto context = session_.context();
  const bool isIdle = context && !isTimeRunning(*context);
  if (isIdle == idleSince_.has_value()) return wait();
  remindedAt_.reset();
  if (isIdle) {
    idleSince_ = session_.ports().clock.now();
  } else {
    idleSince_.reset();
    session_.notices().withdraw(kKey);
  }
  wait();
}

std::optional<Instant> IdleReminder::dueOn(QDate day) const {
  if (day.dayOfWeek() > Qt::Friday) return std::nullopt;
  const auto& [clock, calendar, places, defaults, alerts, panels, workspace, modals, notifications, windows] =
      session_.ports();
  if (remindedAt_ && calendar.day(*remindedAt_) == day) return std::nullopt;
  const Instant from = calendar.instant(day, preferences::kRemindFrom.of(defaults));
  const Instant until = calendar.instant(day, preferences::kRemindUntil.of(defaults));
  const Instant due = std::max(from, *idleSince_) + kMinute * preferences::kRemindMinutes.of(defaults);
  return due < until ? std::optional(due) : std::nullopt;
}

std::optional<Instant> IdleReminder::due() const {
  const Ports& ports = session_.ports();
  if (!idleSince_ || !preferences::kReminder.isOn(ports.defaults)) return std::nullopt;
  const QDate today = ports.calendar.day(ports.clock.now());
  const Instant endOfToday = ports.calendar.instant(today, preferences::kRemindUntil.of(ports.defaults));
  for (int ahead = ports.clock.now() < endOfToday ? 0 : 1; ahead <= kDaysAhead; ++ahead) {
    if (const auto due = dueOn(today.addDays(ahead))) return due;
  }
  return std::nullopt;
}

void IdleReminder::wait() {
  const auto next = due();
  if (!next) return next_.stop();
  const double seconds = std::clamp(*next - session_.ports().clock.now(), 0.0, kLongestWait);
  next_.start(static_cast<int>(seconds * 1000) + 1);
}

void IdleReminder::look() {
  if (const auto next = due(); next && *next <= session_.ports().clock.now()) remind();
  wait();
}

void IdleReminder::remind() {
  const Instant now = session_.ports().clock.now();
  remindedAt_ = now;
  const Instant from = session_.ports().calendar.instant(
      session_.ports().calendar.day(now), preferences::kRemindFrom.of(session_.ports().defaults));
  const auto minutes = static_cast<qint64>((now - std::max(from, *idleSince_)) / kMinute);
  const QString sentence = minutes == 1
                               ? tr("Nothing has run for 1 minute.")
                               : formatted(tr("Nothing has run for %@ minutes."), {QString::number(minutes)});
  session_.notices().post(
      {.key = kKey, .text = sentence, .actions = {}, .ofDocument = true, .asks = true, .comesLast = true});
  if (told_) told_(sentence);
}

}  // namespace pendra
