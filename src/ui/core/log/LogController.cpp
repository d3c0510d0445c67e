#include "ui_core/LogController.h"

#include <QSet>

#include "DayRange.h"
#include "LogSearch.h"
#include "model/Queries.h"
#include "platform/Log.h"
#include "platform/Preferences.h"
#include "platform/Text.h"
#include "store/Predicate.h"
#include "ui_core/CellCorrections.h"
#include "ui_core/ChangedObjects.h"

namespace pendra {

namespace {

LogRow rowOf(TimeEntry& entry, const Ref<Activity>& of) {
  return {.entry = &entry,
          .of = of,
          .start = entry.start(),
          .duration = entry.length(),
          .sentSeconds = entry.sentSeconds()};
}

/// Whether the edit may have changed which entries a rebuild lists, or what the filters offer.
bool concernsFilters(const ChangeSet& changes) {
  return !changes.inserted<Activity>().empty() || !changes.deleted<Activity>().empty() ||
         changes.changedAny<Activity>("completed") || changes.changedAny<Activity>("customer") ||
         changes.changedAny<Activity>("job") || changes.changedAny<Activity>("service") ||
         changes.changedAny<TimeEntry>("activity");
}

bool renames(const ChangeSet& changes) {
  return changes.changedAny<Customer>("name") || changes.changedAny<Job>("name") ||
         changes.changedAny<Service>("name");
}

bool isIn(const std::vector<TimeEntry*>& entries, const LogRow& row) {
  return !entries.empty() && std::find(entries.begin(), entries.end(), row.entry.get()) != entries.end();
}

double lengthOf(const RowTable<LogRow>& table) {
  double sum = 0;
  for (const LogRow& row : table.rows()) sum += row.duration;
  return sum;
}

}  // namespace

LogController::LogController(Session& session, TimerState& window, const QLocale& locale)
    : rangePopup(logRangeTitles().first()),
      session_(session),
      window_(window),
      locale_(locale),
      search_(std::make_unique<LogSearch>()),
      rows_(makeLogTable(session.ports().calendar, locale,
                         [this] { return !rows_.isHidden(QStringLiteral("start")); })),
      selectionChanges_(selection_.changes.observe([this] { selectionChanged(); })),
      hideSubmitted_(
          session.ports().defaults.changesOf(preferences::kHideSubmitted).observe([this] { rebuild(); })),
      weekBegins_(session.ports().defaults.changesOf(preferences::kWeekBegins).observe([this] {
        chooseRange(range());
      })),
      shownColumns_(rows_.shownColumnsChanges.observe([this, locale] {
        rows_.setWidest(u"date", widestLogDates(locale, rows_.isHidden(QStringLiteral("start"))));
      })),
      standaloneChanges_(session.standaloneChanges().observe([this] { showWhatApplies(); })),
      documentChanges_(session.documentChanges().observe([this] {
        followDocument();
        if (!context()) return;
        reloadNames();
        rebuild();
      })) {
  for (const QString& title : logRangeTitles()) rangePopup.addItem(title);
  rangePopup.selectAt(static_cast<int>(LogRange::AnyTime));
  rows_.setEditRules(logEditRules(*this, locale));
  followDocument();
}

LogController::~LogController() = default;

/// What is kept by hand is never sent.
void LogController::showWhatApplies() {
  rows_.setHidden(QStringLiteral("submitted"), session_.isStandalone());
}

void LogController::followDocument() {
  news_ = {};
  showWhatApplies();
  if (context()) {
    news_ = context()->observe([this](const ChangeSet& changes) { documentEdited(changes); });
  }
}

ObjectContext* LogController::context() const { return session_.context().get(); }

void LogController::start() {
  reloadNames();
  rows_.sortAgain();
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
  const DayRange range = days();
  const auto take = [&](TimeEntry& entry, const Ref<Activity>& of) {
    LogRow row = rowOf(entry, of);
    if (hides && row.showsAsSent()) return;
    if (range.contains(entry)) rows.push_back(std::move(row));
  };
  if (!filter) {
    // Nearly in the order of time, and one beside the other in memory.
    rows.reserve(context()->all<TimeEntry>().size());
    for (TimeEntry* entry : context()->all<TimeEntry>()) {
      if (Activity* activity = entry->activity()) take(*entry, activity);
    }
    return rows;
  }
  for (Activity* activity : context()->all<Activity>()) {
    if (!filter->matches(*activity)) continue;
    const Ref<Activity> of(activity);
    for (TimeEntry* entry : activity->entries()) take(*entry, of);
  }
  return rows;
}

DayRange LogController::days() const {
  const Calendar& calendar = session_.ports().calendar;
  const auto from = daysOfField(startDateField);
  const auto to = daysOfField(endDateField);
  return {from ? std::optional(calendar.startOfDay(from->first)) : std::nullopt,
          to ? std::optional(calendar.startOfDay(to->last)) : std::nullopt};
}

void LogController::documentEdited(const ChangeSet& changes) {
  const auto inserted = changes.inserted<TimeEntry>();
  const auto moving = movingThroughFilters(changes);
  const bool comesOrGoes = !inserted.empty() || !changes.deleted<TimeEntry>().empty();
  if (concernsFilters(changes) || (comesOrGoes && filtersByName())) {
    reloadNamesFor(inserted);
  } else if (inserted.size() + moving.size() > kMostRanges) {
    rebuild();
  } else {
    const Notifier::Change change(contentsChanges);
    rows_.removeWhere(
        [&](const LogRow& row) { return !row.entry || (isIn(moving, row) && !passesFilters(*row.entry)); });
    refreshRows(changes);
    takeIn(inserted.copy());
    takeIn(withoutRow(moving));
    if (renames(changes)) renameFilters(changes);
    if (renames(changes) || changes.changedAny<TimeEntry>("start")) rows_.sortAgain();
    secondsOfAll_ = lengthOf(rows_);
    runningRows_.clear();
  }
}

std::vector<TimeEntry*> LogController::movingThroughFilters(const ChangeSet& changes) const {
  const bool filtersByDay = !startDateField.isEmpty() || !endDateField.isEmpty();
  std::vector<TimeEntry*> moving;
  for (TimeEntry* entry : changes.changed<TimeEntry>()) {
    if ((filtersByDay && changes.changed(*entry, "start")) ||
        (hidesSubmitted() && changes.changed(*entry, "dateSubmitted"))) {
      moving.push_back(entry);
    }
  }
  return moving;
}

std::vector<TimeEntry*> LogController::withoutRow(std::vector<TimeEntry*> entries) {
  for (const LogRow& row : rows_.all()) {
    if (isIn(entries, row)) std::erase(entries, row.entry.get());
  }
  return entries;
}

bool LogController::passesFilters(TimeEntry& entry) const {
  return entry.activity() && days().contains(entry) && passesNameFilters(entry) &&
         !(hidesSubmitted() && rowOf(entry, {}).showsAsSent());
}

void LogController::takeIn(const std::vector<TimeEntry*>& entries) {
  for (TimeEntry* entry : entries) {
    if (passesFilters(*entry)) rows_.insertSorted(rowOf(*entry, entry->activity()));
  }
}

void LogController::refreshRows(const ChangeSet& changes) {
  const auto entries = changedObjects<TimeEntry>(changes);
  const auto named =
      renames(changes) ? changedObjects<Customer, Job, Service>(changes) : QSet<const ManagedObject*>();
  if (entries.isEmpty() && named.isEmpty()) return;
  rows_.changeRows([&](LogRow& row) {
    const bool isOther = entries.contains(row.entry.get());
    if (isOther) row = rowOf(*row.entry, row.of);
    if (isOther || named.isEmpty()) return isOther;
    const Activity* of = row.activity();
    return of &&
           (named.contains(of->customer()) || named.contains(of->job()) || named.contains(of->service()));
  });
}

void LogController::rebuild() {
  const Notifier::Change change(contentsChanges);
  auto rows = makeRows();
  search_->forget();
  if (search_->isActive()) search_->gather(rows);
  runningRows_.clear();
  rows_.setRows(std::move(rows));
  secondsOfAll_ = lengthOf(rows_);
}

void LogController::updateRunningEntries() {
  if (!context()) return;
  for (const Activity* activity : context()->all<Activity>()) {
    if (const TimeEntry* running = activity->runningEntry()) updateRunningRow(*running);
  }
}

void LogController::updateRunningRow(const TimeEntry& entry) {
  const int index = indexOf(entry);
  if (index < 0 || !entry.isRunning()) return;
  const Notifier::Change change(contentsChanges);
  LogRow row = *rows_.row(index);
  const double before = std::exchange(row.duration, entry.length());
  secondsOfAll_ += row.duration - before;
  rows_.replaceRow(index, std::move(row));
}

int LogController::indexOf(const TimeEntry& entry) {
  const auto known = runningRows_.constFind(entry.objectID());
  if (known != runningRows_.constEnd()) {
    const LogRow* row = rows_.row(*known);
    if (*known < 0 || (row && row->entry == &entry)) return *known;
  }
  const auto found = rows_.indexOf([&entry](const LogRow& row) { return row.entry == &entry; });
  return *runningRows_.insert(entry.objectID(), found.value_or(-1));
}

LogSummary LogController::summary() const {
  const auto selected = selection_.rows();
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
