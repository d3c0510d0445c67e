#include "document/TimeAway.h"

#include "model/Activity.h"
#include "model/CutAndJoin.h"
#include "platform/Preferences.h"
#include "platform/Translation.h"
#include "platform/UserDefaults.h"
#include "store/ObjectContext.h"

namespace pendra {

namespace {

void takeOff(TimeEntry& entry, const Absence& away) {
  const bool runs = entry.isRunning();
  const double before = away.from - *entry.start();
  const double after = entry.end() - away.to;
  setAway(entry, std::nullopt);
  if (before < kSameMoment) {
    entry.setStart(away.to);
    if (!runs) entry.setDuration(std::max(0.0, after));
    return;
  }
  if (runs || after >= kSameMoment) cut(entry, away.to);
  entry.setDuration(before);
}

void mark(TimeEntry& entry, const Absence& absence) {
  if (entry.timeIsFixed() || !entry.start() || !entry.activity()) return;
  Absence away{std::max(absence.from, *entry.start()), std::min(absence.to, entry.end())};
  if (away.length() < Absence::kShortest) return;
  const auto earlier = unansweredAway(entry);
  if (!earlier) return setAway(entry, away);
  if (away.from - earlier->to >= Absence::kShortest) return setAway(cut(entry, earlier->to), away);
  setAway(entry, Absence{std::min(earlier->from, away.from), std::max(earlier->to, away.to)});
}

/// Runs `work` for every entry that still waits, with what it is marked with.
template <class Work>
void answer(ObjectContext& context, const QString& name, const AwayEntries& entries, Work work) {
  std::ignore = context.edit(name, {.indivisible = true}, [&] {
    for (const Ref<TimeEntry>& entry : entries) {
      if (const auto away = entry ? unansweredAway(*entry) : std::nullopt) work(*entry, *away);
    }
  });
}

}  // namespace

std::optional<Absence> unansweredAway(const TimeEntry& entry) {
  const bool mayBeAsked = entry.start() && entry.activity() && !entry.timeIsFixed() && !entry.isHalted();
  return mayBeAsked ? awayWithin(entry) : std::nullopt;
}

void markAway(ObjectContext& context, const std::vector<Ref<TimeEntry>>& ran, const Absence& absence) {
  std::ignore = context.edit(QString(), {.undoable = false}, [&] {
    for (const Ref<TimeEntry>& entry : ran) {
      if (entry) mark(*entry, absence);
    }
  });
}

TimeAway timeAway(const ObjectContext& context) {
  TimeAway latest;
  for (TimeEntry* entry : context.all<TimeEntry>()) {
    const auto away = unansweredAway(*entry);
    if (!away) continue;
    if (latest.entries.empty() || latest.absence.to < away->to) latest = {{}, *away};
    if (latest.absence.to != away->to) continue;
    latest.entries.push_back(entry);
    latest.absence.from = std::min(latest.absence.from, away->from);
  }
  return latest;
}

void keepAway(ObjectContext& context, const AwayEntries& entries) {
  answer(context, tr("Keep Time Away"), entries,
         [](TimeEntry& entry, const Absence&) { setAway(entry, std::nullopt); });
}

void takeAwayOff(ObjectContext& context, const AwayEntries& entries) {
  answer(context, tr("Take Off Time Away"), entries, takeOff);
}

void bookAway(ObjectContext& context, const AwayEntries& entries, Activity& other) {
  const QString name = tr("Book Time Away");
  std::ignore = context.edit(name, {.indivisible = true}, [&] {
    std::optional<Absence> all;
    answer(context, name, entries, [&all](TimeEntry& entry, const Absence& away) {
      if (!all) all = away;
      all = Absence{std::min(all->from, away.from), std::max(all->to, away.to)};
      takeOff(entry, away);
    });
    if (!all) return;
    TimeEntry& booked = other.addEntry();
    booked.setStart(all->from);
    booked.setDuration(all->length());
  });
}

}  // namespace pendra
