#include "StepTexts.h"

#include <set>

#include "model/ActivityTitle.h"
#include "model/DurationText.h"
#include "model/Queries.h"
#include "model/TimeEntry.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "store/ObjectContext.h"

namespace pendra {

namespace {

constexpr qsizetype kMostNamed = 3;
constexpr double kWorthSaying = 60;

/// What the activity was called before the edit, which has taken it out of every relationship.
QString titleBefore(const ChangeSet& changes, const Activity& activity) {
  QStringList names{queries::nameOf(changes.targetBefore<Customer>(activity, "customer")),
                    queries::nameOf(changes.targetBefore<Job>(activity, "job")),
                    queries::nameOf(changes.targetBefore<Service>(activity, "service"))};
  names.removeAll(QString());
  return names.isEmpty() ? activity.notes().value_or(QString()) : names.join(u" - ");
}

template <class T>
QString whatWasDeleted(const ChangeSet& changes, const char* many) {
  const auto gone = changes.deleted<T>();
  if (gone.empty()) return {};
  if (gone.size() > 1) return counted(std::ssize(gone), "", many);
  return formatted(tr("“%@” was deleted."), {queries::nameOf(gone[0])});
}

QString whatWasDeleted(const ChangeSet& changes) {
  if (auto customers =
          whatWasDeleted<Customer>(changes, QT_TRANSLATE_NOOP("pendra", "%Ln customers were deleted."));
      !customers.isEmpty())
    return customers;
  if (auto jobs = whatWasDeleted<Job>(changes, QT_TRANSLATE_NOOP("pendra", "%Ln jobs were deleted."));
      !jobs.isEmpty())
    return jobs;
  if (auto services =
          whatWasDeleted<Service>(changes, QT_TRANSLATE_NOOP("pendra", "%Ln service items were deleted."));
      !services.isEmpty())
    return services;
  const auto activities = changes.deleted<Activity>();
  if (activities.size() == 1) {
    return formatted(tr("“%@” was deleted with all its time entries."),
                     {titleBefore(changes, *activities[0])});
  }
  if (!activities.empty()) {
    return counted(std::ssize(activities), "1 activity was deleted.", "%Ln activities were deleted.");
  }
  const auto entries = changes.deleted<TimeEntry>();
  if (entries.empty()) return {};
  return counted(std::ssize(entries), "1 time entry was deleted.", "%Ln time entries were deleted.");
}

/// The activity whose entries all have another customer, job or service now; none unless there are several.
const Activity* movedWithOthers(const ChangeSet& changes) {
  for (const Activity* activity : changes.changed<Activity>()) {
    const bool moved = changes.changed(*activity, "customer") || changes.changed(*activity, "job") ||
                       changes.changed(*activity, "service");
    if (moved && activity->entries().size() > 1) return activity;
  }
  return nullptr;
}

QString nameOf(const Skipped& skipped) {
  const ManagedObject* object = skipped.object.get();
  if (skipped.entity == &TimeEntry::descriptor()) {
    const auto* entry = static_cast<const TimeEntry*>(object);
    if (!entry || !entry->activity()) return tr("a time entry");
    return formatted(tr("a time entry of “%@”"), {activityTitle(*entry->activity())});
  }
  if (skipped.entity == &Activity::descriptor()) {
    return object ? formatted(u"“%@”", {activityTitle(static_cast<const Activity&>(*object))})
                  : tr("an activity");
  }
  if (skipped.entity == &Customer::descriptor() && object) {
    return formatted(u"“%@”", {queries::nameOf(static_cast<const Customer*>(object))});
  }
  if (skipped.entity == &Job::descriptor() && object) {
    return formatted(u"“%@”", {queries::nameOf(static_cast<const Job*>(object))});
  }
  if (skipped.entity == &Service::descriptor() && object) {
    return formatted(u"“%@”", {queries::nameOf(static_cast<const Service*>(object))});
  }
  return tr("a name that is gone");
}

/// “Acme”, “Roof”: the names that came to the lists together with an entry for them.
QStringList namesThatCame(const ChangeSet& changes) {
  QStringList names;
  if (changes.inserted<TimeEntry>().empty()) return names;
  const auto add = [&names](const auto& inserted) {
    for (const auto* one : inserted) names << formatted(u"“%@”", {queries::nameOf(one)});
  };
  add(changes.inserted<Customer>());
  add(changes.inserted<Job>());
  add(changes.inserted<Service>());
  return names;
}

QString whatCame(const ChangeSet& changes) {
  QStringList names = namesThatCame(changes);
  if (names.size() == 1) return formatted(tr("%@ is new in its list."), {names.front()});
  if (names.size() > 1) {
    const QString last = names.takeLast();
    return formatted(tr("%@ and %@ are new in their lists."), {names.join(QStringLiteral(", ")), last});
  }
  const auto inserted = changes.inserted<TimeEntry>();
  const bool isPartOfAnother = !changes.changed<TimeEntry>().empty();
  if (isPartOfAnother || inserted.size() != 1 || !inserted[0]->activity() || !inserted[0]->start() ||
      inserted[0]->storedDuration() <= 0)
    return {};
  const TimeEntry& entry = *inserted[0];
  const Calendar& calendar = entry.context()->calendar();
  const QDate day = calendar.day(*entry.start());
  if (day == calendar.day(entry.context()->clock().now())) return {};
  return formatted(tr("%@ are booked for “%@” on %@."),
                   {durationText(entry.storedDuration()), activityTitle(*entry.activity()),
                    day.toString(QStringLiteral("ddd d MMM yyyy"))});
}

/// By how much entries of the activity that have stayed are longer now, as when a split is taken back.
double lengthGiven(const ChangeSet& changes, const Activity* activity, Instant now) {
  double seconds = 0;
  for (const TimeEntry* entry : changes.changed<TimeEntry>()) {
    const PropertyValue before = changes.before(*entry, "duration");
    const double* length = std::get_if<double>(&before);
    if (length && entry->activity() == activity) seconds += entry->lengthAt(now) - *length;
  }
  return seconds;
}

}  // namespace

QString whatWasDone(const ChangeSet& changes) {
  if (QString deleted = whatWasDeleted(changes); !deleted.isEmpty()) return deleted;
  for (const Activity* activity : changes.changed<Activity>()) {
    if (!changes.changed(*activity, "completed") || activity->completed() != true) continue;
    return formatted(tr("“%@” is complete. You find it again under Activity > Completed Activities."),
                     {activityTitle(*activity)});
  }
  if (const Activity* moved = movedWithOthers(changes)) {
    return formatted(tr("All %@ time entries of “%@” have changed."),
                     {QString::number(moved->entries().size()), activityTitle(*moved)});
  }
  return whatCame(changes);
}

QString timeTakenAway(const ChangeSet& changes, Instant now) {
  const auto gone = changes.deleted<TimeEntry>();
  if (gone.empty()) return {};
  const auto* activity = changes.targetBefore<Activity>(*gone[0], "activity");
  double seconds = -lengthGiven(changes, activity, now);
  for (const TimeEntry* entry : gone) seconds += entry->lengthAt(now);
  if (seconds < kWorthSaying) return {};
  const QString length = durationText(seconds);
  if (gone.size() > 1) {
    return formatted(tr("%@ in %@ entries"), {length, QString::number(gone.size())});
  }
  const QString title = !activity               ? QString()
                        : activity->isDeleted() ? titleBefore(changes, *activity)
                                                : activityTitle(*activity);
  return formatted(tr("%@ of “%@”"), {length, title});
}

QString whatRunsOn(const ChangeSet& changes, Instant now) {
  QStringList sentences;
  for (const TimeEntry* entry : changes.changed<TimeEntry>()) {
    if (!changes.changed(*entry, "running") || !entry->isRunning() || !entry->activity()) continue;
    const PropertyValue before = changes.before(*entry, "duration");
    const double* length = std::get_if<double>(&before);
    const double byNow = entry->lengthAt(now);
    if (!length || byNow - *length < kWorthSaying) continue;
    sentences << formatted(tr("“%@” runs on, %@ by now."),
                           {activityTitle(*entry->activity()), durationText(byNow)});
  }
  return sentences.join(u' ');
}

QStringList whatWasLeftAlone(const std::vector<Skipped>& skipped) {
  std::set<std::pair<const EntityDescriptor*, qint64>> seen;
  QStringList names;
  for (const Skipped& each : skipped) {
    if (seen.insert({each.entity, each.id}).second) names << nameOf(each);
  }
  const qsizetype more = names.size() - kMostNamed;
  if (more <= 0) return names;
  return names.first(kMostNamed) << counted(more, "1 more", "%Ln more");
}

}  // namespace pendra
