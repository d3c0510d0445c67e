#include "ui_core/RunningTimers.h"

#include <QHash>
#include <algorithm>
#include <cmath>

#include "model/ActivityTitle.h"
#include "model/DurationText.h"
#include "model/Queries.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

double RunningTimer::seconds() const { return entry ? std::max(0.0, std::trunc(entry->length())) : 0; }

QString RunningTimer::length() const { return durationText(seconds()); }

std::vector<RunningTimer> runningTimers(const ObjectContext& context) {
  std::vector<RunningTimer> timers;
  for (TimeEntry* entry : context.flagged<TimeEntry>("running")) {
    if (Activity* activity = entry->activity()) timers.push_back({.activity = activity, .entry = entry});
  }
  std::stable_sort(timers.begin(), timers.end(), [](const RunningTimer& one, const RunningTimer& other) {
    return one.entry->length() > other.entry->length();
  });
  return timers;
}

QString runningTitle(const std::vector<RunningTimer>& timers) {
  if (timers.empty()) return {};
  QString title = timers.front().length();
  const QString customer = queries::nameOf(timers.front().activity->customer());
  if (!customer.isEmpty()) title += u' ' + customer;
  if (timers.size() == 1) return title;
  return counted(std::ssize(timers) - 1, "%@ and 1 more", "%@ and %Ln more", {title});
}

QString shortTitle(const Activity& activity) {
  const QString customer = queries::nameOf(activity.customer());
  const QString job = queries::nameOf(activity.job());
  const QString what = job.isEmpty() ? queries::nameOf(activity.service()) : job;
  if (customer.isEmpty() || what.isEmpty()) {
    const QString title = activityTitle(activity);
    return title.isEmpty() ? tr("an activity without a name") : title;
  }
  return customer + u" - " + what;
}

std::vector<Activity*> latestActivities(const ObjectContext& context, std::size_t most) {
  QHash<Activity*, Instant> started;
  for (const TimeEntry* entry : context.all<TimeEntry>()) {
    Activity* activity = entry->activity();
    if (!activity || !entry->start() || activity->completed() != false) continue;
    const auto known = started.find(activity);
    if (known == started.end()) {
      started.insert(activity, *entry->start());
    } else if (*known < *entry->start()) {
      *known = *entry->start();
    }
  }
  for (const RunningTimer& timer : runningTimers(context)) started.remove(timer.activity.get());
  std::vector<Activity*> latest(started.keyBegin(), started.keyEnd());
  const auto end = latest.begin() + static_cast<std::ptrdiff_t>(std::min(most, latest.size()));
  std::partial_sort(latest.begin(), end, latest.end(), [&](Activity* one, Activity* other) {
    const Instant a = started[one];
    const Instant b = started[other];
    return a == b ? one->objectID() < other->objectID() : b < a;
  });
  latest.erase(end, latest.end());
  return latest;
}

}  // namespace pendra
