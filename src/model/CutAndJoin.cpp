#include "model/CutAndJoin.h"

#include <QStringList>
#include <cmath>

#include "model/Absence.h"
#include "model/Activity.h"
#include "store/ObjectContext.h"

namespace pendra {

namespace {

constexpr double kMinute = 60;
/// What is lost where fractions of a second are counted from 2001.
constexpr double kUnseen = 1e-4;

bool isWholeMinutes(double seconds) { return std::fmod(seconds, kMinute) == 0; }

/// Whether somebody seems to have typed its time, in which case its seconds were dropped.
bool isTyped(const TimeEntry& entry) {
  return isWholeMinutes(entry.start()->seconds) &&
         (entry.isRunning() || isWholeMinutes(entry.storedDuration()));
}

bool touches(const TimeEntry& first, const TimeEntry& second) {
  const double gap = *second.start() - first.end();
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
std::vector<Absence> awayOf(const std::vector<TimeEntry*>& entries, Instant start) {
  std::vector<Absence> all;
  for (const TimeEntry* entry : entries) {
    const double moved = start - *entry->start();
    start = start + (entry->end() - *entry->start());
    const auto own = awayWithin(*entry);
    if (!own) continue;
    const Absence away{own->from + moved, own->to + moved};
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

TimeHold timeHoldOf(const TimeEntry& entry) {
  if (entry.wasSent()) return TimeHold::Sent;
  if (entry.sendingSince()) return TimeHold::InDoubt;
  return entry.haltedAt() ? TimeHold::Halted : TimeHold::None;
}

std::optional<Instant> cutNear(const TimeEntry& entry, Instant wanted) {
  if (!entry.start()) return std::nullopt;
  const double first = std::ceil(wanted - *entry.start() - kUnseen);
  const double rest = entry.end() - (*entry.start() + first);
  const bool isInside = first >= kSameMoment && rest >= (entry.isRunning() ? 0 : kSameMoment);
  return isInside ? std::optional(*entry.start() + first) : std::nullopt;
}

TimeEntry& cut(TimeEntry& entry, Instant at) {
  TimeEntry& rest = entry.activity()->addEntry();
  const double length = at - *entry.start();
  rest.setStart(at);
  rest.setNotes(entry.notes());
  const auto away = awayWithin(entry);
  setAway(entry, away ? std::optional(Absence{away->from, std::min(away->to, at)}) : std::nullopt);
  setAway(rest, away ? std::optional(Absence{std::max(away->from, at), away->to}) : std::nullopt);
  if (entry.isRunning()) {
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
  const auto runs =
      std::find_if(sorted.begin(), sorted.end(), [](const TimeEntry* entry) { return entry->isRunning(); });
  TimeEntry& all = runs == sorted.end() ? *sorted.front() : **runs;
  double length = 0;
  for (const TimeEntry* entry : sorted) length += entry->end() - *entry->start();
  const Instant start = runs == sorted.end() ? *all.start() : all.end() + -length;
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
