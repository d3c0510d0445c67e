#include "ui_core/EarlierTimer.h"

#include <QRegularExpression>
#include <cmath>

#include "model/Absence.h"
#include "model/ActivityTitle.h"
#include "platform/NaturalDate.h"
#include "platform/Preferences.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "ui_core/EntryQuestion.h"

namespace pendra {

namespace {

constexpr double kMinute = 60;
/// A time of day that would have to be of yesterday is meant so if it is not longer ago than this.
constexpr double kHalfDay = 12.0 * 60 * 60;

bool namesOnlyATime(const QString& text) {
  static const QRegularExpression pattern(QStringLiteral(R"(^\s*[\d:]+\s*([ap]m)?\s*$)"),
                                          QRegularExpression::CaseInsensitiveOption);
  return pattern.match(text).hasMatch();
}

/// In the night when the clock is set back, the later of two moments of the same name that has been.
Instant lastOfThatName(Instant first, Instant now, const Calendar& calendar) {
  const QDateTime local = calendar.local(first);
  for (const double later : {60 * kMinute, 30 * kMinute}) {
    const QDateTime other = calendar.local(first + later);
    if (first + later <= now && other.date() == local.date() && other.time() == local.time()) {
      return first + later;
    }
  }
  return first;
}

std::optional<Instant> typedMoment(const QString& text, Instant now, const Calendar& calendar) {
  const auto named = readNaturalDate(text, now, calendar);
  if (!named) return std::nullopt;
  const Instant moment = lastOfThatName(*named, now, calendar);
  if (moment <= now || !namesOnlyATime(text)) return moment;
  const Instant yesterday = calendar.startOfDay(calendar.day(now)) + -1;
  const auto before = readNaturalDate(text, yesterday, calendar);
  return before && now - *before <= kHalfDay ? before : moment;
}

EarlierTimer::Reading refused(const QString& why) {
  return {.at = {}, .echo = {.text = why, .tone = Echo::Tone::Warning}};
}

}  // namespace

EarlierTimer::EarlierTimer(Session& session, Activity& activity, EarlierDeed deed)
    : session_(session), activity_(&activity), deed_(deed) {
  const Instant limit = now();
  for (const TimeEntry* entry : session.context()->all<TimeEntry>()) {
    if (entry->isRunning() || !entry->start() || !entry->activity()) continue;
    const Instant end = entry->endAt(limit);
    if (end <= limit) lastEnd_ = std::max(lastEnd_.value_or(end), end);
  }
}

QString EarlierTimer::title() const { return activity_ ? activityTitle(*activity_) : QString(); }

std::optional<Instant> EarlierTimer::instantOf(EarlierMoment moment, const QString& typed) const {
  switch (moment) {
    case EarlierMoment::FiveMinutes:
      return now() + -5 * kMinute;
    case EarlierMoment::TenMinutes:
      return now() + -10 * kMinute;
    case EarlierMoment::FifteenMinutes:
      return now() + -15 * kMinute;
    case EarlierMoment::LastEnd:
      return lastEnd_;
    case EarlierMoment::Typed:
      return typedMoment(typed, now(), session_.ports().calendar);
  }
  return std::nullopt;
}

EarlierTimer::Reading EarlierTimer::read(EarlierMoment moment, const QString& typed) const {
  if (!activity_) return refused(tr("the activity is gone"));
  const bool isTyped = moment == EarlierMoment::Typed;
  if (isTyped && typed.trimmed().isEmpty()) return {.at = {}, .echo = {tr("type a time, such as 9:30")}};
  const auto at = instantOf(moment, typed);
  if (!at && isTyped) return refused(formatted(tr("“%@” is no time"), {typed.trimmed()}));
  if (!at) return refused(tr("no entry has ended yet"));
  if (*at > now()) return refused(formatted(tr("%@ has not come yet"), {clockText(*at)}));
  return deed_ == EarlierDeed::Start ? startAt(*at) : stopAt(*at);
}

EarlierTimer::Reading EarlierTimer::startAt(Instant at) const {
  if (activity_->isRunning()) return refused(tr("it runs already"));
  return told(at, QStringList{formatted(tr("starts %@"), {whenText(at)})} + stops(at), overlaps(at, now()));
}

EarlierTimer::Reading EarlierTimer::stopAt(Instant at) const {
  const TimeEntry* entry = activity_->runningEntry();
  if (!entry) return refused(tr("it does not run"));
  const Instant start = entry->start().value_or(at);
  if (at < start) {
    return refused(formatted(tr("it was started %@ and cannot stop before that, at %@"),
                             {clockText(start), clockText(at)}));
  }
  return told(at,
              {formatted(tr("stops %@"), {whenText(at)}),
               formatted(tr("its length is %@"), {durationInWords(at - start)})},
              overlaps(start, at));
}

EarlierTimer::Reading EarlierTimer::told(Instant at, QStringList parts, const QString& overlap) const {
  if (!overlap.isEmpty()) parts << overlap;
  const bool isDoubtful = !overlap.isEmpty() || now() - at > kHalfDay;
  return {.at = at,
          .echo = {.text = parts.join(QStringLiteral("; ")),
                   .tone = isDoubtful ? Echo::Tone::Warning : Echo::Tone::Quiet}};
}

QString EarlierTimer::clockText(Instant instant) const { return timeAndDay(session_, instant); }

QString EarlierTimer::whenText(Instant at) const {
  const qint64 minutes = std::llround((now() - at) / kMinute);
  if (minutes == 0) return formatted(tr("%@, now"), {clockText(at)});
  const QString length = minutes < 60 ? formatted(tr("%@ min"), {QString::number(minutes)})
                                      : durationInWords(static_cast<double>(minutes) * kMinute);
  return formatted(tr("%@, %@ ago"), {clockText(at), length});
}

QStringList EarlierTimer::stops(Instant at) const {
  if (!preferences::kOneAtATime.isOn(session_.ports().defaults)) return {};
  QStringList told;
  for (const TimeEntry* entry : session_.context()->flagged<TimeEntry>("running")) {
    if (!entry->activity()) continue;
    const QString words =
        entry->start().value_or(at) > at ? tr("stops “%@” now") : tr("stops “%@” at the same time");
    told << formatted(words, {activityTitle(*entry->activity())});
  }
  return told;
}

QString EarlierTimer::overlaps(Instant from, Instant to) const {
  const bool othersStop =
      deed_ == EarlierDeed::Start && preferences::kOneAtATime.isOn(session_.ports().defaults);
  const TimeEntry* latest = nullptr;
  int count = 0;
  for (const TimeEntry* entry : session_.context()->all<TimeEntry>()) {
    const bool runs = entry->isRunning();
    if (!entry->start() || !entry->activity() || (runs && entry->activity() == activity_)) continue;
    if (othersStop && runs && *entry->start() <= from) continue;
    if (to - *entry->start() < kSameMoment || entry->endAt(now()) - from < kSameMoment) continue;
    ++count;
    if (!latest || latest->compare(*entry) < 0) latest = entry;
  }
  if (!latest) return {};
  const QString end = latest->isRunning() ? tr("now") : clockText(latest->endAt(now()));
  const QString range = clockText(*latest->start()) + u'–' + end;
  const QString title = activityTitle(*latest->activity());
  if (count == 1) return formatted(tr("overlaps %@ of “%@”"), {range, title});
  return formatted(tr("overlaps %@ of “%@” and %@ more"), {range, title, QString::number(count - 1)});
}

bool EarlierTimer::perform(EarlierMoment moment, const QString& typed) const {
  const auto at = read(moment, typed).at;
  if (!at) return false;
  const bool starts = deed_ == EarlierDeed::Start;
  std::ignore =
      session_.context()->edit(starts ? tr("Start Earlier") : tr("Stop Earlier"), {.indivisible = true}, [&] {
        if (starts) {
          activity_->startEntry(*at);
          return;
        }
        TimeEntry& entry = *activity_->runningEntry();
        entry.stopTimerAt(*at);
        // Whoever says when it ended has said what counts.
        if (entry.awayTo().value_or(*at) > *at) setAway(entry, std::nullopt);
      });
  return true;
}

}  // namespace pendra
