#include "ui_core/LogCorrections.h"

#include <cmath>

#include "model/Activity.h"
#include "model/ActivityTitle.h"
#include "model/CutAndJoin.h"
#include "model/DurationText.h"
#include "model/Overlaps.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "store/ObjectContext.h"
#include "ui_core/LogController.h"
#include "ui_core/Moments.h"

namespace pendra {

namespace {

using Entries = std::vector<TimeEntry*>;

/// "%@" is the number.
/// Those that are still there and belong to an activity.
Entries selectedIn(const LogController& log) {
  Entries entries;
  for (const Ref<TimeEntry>& entry : log.selectedEntries()) {
    if (entry && entry->activity()) entries.push_back(entry.get());
  }
  return entries;
}

QString whyNotOne(const Entries& entries) {
  if (entries.empty()) return tr("No entry of the time log is selected.");
  return entries.size() > 1 ? tr("More than one entry is selected.") : QString();
}

QString whyNotSplit(const Entries& entries) {
  if (QString why = whyNotOne(entries); !why.isEmpty()) return why;
  const TimeEntry& entry = *entries.front();
  if (QString why = whyHeld(timeHoldOf(entry)); !why.isEmpty()) return why;
  return cutNear(entry, entry.start().value_or(kReferenceInstant) + 1)
             ? QString()
             : tr("The entry is too short to be split.");
}

QString whyNotDuplicate(const Entries& entries) {
  if (entries.empty()) return tr("No entry of the time log is selected.");
  for (const TimeEntry* entry : entries) {
    const TimeHold hold = timeHoldOf(*entry);
    if (hold != TimeHold::Sent && hold != TimeHold::None) return whyHeld(hold);
  }
  return {};
}

QString whyNotMerge(const Entries& entries) {
  switch (obstacleToJoin(entries)) {
    case JoinObstacle::TooFew:
      return tr("Entries that follow on one another have to be selected.");
    case JoinObstacle::Activities:
      return tr("The selected entries are of different activities.");
    case JoinObstacle::Sent:
      return whyHeld(TimeHold::Sent);
    case JoinObstacle::InDoubt:
      return whyHeld(TimeHold::InDoubt);
    case JoinObstacle::Halted:
      return whyHeld(TimeHold::Halted);
    case JoinObstacle::Apart:
      return tr("The selected entries do not follow on one another.");
    case JoinObstacle::Away:
      return tr("It has still to be said whether the time away counts.");
    case JoinObstacle::None:
      break;
  }
  return {};
}

QString whyNotStart(const Entries& entries) {
  if (QString why = whyNotOne(entries); !why.isEmpty()) return why;
  return entries.front()->activity()->isRunning() ? tr("This activity is running.") : QString();
}

/// A clock that was set back makes nothing less than nothing.
double lengthOf(const TimeEntry& entry) { return std::max(0.0, entry.length()); }

TimeEntry& copyOf(const TimeEntry& entry) {
  TimeEntry& copy = entry.activity()->addEntry();
  copy.setStart(entry.start());
  copy.setDuration(lengthOf(entry));
  copy.setNotes(entry.notes());
  return copy;
}

QString overlapOf(const TimeEntry& copy) {
  if (!copy.start()) return {};
  const Overlaps overlaps = overlapsWith(*copy.context(), *copy.start(), copy.end(), &copy);
  return overlaps.parts.empty() ? QString() : formatted(tr("A copy was made. %@."), {overlapText(overlaps)});
}

QDate dayOf(const TimeEntry& entry) { return entry.context()->calendar().day(*entry.start()); }

/// The full minute before, unless that lies outside.
Instant proposedCut(const TimeEntry& entry) {
  const double part = entry.isRunning() ? 1 : 0.5;
  const Instant wanted = *entry.start() + part * (entry.end() - *entry.start());
  const Instant minute{std::floor(wanted.seconds / 60) * 60};
  return cutNear(entry, minute) ? minute : Instant{std::floor(wanted.seconds)};
}

QString wordsOn(const TimeEntry& entry, Instant at) {
  const QString first = durationText(at - *entry.start());
  const QString until = momentText(at, dayOf(entry), entry.context()->calendar());
  if (entry.isRunning()) return formatted(tr("%@ until %@, then it runs on"), {first, until});
  const QString rest = durationText(entry.storedDuration() - (at - *entry.start()));
  return formatted(tr("%@ until %@, then %@"), {first, until, rest});
}

QString whyOutside(const TimeEntry& entry) {
  const Calendar& calendar = entry.context()->calendar();
  const QString from = momentText(*entry.start(), dayOf(entry), calendar);
  const QString to = momentText(entry.end(), dayOf(entry), calendar);
  return formatted(tr("Outside of the entry, which lasts from %@ to %@"), {from, to});
}

}  // namespace

QString whyHeld(TimeHold hold) {
  switch (hold) {
    case TimeHold::Sent:
      return tr("An entry that was sent keeps its time.");
    case TimeHold::InDoubt:
      return tr("Vantor has not confirmed this entry. You are asked about it before the next sending.");
    case TimeHold::Halted:
      return tr("It has still to be said how long this entry is.");
    case TimeHold::None:
      break;
  }
  return {};
}

QString whyNot(Correction correction, const LogController& log) {
  const Entries entries = selectedIn(log);
  switch (correction) {
    case Correction::Split:
      return whyNotSplit(entries);
    case Correction::Duplicate:
      return whyNotDuplicate(entries);
    case Correction::Merge:
      return whyNotMerge(entries);
    case Correction::StartAgain:
      break;
  }
  return whyNotStart(entries);
}

QString duplicateSelected(LogController& log) {
  if (!whyNot(Correction::Duplicate, log).isEmpty()) return {};
  const Entries entries = selectedIn(log);
  Entries copies;
  std::ignore = log.session().context()->edit(
      counted(entries.size(), "Duplicate of an Entry", "Duplicate of %@ Entries"), [&] {
        for (const TimeEntry* entry : entries) copies.push_back(&copyOf(*entry));
      });
  log.selectEntries({copies.begin(), copies.end()});
  if (copies.size() == 1) return overlapOf(*copies.front());
  return formatted(tr("%@ copies hold the same time as the entries that they are of."),
                   {QString::number(copies.size())});
}

QString mergeSelected(LogController& log) {
  if (!whyNot(Correction::Merge, log).isEmpty()) return {};
  const Entries entries = selectedIn(log);
  TimeEntry* all = nullptr;
  std::ignore =
      log.session().context()->edit(formatted(tr("Merge of %@ Entries"), {QString::number(entries.size())}),
                                    {.indivisible = true}, [&] { all = &join(entries); });
  log.selectEntries({all});
  return formatted(tr("%@ entries are one of %@ now."),
                   {QString::number(entries.size()), durationText(std::trunc(lengthOf(*all)))});
}

void startSelectedAgain(LogController& log) {
  if (whyNot(Correction::StartAgain, log).isEmpty()) log.startOrStop(log.selection().row());
}

SplitTexts splitTexts(const TimeEntry& entry) {
  const Calendar& calendar = entry.context()->calendar();
  const QString from = momentText(*entry.start(), {}, calendar);
  const QString to = entry.isRunning() ? tr("now") : momentText(entry.end(), dayOf(entry), calendar);
  return {.title = activityTitle(*entry.activity()),
          .span = formatted(tr("%@ to %@, %@"), {from, to, durationText(std::trunc(lengthOf(entry)))}),
          .proposal = momentText(proposedCut(entry), dayOf(entry), calendar)};
}

SplitReading readSplit(const TimeEntry& entry, const QString& text) {
  const Calendar& calendar = entry.context()->calendar();
  const auto moments =
      momentsNamed(text, dayOf(entry), calendar.day(entry.end()), entry.context()->clock().now(), calendar);
  if (moments.empty()) return {{}, {tr("A time is typed as 14:30 or 2:30 PM"), Echo::Tone::Warning}};
  for (const Instant moment : moments) {
    if (const auto at = cutNear(entry, moment)) return {at, {wordsOn(entry, *at)}};
  }
  return {{}, {whyOutside(entry), Echo::Tone::Warning}};
}

void split(TimeEntry& entry, Instant at) {
  if (timeHoldOf(entry) != TimeHold::None || !cutNear(entry, at)) return;
  std::ignore =
      entry.context()->edit(tr("Split of an Entry"), {.indivisible = true}, [&] { cut(entry, at); });
}

}  // namespace pendra
