#include "ui_core/AwayDecision.h"

#include "document/Session.h"
#include "model/ActivityTitle.h"
#include "model/DurationText.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "ui_core/AwayNotice.h"

namespace pendra {

namespace {

struct Moments {
  QString from;
  QString to;
};

QString keepExplained(const TimeAway& away) {
  const AwayShape shape = awayShape(away);
  if (away.entries.size() > 1) return tr("It counts as work.");
  return formatted(shape.runs ? tr("It counts as work: %@ so far.") : tr("It counts as work: %@."),
                   {durationText(shape.end - shape.start)});
}

QString takeOffExplained(const TimeAway& away, const Moments& moments) {
  if (away.entries.size() > 1) {
    return formatted(tr("The entries end at %@, new ones go on from %@."), {moments.from, moments.to});
  }
  const AwayShape shape = awayShape(away);
  const double left = shape.end - shape.start - shape.absence.length();
  return formatted(shape.runs ? tr("The entry ends at %@, a new one runs from %@: %@ so far.")
                              : tr("The entry ends at %@, a new one goes on from %@: %@ in all."),
                   {moments.from, moments.to, durationText(left)});
}

QString wordsOn(const TimeAway& away, const Moments& moments) {
  return formatted(away.entries.size() == 1
                       ? tr("Nobody used this computer from %@ to %@.\n%@ was running.")
                       : tr("Nobody used this computer from %@ to %@.\n%@ were running."),
                   {moments.from, moments.to, whatRan(away)});
}

}  // namespace

AwayShape awayShape(const TimeAway& away) {
  const TimeEntry& entry = *away.entries.front();
  return {.start = *entry.start(), .absence = away.absence, .end = entry.end(), .runs = entry.isRunning()};
}

AwayTexts awayTexts(const Session& session, const TimeAway& away) {
  const QString length = awayLength(away.absence.length());
  const Moments moments{timeAndDay(session, away.absence.from), timeAndDay(session, away.absence.to)};
  const QString booked = formatted(tr("A new entry from %@ to %@."), {moments.from, moments.to});
  return {.heading = formatted(tr("%@ away"), {length}),
          .words = wordsOn(away, moments),
          .ways = {{{tr("Keep the time"), keepExplained(away), tr("Keep")},
                    {formatted(tr("Take %@ off"), {length}), takeOffExplained(away, moments), tr("Take Off")},
                    {tr("Take it off and book it to"), booked, tr("Book")}}}};
}

std::vector<Activity*> otherActivities(const ObjectContext& context, const TimeAway& away) {
  return context.fetch<Activity>([&away](const Activity& activity) {
    const auto isOf = [&activity](const TimeEntry* entry) { return entry->activity() == &activity; };
    return activity.completed() != true && std::none_of(away.entries.begin(), away.entries.end(), isOf);
  });
}

}  // namespace pendra
