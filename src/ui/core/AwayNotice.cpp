#include "ui_core/AwayNotice.h"

#include <cmath>

#include "document/Session.h"
#include "model/ActivityTitle.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

QString awayLength(double seconds) {
  const qint64 minutes = std::max(1LL, std::llround(seconds / 60));
  QStringList parts;
  if (minutes >= 60) parts << counted(minutes / 60, "1 hour", "%Ln hours");
  if (minutes % 60 != 0) parts << counted(minutes % 60, "1 minute", "%Ln minutes");
  return parts.join(u' ');
}

QString awayMark(const TimeEntry& entry) {
  const auto away = unansweredAway(entry);
  if (!away) return {};
  return formatted(tr("%@ min away?"), {QString::number(std::llround(away->length() / 60))});
}

QString whatRan(const TimeAway& away) {
  if (away.entries.size() > 1) return counted(std::ssize(away.entries), "1 activity", "%Ln activities");
  return formatted(tr("“%@”"), {activityTitle(*away.entries.front()->activity())});
}

AwayNotice::AwayNotice(Session& session, std::function<void()> decide)
    : session_(session),
      decide_(std::move(decide)),
      question_(session, {.ask = [this] { return ask(); },
                          .waits = [](const TimeEntry& entry) { return unansweredAway(entry).has_value(); },
                          .key = QStringLiteral("away")}) {}

EntryQuestion::Question AwayNotice::ask() const {
  TimeAway away = timeAway(*session_.context());
  if (away.entries.empty()) return {};
  const AwayEntries entries(away.entries.begin(), away.entries.end());
  const auto isDone = [] { return false; };  // it goes with the last answer
  const auto answer = [this, entries](void (*give)(ObjectContext&, const AwayEntries&)) {
    return [&session = session_, entries, give] { give(*session.context(), entries); };
  };
  Notice notice{.key = {},
                .text = formatted(tr("You were away for %@, from %@ to %@, while %@ ran."),
                                  {awayLength(away.absence.length()), timeAndDay(session_, away.absence.from),
                                   timeAndDay(session_, away.absence.to), whatRan(away)}),
                .actions = {{tr("Keep"), answer(keepAway), isDone},
                            {tr("Take Off"), answer(takeAwayOff), isDone},
                            {tr("Decide…"), decide_, isDone}},
                .onlyInTimerWindow = true};
  return {std::move(away.entries), std::move(notice)};
}

}  // namespace pendra
