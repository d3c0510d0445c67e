#include "model/CutAndJoin.h"

#include <QStringList>
#include <cmath>

#include "model/Activity.h"
#include "store/ObjectContext.h"

namespace pendra {

namespace {

constexpr double kMinute = 60;
/// Instants of one moment may be told apart by less than this.
constexpr double kSameMoment = 1;
/// What is lost where fractions of a second are counted from 2001.
constexpr double kUnseen = 1e-4;

struct Away {
  Instant from;
  Instant to;
};

/// None where there is none, or where the entry has been corrected so that it lies outside.
std::optional<Away> awayWithin(const TimeEntry& entry) {
  if (!entry.awayFrom() || !entry.awayTo()) return std::nullopt;
  const Away away{*entry.awayFrom(), *entry.awayTo()};
  const bool isWithin = *entry.start() - away.from < kSameMoment && away.to - endOf(entry) < kSameMoment;
  return isWithin ? std::optional(away) : std::nullopt;
}

/// None where less is left than is worth a question.
void setAway(TimeEntry& entry, std::optional<Away> away) {
  if (away && away->to - away->from < TimeEntry::kShortestAway) away.reset();
  entry.setAwayFrom(away ? std::optional(away->from) : std::nullopt);
  entry.setAwayTo(away ? std::optional(away->to) : std::nullopt);
}

bool isWholeMinutes(double seconds) { return std::fmod(seconds, kMinute) == 0; }

/// Whether somebody seems to have typed its time, in which case its seconds were dropped.
bool isTyped(const TimeEntry& entry) {
  return isWholeMinutes(entry.start()->seconds) &&
         (entry.running() == true || isWholeMinutes(entry.storedDuration()));
}

bool touches(const TimeEntry& first, const TimeEntry& second) {
  const double gap = *second.start() - endOf(first);
  if (std::abs(gap) <= kSameMoment) return true;
  return gap > 0 ? isTyped(first) && gap < 2 * kMinute : isTyped(second) && gap > -kMinute;
}

std::vector<TimeEntry*> byStart(std::span<TimeEntry* const> entries) {
  std::vector<TimeEntry*> sorted(entries.begin(), entries.end());
  std::stable_sort(sorted.begin(), sorted.end(),
                   [](const TimeEntry* one, const TimeEntry* other) { return one->compare(*other) < 0; });
  return sorted;
}

JoinObstacle obstacleOf(TimeHold hold) {
  switch (hold) {
    case TimeHold::Sent:
      return JoinObstacle::Sent;
    case TimeHold::InDoubt:
      return JoinObstacle::InDoubt;
    case TimeHold::Halted:
      return JoinObstacle::Halted;
    case TimeHold::None:
      break;
  }
  return JoinObstacle::None;
}

/// The time away of all of them where each will lie in the joined entry; more than one where it is not the
/// same.
std::vector<Away> awayOf(const std::vector<TimeEntry*>& entries, Instant start) {
  std::vector<Away> all;
  for (const TimeEntry* entry : entries) {
    const double moved = start - *entry->start();
    start = start + (endOf(*entry) - *entry->start());
    const auto own = awayWithin(*entry);
    if (!own) continue;
    const Away away{own->from + moved, own->to + moved};
    if (!all.empty() && away.from - all.back().to < kSameMoment) {
      all.back().to = std::max(all.back().to, away.to);
    } else {
      all.push_back(away);
    }
  }
  return all;
}

QString notesOf(const std::vector<TimeEntry*>& entries) {
  QStringList notes;
  for (const TimeEntry* entry : entries) notes << entry->notes().value_or(QString());
  notes.removeAll(QString());
  notes.removeDuplicates();
  return notes.join(QStringLiteral("; "));
}

}  // namespace

Instant endOf(const TimeEntry& entry) {
  return entry.running() == true ? entry.context()->clock().now() : *entry.start() + entry.storedDuration();
}

TimeHold timeHoldOf(const TimeEntry& entry) {
  if (entry.wasSent()) return TimeHold::Sent;
  if (entry.sendingSince()) return TimeHold::InDoubt;
  return entry.haltedAt() ? TimeHold::Halted : TimeHold::None;
}

std::optional<Instant> cutNear(const TimeEntry& entry, Instant wanted) {
  if (!entry.start()) return std::nullopt;
  const double first = std::ceil(wanted - *entry.start() - kUnseen);
  const double rest = endOf(entry) - (*entry.start() + first);
  const bool isInside = first >= kSameMoment && rest >= (entry.running() == true ? 0 : kSameMoment);
  return isInside ? std::optional(*entry.start() + first) : std::nullopt;
}

TimeEntry& cut(TimeEntry& entry, Instant at) {
  TimeEntry& rest = entry.activity()->addEntry();
  const double length = at - *entry.start();
  rest.setStart(at);
  rest.setNotes(entry.notes());
  const auto away = awayWithin(entry);
  setAway(entry, away ? std::optional(Away{away->from, std::min(away->to, at)}) : std::nullopt);
  setAway(rest, away ? std::optional(Away{std::max(away->from, at), away->to}) : std::nullopt);
  if (entry.running() == true) {
    entry.setRunning(false);
    rest.startTimer();
  } else {
    rest.setDuration(entry.storedDuration() - length);
  }
  entry.setDuration(length);
  return rest;
}

JoinObstacle obstacleToJoin(std::span<TimeEntry* const> entries) {
  if (entries.size() < 2) return JoinObstacle::TooFew;
  for (const TimeEntry* entry : entries) {
    if (entry->activity() != entries.front()->activity()) return JoinObstacle::Activities;
    const JoinObstacle held = obstacleOf(timeHoldOf(*entry));
    if (held != JoinObstacle::None) return held;
    if (!entry->start()) return JoinObstacle::Apart;
  }
  const auto sorted = byStart(entries);
  const auto apart =
      std::adjacent_find(sorted.begin(), sorted.end(),
                         [](const TimeEntry* one, const TimeEntry* next) { return !touches(*one, *next); });
  if (apart != sorted.end()) return JoinObstacle::Apart;
  return awayOf(sorted, *sorted.front()->start()).size() > 1 ? JoinObstacle::Away : JoinObstacle::None;
}

TimeEntry& join(std::span<TimeEntry* const> entries) {
  const auto sorted = byStart(entries);
  const auto runs = std::find_if(sorted.begin(), sorted.end(),
                                 [](const TimeEntry* entry) { return entry->running() == true; });
  TimeEntry& all = runs == sorted.end() ? *sorted.front() : **runs;
  double length = 0;
  for (const TimeEntry* entry : sorted) length += endOf(*entry) - *entry->start();
  const Instant start = runs == sorted.end() ? *all.start() : endOf(all) + -length;
  const auto away = awayOf(sorted, start);
  const QString notes = notesOf(sorted);
  all.setStart(start);
  if (runs == sorted.end()) all.setDuration(length);
  setAway(all, away.empty() ? std::nullopt : std::optional(away.front()));
  if (!notes.isEmpty()) all.setNotes(notes);
  for (TimeEntry* entry : sorted) {
    if (entry != &all) all.context()->deleteObject(*entry);
  }
  return all;
}

}  // namespace pendra
