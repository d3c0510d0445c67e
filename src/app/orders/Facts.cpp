#include "Facts.h"

#include "model/Hours.h"
#include "model/Queries.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra::facts {

namespace {

using Entries = std::vector<const TimeEntry*>;

QVariant instant(std::optional<Instant> when, const Calendar& calendar) {
  if (!when) return {};
  const QDateTime local = calendar.local(*when);
  return local.toOffsetFromUtc(local.offsetFromUtc()).toString(Qt::ISODate);
}

QVariant text(const std::optional<QString>& one) { return one ? QVariant(*one) : QVariant(); }

template <class Named>
QVariant name(const Named* one) {
  return one ? text(one->name()) : QVariant();
}

double secondsAt(Instant now, const TimeEntry& entry) { return secondsOf(countedAt(now, entry).length); }

/// Those of activities, which are the ones that the program shows; by their start.
Entries entriesOf(const ObjectContext& context) {
  Entries entries;
  for (const TimeEntry* entry : context.all<TimeEntry>()) {
    if (entry->activity()) entries.push_back(entry);
  }
  std::stable_sort(entries.begin(), entries.end(), [](const TimeEntry* one, const TimeEntry* other) {
    return one->start() < other->start();
  });
  return entries;
}

/// Whether an entry began on one of the days that an order asks for.
class Range {
 public:
  Range(const Order& order, const Calendar& calendar) {
    if (order.from) begin_ = calendar.startOfDay(*order.from);
    if (order.to) end_ = calendar.startOfDay(order.to->addDays(1));
  }
  [[nodiscard]] bool contains(std::optional<Instant> start) const {
    if (!begin_ && !end_) return true;
    return start && (!begin_ || *begin_ <= *start) && (!end_ || *start < *end_);
  }

 private:
  std::optional<Instant> begin_;
  std::optional<Instant> end_;
};

bool isCalled(const Customer* customer, const QString& wanted) {
  return customer && queries::nameOf(customer).compare(wanted, Qt::CaseInsensitive) == 0;
}

/// What tells a group from the others beside it, and its name. A job is one of its customer.
struct GroupKey {
  QString within;
  QVariant name;
};

GroupKey keyOf(const TimeEntry& entry, Level level, const Calendar& calendar) {
  const Activity& activity = *entry.activity();
  switch (level) {
    case Level::Customer:
      return {{}, name(activity.customer())};
    case Level::Job:
      return {queries::nameOf(activity.customer()), name(activity.job())};
    case Level::Service:
      return {{}, name(activity.service())};
    case Level::Day:
      break;
  }
  if (!entry.start()) return {};
  return {{}, calendar.day(*entry.start()).toString(Qt::ISODate)};
}

struct Group {
  QVariant name;
  Entries entries;
  Length length{};
};

std::vector<Group> groupsOf(const Entries& entries, Level level, const ObjectContext& context) {
  const Instant now = context.clock().now();
  std::map<std::pair<QString, QString>, Group> groups;
  for (const TimeEntry* entry : entries) {
    const GroupKey key = keyOf(*entry, level, context.calendar());
    Group& group = groups[{key.within, key.name.toString()}];
    group.name = key.name;
    group.entries.push_back(entry);
    group.length += countedAt(now, *entry).length;
  }
  std::vector<Group> sorted;
  sorted.reserve(groups.size());
  for (auto& [key, group] : groups) sorted.push_back(std::move(group));
  if (level != Level::Day) {
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const Group& one, const Group& other) { return one.length > other.length; });
  }
  return sorted;
}

QVariantList unfolded(const Entries& entries, std::span<const Level> levels, const ObjectContext& context) {
  QVariantList list;
  if (levels.empty()) return list;
  for (const Group& group : groupsOf(entries, levels.front(), context)) {
    list << QVariantMap{{QStringLiteral("name"), group.name},
                        {QStringLiteral("seconds"), secondsOf(group.length)},
                        {QStringLiteral("groups"), unfolded(group.entries, levels.subspan(1), context)}};
  }
  return list;
}

}  // namespace

QVariantMap ofActivity(const Activity& activity) {
  return {{QStringLiteral("id"), activity.objectID()},
          {QStringLiteral("customer"), name(activity.customer())},
          {QStringLiteral("job"), name(activity.job())},
          {QStringLiteral("service"), name(activity.service())},
          {QStringLiteral("notes"), text(activity.notes())},
          {QStringLiteral("billable"), activity.billable() == true}};
}

QVariantMap ofEntry(const TimeEntry& entry, const ObjectContext& context) {
  const Activity& activity = *entry.activity();
  const Calendar& calendar = context.calendar();
  const Instant now = context.clock().now();
  const bool hasEnd = entry.start() && !entry.isRunning();
  return {{QStringLiteral("customer"), name(activity.customer())},
          {QStringLiteral("job"), name(activity.job())},
          {QStringLiteral("service"), name(activity.service())},
          {QStringLiteral("start"), instant(entry.start(), calendar)},
          {QStringLiteral("end"), hasEnd ? instant(entry.endAt(now), calendar) : QVariant()},
          {QStringLiteral("seconds"), secondsAt(now, entry)},
          {QStringLiteral("notes"), text(entry.notes())},
          {QStringLiteral("sent"), entry.wasSent() ? instant(entry.dateSubmitted(), calendar) : QVariant()},
          {QStringLiteral("running"), entry.isRunning()}};
}

QVariantList running(const ObjectContext& context) {
  QVariantList list;
  for (const Activity* activity : context.all<Activity>()) {
    const TimeEntry* entry = activity->runningEntry();
    if (!entry) continue;
    QVariantMap one = ofActivity(*activity);
    one[QStringLiteral("since")] = instant(entry->start(), context.calendar());
    one[QStringLiteral("seconds")] = secondsAt(context.clock().now(), *entry);
    list << one;
  }
  return list;
}

QVariantMap status(const ObjectContext& context, const QString& document, Qt::DayOfWeek weekBegins) {
  const Instant now = context.clock().now();
  const QDate day = context.calendar().day(now);
  const QDate week = startOfWeek(day, weekBegins);
  const Days today(day, day, context.calendar());
  const Days thisWeek(week, week.addDays(6), context.calendar());
  Hours all;
  Hours ofToday;
  Hours ofWeek;
  for (const TimeEntry* entry : entriesOf(context)) {
    const CountedEntry counted = countedAt(now, *entry);
    all.add(counted);
    if (today.contain(counted.start)) ofToday.add(counted);
    if (thisWeek.contain(counted.start)) ofWeek.add(counted);
  }
  return {{QStringLiteral("document"), document},
          {QStringLiteral("running"), running(context)},
          {QStringLiteral("todaySeconds"), secondsOf(ofToday.total)},
          {QStringLiteral("weekSeconds"), secondsOf(ofWeek.total)},
          {QStringLiteral("unsentSeconds"), secondsOf(all.notSent())},
          {QStringLiteral("unsent"), all.unsentEntries}};
}

Result<QVariantList> log(const ObjectContext& context, const Order& order) {
  const auto customers = context.all<Customer>();
  if (order.customer && std::none_of(customers.begin(), customers.end(),
                                     [&](const Customer* one) { return isCalled(one, *order.customer); })) {
    return refusal(Refusal::NoMatch, formatted(tr("no customer is called “%@”"), {*order.customer}));
  }
  const Range range(order, context.calendar());
  QVariantList list;
  for (const TimeEntry* entry : entriesOf(context)) {
    if (!range.contains(entry->start()) || (order.onlyUnsent && entry->wasSent())) continue;
    if (order.customer && !isCalled(entry->activity()->customer(), *order.customer)) continue;
    list << ofEntry(*entry, context);
  }
  return list;
}

QVariantMap report(const ObjectContext& context, const Order& order) {
  const Range range(order, context.calendar());
  Entries entries;
  Hours all;
  for (const TimeEntry* entry : entriesOf(context)) {
    if (!range.contains(entry->start())) continue;
    entries.push_back(entry);
    all.add(countedAt(context.clock().now(), *entry));
  }
  return {{QStringLiteral("seconds"), secondsOf(all.total)},
          {QStringLiteral("groups"), unfolded(entries, order.by, context)}};
}

}  // namespace pendra::facts
