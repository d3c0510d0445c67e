#include "model/Report.h"

#include <QVarLengthArray>

#include "model/Queries.h"

namespace pendra {

namespace {

/// The names of an activity in the order in which a report unfolds them.
struct Level {
  GroupBy kind;
  QString name;
};

using Levels = QVarLengthArray<Level, 3>;

Levels levelsOf(const Activity& activity, GroupBy by) {
  const Level customer{GroupBy::Customer, queries::nameOf(activity.customer())};
  const Level job{GroupBy::Job, queries::nameOf(activity.job())};
  const Level service{GroupBy::Service, queries::nameOf(activity.service())};
  switch (by) {
    case GroupBy::Customer:
      return {customer, job, service};
    case GroupBy::Job:
      return {job, service};
    case GroupBy::Service:
      return {service, customer, job};
  }
  return {};
}

QDate lastDayOfBar(QDate first, const ReportQuery& query) {
  switch (query.bars) {
    case BarUnit::Day:
      return first;
    case BarUnit::Week:
      return startOfWeek(first, query.weekBegins).addDays(6);
    case BarUnit::Month:
      return {first.year(), first.month(), first.daysInMonth()};
  }
  return first;
}

/// The range in bars; the first and the last may be cut by it.
std::vector<ReportBar> emptyBars(const ReportQuery& query) {
  std::vector<ReportBar> bars;
  for (QDate day = query.range.first; day <= query.range.last; day = bars.back().last.addDays(1)) {
    bars.push_back({.first = day, .last = std::min(lastDayOfBar(day, query), query.range.last)});
  }
  return bars;
}

/// Finds the bar of an instant. Entries come nearly in order, so the bar of the last one is tried first.
class BarFinder {
 public:
  BarFinder(const std::vector<ReportBar>& bars, const Calendar& calendar) {
    for (const ReportBar& bar : bars) edges_.push_back(calendar.startOfDay(bar.first));
    if (!bars.empty()) edges_.push_back(calendar.startOfDay(bars.back().last.addDays(1)));
  }
  [[nodiscard]] std::optional<std::size_t> operator()(std::optional<Instant> start) {
    if (!start || edges_.empty() || *start < edges_.front() || *start >= edges_.back()) return std::nullopt;
    if (!(edges_[at_] <= *start && *start < edges_[at_ + 1])) {
      const auto next = std::upper_bound(edges_.begin(), edges_.end(), *start);
      at_ = static_cast<std::size_t>(next - edges_.begin()) - 1;
    }
    return at_;
  }

 private:
  std::vector<Instant> edges_;
  std::size_t at_ = 0;
};

class Builder {
 public:
  Builder(const ObjectContext& context, const ReportQuery& query, Instant now)
      : context_(context), now_(now) {
    report_.query = query;
    report_.bars = emptyBars(query);
  }

  Report build() {
    BarFinder barOf(report_.bars, context_.calendar());
    for (Activity* activity : context_.all<Activity>()) {
      const auto& only = report_.query.customer;
      if (only && queries::nameOf(activity->customer()) != *only) continue;
      Hours hours;
      Levels levels;
      std::size_t place = 0;
      for (const TimeEntry* entry : activity->entries()) {
        const auto bar = barOf(entry->start());
        if (!bar) continue;
        if (levels.isEmpty()) {  // the first one: most activities have none in the range
          levels = levelsOf(*activity, report_.query.by);
          place = groupOf(*activity, levels.front());
        }
        const CountedEntry counted = countedAt(now_, *entry);
        hours.add(counted);
        BarPart& share = shares_[place][*bar];
        (counted.sent ? share.sent : share.notSent) += counted.length;
      }
      if (!levels.isEmpty()) addToGroups(*activity, levels, report_.groups[place], hours);
    }
    sortGroups(report_.groups);
    fillBars();
    return std::move(report_);
  }

 private:
  /// The place of the activity's group at the top, as the groups came.
  std::size_t groupOf(const Activity& activity, const Level& level) {
    const bool isJob = level.kind == GroupBy::Job;
    const QString customer = isJob ? queries::nameOf(activity.customer()) : QString();
    const auto known = places_.constFind({customer, level.name});
    if (known != places_.constEnd()) return *known;
    const std::size_t place = report_.groups.size();
    report_.groups.push_back({.kind = level.kind, .name = level.name, .customer = customer});
    shares_.emplace_back(report_.bars.size(), BarPart{place});
    return *places_.insert({customer, level.name}, place);
  }

  void addToGroups(Activity& activity, const Levels& levels, ReportGroup& top, const Hours& hours) {
    report_.all += hours;
    top.hours += hours;
    ReportGroup* group = &top;
    for (auto level = levels.begin() + 1; level != levels.end(); ++level) {
      auto& within = group->groups;
      const auto known = std::find_if(within.begin(), within.end(),
                                      [&](const ReportGroup& one) { return one.name == level->name; });
      group = known == within.end()
                  ? &within.emplace_back(ReportGroup{.kind = level->kind, .name = level->name})
                  : &*known;
      group->hours += hours;
    }
    group->activities.emplace_back(&activity);
  }

  static void sortGroups(std::vector<ReportGroup>& groups) {
    std::sort(groups.begin(), groups.end(), [](const ReportGroup& one, const ReportGroup& other) {
      if (one.hours.total != other.hours.total) return one.hours.total > other.hours.total;
      return std::tie(one.name, one.customer) < std::tie(other.name, other.customer);
    });
    for (ReportGroup& group : groups) sortGroups(group.groups);
  }

  void fillBars() {
    for (std::size_t place = 0; place < report_.groups.size(); ++place) {
      const ReportGroup& group = report_.groups[place];
      const auto& shares = shares_[places_.value({group.customer, group.name})];
      for (std::size_t at = 0; at < shares.size(); ++at) {
        const BarPart& share = shares[at];
        if (share.sent == Length() && share.notSent == Length()) continue;
        ReportBar& bar = report_.bars[at];
        bar.sent += share.sent;
        bar.notSent += share.notSent;
        bar.parts.push_back({place, share.sent, share.notSent});
      }
    }
  }

  const ObjectContext& context_;
  Instant now_;
  Report report_;
  QHash<std::pair<QString, QString>, std::size_t> places_;
  std::vector<std::vector<BarPart>> shares_;  // for each group as it came, its share of each bar
};

}  // namespace

Report makeReport(const ObjectContext& context, const ReportQuery& query, Instant now) {
  return Builder(context, query, now).build();
}

std::vector<ReportEntry> entriesOf(const ReportGroup& group, const ReportQuery& query,
                                   const Calendar& calendar, Instant now) {
  const Days days(query.range.first, query.range.last, calendar);
  std::vector<ReportEntry> entries;
  for (const Ref<Activity>& activity : group.activities) {
    if (!activity) continue;
    for (const TimeEntry* entry : activity->entries()) {
      if (!days.contain(entry->start())) continue;
      ReportEntry shown{.start = *entry->start(), .notes = entry->notes().value_or(QString())};
      shown.hours.add(countedAt(now, *entry));
      entries.push_back(std::move(shown));
    }
  }
  std::stable_sort(entries.begin(), entries.end(),
                   [](const ReportEntry& one, const ReportEntry& other) { return one.start > other.start; });
  return entries;
}

}  // namespace pendra
