#include "ui_core/LogController.h"

#include <numeric>

#include "DayRange.h"
#include "model/Queries.h"
#include "platform/Log.h"
#include "platform/Preferences.h"
#include "platform/Text.h"
#include "store/Predicate.h"

namespace pendra {

namespace {

std::shared_ptr<const LogActivity> snapshotOf(Activity& activity) {
  return std::make_shared<const LogActivity>(LogActivity{.activity = &activity,
                                                         .customer = queries::nameOf(activity.customer()),
                                                         .job = queries::nameOf(activity.job()),
                                                         .service = queries::nameOf(activity.service())});
}

LogRow makeRow(TimeEntry& period, const std::shared_ptr<const LogActivity>& of) {
  return {.of = of,
          .period = &period,
          .start = period.start(),
          .duration = period.storedDuration(),
          .submittedSeconds = period.submittedSeconds()};
}

double lengthOf(std::span<const LogRow> rows) {
  return std::accumulate(rows.begin(), rows.end(), 0.0,
                         [](double sum, const LogRow& row) { return sum + row.duration; });
}

}  // namespace

LogController::LogController(Session& session, TimerState& window, TablePort& table, const QLocale& locale)
    : session_(session),
      window_(window),
      table_(table),
      rows_(makeLogTable(session.ports().calendar, locale)),
      hideSubmitted_(
          session.ports().defaults.changesOf(preferences::kHideSubmitted).observe([this] { reloadData(); })) {
}

ObjectContext* LogController::context() const {
  const OpenDocument* document = session_.document();
  return document ? document->context().get() : nullptr;
}

void LogController::start() {
  reloadNames();
  rows_.sort();
  table_.reloadData();
}

std::vector<LogRow> LogController::makeRows() const {
  std::vector<LogRow> rows;
  if (!context()) return rows;
  std::optional<Predicate> filter;
  if (const QString text = buildPredicate(); !text.isEmpty()) {
    auto parsed = Predicate::parse(text);
    if (!parsed) {
      logLine(formatted(u"The time log's filter %@", {parsed.error().text}));
      return rows;
    }
    filter = std::move(parsed).value();
  }
  const bool hides = hidesSubmitted();
  const DayRange days(dateOf(startDateField), dateOf(endDateField));
  if (!filter) rows.reserve(context()->all<TimeEntry>().size());
  for (Activity* activity : context()->all<Activity>()) {
    if (filter && !filter->matches(*activity)) continue;
    const auto snapshot = snapshotOf(*activity);
    for (TimeEntry* period : activity->entries()) {
      LogRow row = makeRow(*period, snapshot);
      if (hides && row.showsAsSent()) continue;
      if (days.contains(*period)) rows.push_back(std::move(row));
    }
  }
  return rows;
}

void LogController::reloadData() {
  const Notifier::Change change(contentsChanges);
  rows_.setRows(makeRows());
  secondsOfAll_ = lengthOf(rows_.rows());
  runningRows_.clear();
  table_.reloadData();
}

void LogController::updateRunningEntries() {
  if (!context()) return;
  for (const Activity* activity : context()->all<Activity>()) {
    if (const TimeEntry* running = activity->runningEntry()) updateRunningRow(*running);
  }
}

void LogController::updateRunningRow(const TimeEntry& period) {
  const int index = indexOf(period);
  if (index < 0 || period.running() != true) return;
  const Notifier::Change change(contentsChanges);
  LogRow row = *rows_.row(index);
  const double before = std::exchange(row.duration, period.elapsed());
  secondsOfAll_ += row.duration - before;
  rows_.replaceRow(index, std::move(row));
  table_.redrawRow(index);
}

int LogController::indexOf(const TimeEntry& period) {
  const auto known = runningRows_.constFind(period.objectID());
  if (known != runningRows_.constEnd()) {
    const LogRow* row = rows_.row(*known);
    if (*known < 0 || (row && row->period == &period)) return *known;
  }
  const auto found = rows_.indexOf([&period](const LogRow& row) { return row.period == &period; });
  return *runningRows_.insert(period.objectID(), found.value_or(-1));
}

LogSummary LogController::summary() const {
  const auto selected = table_.selectedRows();
  if (selected.empty()) return {rows_.rowCount(), secondsOfAll_};
  LogSummary sum{static_cast<int>(selected.size()), 0};
  for (const int index : selected) {
    if (const LogRow* row = rows_.row(index)) sum.seconds += row->duration;
  }
  return sum;
}

LogEmptiness LogController::emptiness() const {
  if (rows_.rowCount() > 0) return LogEmptiness::HasRows;
  const bool hasEntries = context() && !context()->all<TimeEntry>().empty();
  return hasEntries ? LogEmptiness::FilteredAway : LogEmptiness::NoEntries;
}

}  // namespace pendra
