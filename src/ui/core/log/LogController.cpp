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

bool changesNamesOfActivities(const ChangeSet& changes) {
  return changes.changedAny<Activity>("customer") || changes.changedAny<Activity>("job") ||
         changes.changedAny<Activity>("service");
}

/// Whether the edit may have changed what the filters by name offer, and what passes them.
bool concernsNames(const ChangeSet& changes) {
  return !changes.inserted<Activity>().empty() || !changes.deleted<Activity>().empty() ||
         changesNamesOfActivities(changes) || changes.changedAny<TimeEntry>("activity");
}

bool renames(const ChangeSet& changes) {
  return changes.changedAny<Customer>("name") || changes.changedAny<Job>("name") ||
         changes.changedAny<Service>("name");
}

/// Customers, jobs and service items that are called otherwise now, and activities that have others.
QSet<const ManagedObject*> otherNames(const ChangeSet& changes) {
  QSet<const ManagedObject*> others;
  if (renames(changes)) others += changedObjects<Customer, Job, Service>(changes);
  if (changesNamesOfActivities(changes)) others += changedObjects<Activity>(changes);
  return others;
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
    const bool passes = range.contains(entry) && !(hides && showsAsSent(entry.sentSeconds()));
    if (passes) rows.push_back(rowOf(entry, of));
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
  const auto from = daysOfField(startDateField);
  const auto to = daysOfField(endDateField);
  return {from ? std::optional(from->first) : std::nullopt, to ? std::optional(to->last) : std::nullopt,
          session_.ports().calendar};
}

void LogController::documentEdited(const ChangeSet& changes) {
  const auto inserted = changes.inserted<TimeEntry>();
  const auto moving = movingThroughFilters(changes);
  const bool concerns = concernsNames(changes);
  const bool comesOrGoes = !inserted.empty() || !changes.deleted<TimeEntry>().empty();
  if ((concerns && (filtersByName() || search_->isActive())) || (comesOrGoes && filtersByName())) {
    return reloadNamesFor(inserted);
  }
  if (concerns) reloadNames();
  if (inserted.size() + moving.size() > kMostRanges) {
    rebuild();
  } else {
    followEntries(changes, inserted, moving);
  }
}

void LogController::followEntries(const ChangeSet& changes, const Objects<TimeEntry>& inserted,
                                  std::vector<TimeEntry*> moving) {
  const auto names = otherNames(changes);
  if (names.isEmpty() && !changes.touches<TimeEntry>()) return;
  const Notifier::Change change(contentsChanges);
  reviewRows(changes, names, moving);
  takeIn(inserted.copy());
  takeIn(moving);
  if (renames(changes)) renameFilters(changes);
  runningRows_.clear();
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

bool LogController::passesFilters(TimeEntry& entry) const {
  return entry.activity() && days().contains(entry) && passesNameFilters(entry) &&
         !(hidesSubmitted() && showsAsSent(entry.sentSeconds()));
}

void LogController::takeIn(const std::vector<TimeEntry*>& entries) {
  for (TimeEntry* entry : entries) {
    if (!passesFilters(*entry)) continue;
    LogRow row = rowOf(*entry, entry->activity());
    const Length length = lengthOf(row.duration);
    if (rows_.insertSorted(std::move(row))) lengthOfAll_ += length;
  }
}

void LogController::reviewRows(const ChangeSet& changes, const QSet<const ManagedObject*>& names,
                               std::vector<TimeEntry*>& moving) {
  const auto isRenamed = [&names](const Activity* of) {
    return !names.isEmpty() && of &&
           (names.contains(of) || names.contains(of->customer()) || names.contains(of->job()) ||
            names.contains(of->service()));
  };
  const auto entries = changedObjects<TimeEntry>(changes);
  auto touched = entries;
  for (const TimeEntry* entry : changes.deleted<TimeEntry>()) touched << entry;
  const QStringList orders{QStringLiteral("customer"), QStringLiteral("job"), QStringLiteral("service")};
  const bool isInOrderOfNames = orders.contains(rows_.sortOrder().key);
  const auto isConcerned = [&](const LogRow& row) {
    return touched.contains(row.entry.address()) || isRenamed(row.activity());
  };
  const auto judge = [&](LogRow& row, bool isShown) {
    const Length before = lengthOf(row.duration);
    const bool moves = std::erase(moving, row.entry.get()) > 0;
    const bool goes = !row.entry || !row.entry->activity() || (moves && !passesFilters(*row.entry));
    const bool isOther = !goes && entries.contains(row.entry.address());
    if (isOther) row = rowOf(*row.entry, row.entry->activity());
    if (isShown) lengthOfAll_ += (goes ? Length{} : lengthOf(row.duration)) - before;
    if (goes) return RowFate::Goes;
    const bool startsElsewhere = isOther && changes.changed(*row.entry, "start");
    const bool isElsewhere = startsElsewhere || (isInOrderOfNames && isRenamed(row.activity()));
    return isElsewhere ? RowFate::Moves : RowFate::Changed;
  };
  const auto most = names.isEmpty() ? static_cast<std::size_t>(touched.size()) : rows_.all().size();
  rows_.review(most, isConcerned, judge);
}

void LogController::rebuild() {
  const Notifier::Change change(contentsChanges);
  auto rows = makeRows();
  search_->forget();
  if (search_->isActive()) search_->gather(rows);
  runningRows_.clear();
  rows_.setRows(std::move(rows));
  sumUp();
}

void LogController::sumUp() {
  lengthOfAll_ = {};
  for (const LogRow& row : rows_.rows()) lengthOfAll_ += lengthOf(row.duration);
}

void LogController::updateRunningEntries() {
  if (!context()) return;
  for (const TimeEntry* entry : context()->flagged<TimeEntry>("running")) updateRunningRow(*entry);
}

void LogController::updateRunningRow(const TimeEntry& entry) {
  const int index = indexOf(entry);
  if (index < 0 || !entry.isRunning()) return;
  const Notifier::Change change(contentsChanges);
  LogRow row = *rows_.row(index);
  const double before = std::exchange(row.duration, entry.length());
  lengthOfAll_ += lengthOf(row.duration) - lengthOf(before);
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
  if (selected.empty()) return {rows_.rowCount(), secondsOf(lengthOfAll_)};
  Length sum{};
  for (const int index : selected) {
    if (const LogRow* row = rows_.row(index)) sum += lengthOf(row->duration);
  }
  return {static_cast<int>(selected.size()), secondsOf(sum)};
}

LogEmptiness LogController::emptiness() const {
  if (rows_.rowCount() > 0) return LogEmptiness::HasRows;
  const bool hasEntries = context() && !context()->all<TimeEntry>().empty();
  return hasEntries ? LogEmptiness::FilteredAway : LogEmptiness::NoEntries;
}

}  // namespace pendra
