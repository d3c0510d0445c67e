#include "ui_core/TimerState.h"

#include <cmath>

#include <QCoreApplication>

#include "document/DocumentLoading.h"
#include "link/AffectedActivities.h"
#include "model/DurationText.h"
#include "model/Queries.h"
#include "platform/Text.h"
#include "store/ObjectContext.h"

namespace pendra {

namespace {

/// The words of the steps that can be taken back.
QString tr(const char* text) { return QCoreApplication::translate("pendra::TimerState", text); }

/// The open document's objects; none without one.
ObjectContext* openContext(const Session& session) {
  const OpenDocument* document = session.document();
  return document ? document->context().get() : nullptr;
}

const QString kNoTime = QStringLiteral("00:00:00");

ColumnHead head(const QString& identifier, const QString& title, CellKind kind, int weight) {
  const bool isTime = kind == CellKind::Time || kind == CellKind::SecondaryTime;
  return {.identifier = identifier,
          .title = title,
          .alignment = isTime ? Alignment::Right : Alignment::Left,
          .kind = kind,
          .weight = weight};
}

/// A column whose head has no words: its cells say what they do.
ColumnHead silent(ColumnHead head, const QString& accessibleName) {
  head.accessibleName = accessibleName;
  head.sortable = false;
  return head;
}

std::vector<Column<ActivityRow>> activityColumns() {
  const auto column = [](ColumnHead columnHead, QString ActivityRow::*member) {
    return Column<ActivityRow>{.head = std::move(columnHead),
                               .text = [member](const ActivityRow& row) { return row.*member; }};
  };
  const auto constant = [](ColumnHead columnHead, const QString& text) {
    return Column<ActivityRow>{.head = std::move(columnHead),
                               .text = [text](const ActivityRow&) { return text; }};
  };
  const auto startStop = [](const ActivityRow& row) {
    return row.running ? QStringLiteral("Stop") : QStringLiteral("Start");
  };
  Column<ActivityRow> customer =
      column(head(QStringLiteral("customer"), QStringLiteral("Customer"), CellKind::Text, 4),
             &ActivityRow::customer);
  customer.warning = [](const ActivityRow& row) { return row.warning; };
  return {
      {.head = silent(head(QStringLiteral("startstop"), {}, CellKind::StartStop, 0),
                      QStringLiteral("Start/Stop")),
       .text = startStop},
      std::move(customer),
      column(head(QStringLiteral("job"), QStringLiteral("Job"), CellKind::Text, 3), &ActivityRow::job),
      column(head(QStringLiteral("service"), QStringLiteral("Service"), CellKind::Text, 4),
             &ActivityRow::service),
      column(head(QStringLiteral("notes"), QStringLiteral("Notes"), CellKind::Secondary, 5),
             &ActivityRow::notes),
      constant(silent(head(QStringLiteral("edit"), {}, CellKind::Link, 0), QStringLiteral("Edit")),
               QStringLiteral("Edit")),
      constant(silent(head(QStringLiteral("complete"), {}, CellKind::Link, 0), QStringLiteral("Complete")),
               QStringLiteral("Activity Complete")),
      column(head(QStringLiteral("today"), QStringLiteral("Today"), CellKind::Time, 0), &ActivityRow::today),
      column(head(QStringLiteral("total"), QStringLiteral("Total"), CellKind::SecondaryTime, 0),
             &ActivityRow::total),
  };
}

RowTraits<ActivityRow> activityTraits() {
  return {.identity =
              [](const ActivityRow& row) {
                return row.activity ? static_cast<quint64>(row.activity->objectID()) : 0;
              },
          .running = [](const ActivityRow& row) { return row.running; }};
}

}  // namespace

TimerState::TimerState(Session& session, TimerDisplay& display, const QLocale& locale)
    : session_(session),
      display_(display),
      rows_(activityColumns(), activityTraits()),
      log_(session, *this, locale),
      hours_(session, locale.firstDayOfWeek()),
      selectionChanges_(selection_.changes.observe([this] { selectionChanged(); })),
      documentChanges_(session.documentChanges().observe([this] { followDocument(); })) {
  followDocument();
}

void TimerState::followDocument() {
  news_ = {};
  if (ObjectContext* context = openContext(session_)) {
    news_ = context->observe([this](const ChangeSet& changes) { documentEdited(changes); });
  }
}

bool TimerState::canSend() const { return currentEntry() && !currentEntry()->wasSent(); }

Today TimerState::today() const { return Today(session_.ports().clock.now(), session_.ports().calendar); }

ActivityRow TimerState::rowOf(Activity& activity, const Today& today) const {
  const TimeTexts times = timeTextsOf(activity, today);
  return {.activity = &activity,
          .customer = queries::nameOf(activity.customer()),
          .job = queries::nameOf(activity.job()),
          .service = queries::nameOf(activity.service()),
          .notes = activity.notes().value_or(QString()),
          .total = times.total,
          .today = times.today,
          .running = activity.isRunning(),
          .warning = lossText(activity)};
}

void TimerState::reloadData() {
  if (!session_.document()) loadLastDocument(session_);
  std::vector<ActivityRow> rows;
  if (const OpenDocument* document = session_.document()) {
    const Today now = today();
    for (Activity* activity : queries::openActivities(*document->context())) {
      rows.push_back(rowOf(*activity, now));
    }
  }
  rows_.updateRows(std::move(rows));
  rowsChanged();
  shownDay_ = today();
  if (session_.isStandalone()) display_.hideSendTime();
}

namespace {

/// The activities of which the edit changed an entry, and those that it changed themselves.
QSet<const Activity*> activitiesTouchedBy(const ChangeSet& changes) {
  QSet<const Activity*> touched;
  for (const Activity* activity : changes.changed<Activity>()) touched << activity;
  const auto add = [&](const Objects<TimeEntry>& entries) {
    for (const TimeEntry* entry : entries) {
      touched << entry->activity() << changes.targetBefore<Activity>(*entry, "activity");
    }
  };
  add(changes.inserted<TimeEntry>());
  add(changes.changed<TimeEntry>());
  add(changes.deleted<TimeEntry>());
  return touched;
}

/// Whether the edit may have changed which activities are listed, or a name that any row shows.
bool concernsAllRows(const ChangeSet& changes) {
  return !changes.inserted<Activity>().empty() || !changes.deleted<Activity>().empty() ||
         changes.changedAny<Activity>("completed") || changes.changedAny<Customer>("name") ||
         changes.changedAny<Job>("name") || changes.changedAny<Service>("name");
}

}  // namespace

void TimerState::documentEdited(const ChangeSet& changes) {
  if (concernsAllRows(changes)) {
    reloadData();
  } else {
    reloadRowsOf(activitiesTouchedBy(changes));
  }
  showHeader();
}

void TimerState::reloadRowsOf(const QSet<const Activity*>& activities) {
  if (activities.isEmpty()) return;
  const Today now = today();
  for (int index = 0; index < rows_.rowCount(); ++index) {
    Activity* activity = rows_.row(index)->activity.get();
    if (!activity || !activities.contains(activity)) continue;
    rows_.replaceRow(index, rowOf(*activity, now));
  }
  rowsChanged();
}

/// A tick finds the rows that run without looking at the others.
void TimerState::rowsChanged() {
  runningRows_.clear();
  for (int row = 0; row < rows_.rowCount(); ++row) {
    if (rows_.row(row)->running) runningRows_.emplace_back(rows_.index(row, 0));
  }
}

/// Button, time and name follow the selected activity.
void TimerState::showHeader() {
  const Activity* selected = selectedActivity();
  updateCustomerJobLabel();
  updateMainButton();
  showElapsedTime(selected);
  display_.showWhatRuns(whatRuns());
}

void TimerState::selectionChanged() {
  currentActivity_ = selectedActivity();
  showHeader();
  currentEntry_ = {};
  log_.clearSelection();
}

void TimerState::updateOneRow(int index) {
  const ActivityRow* old = rows_.row(index);
  if (!old) return;
  ActivityRow row = *old;
  row.running = row.activity && row.activity->isRunning();
  if (row.running) {
    const TimeTexts times = timeTextsOf(*row.activity, today());
    row.total = times.total;
    row.today = times.today;
  }
  rows_.replaceRow(index, std::move(row));
}

void TimerState::updateMainButton() {
  const Activity* selected = selectedActivity();
  display_.showMainButton(selected && selected->isRunning());
}

void TimerState::updateCustomerJobLabel() {
  if (const Activity* selected = selectedActivity()) {
    QStringList parts{queries::nameOf(selected->customer())};
    if (selected->service()) {
      if (selected->job()) parts << queries::nameOf(selected->job());
      parts << queries::nameOf(selected->service());
    }
    // Kept: without a customer the label keeps what it showed.
    if (selected->customer()) display_.showCustomerJobLabel(parts.join(u" - "));
  } else {
    display_.showCustomerJobLabel(QString());
  }
  if (selection_.row() < 0) display_.showElapsedTime(kNoTime);
}

bool TimerState::updateTimeDisplay() {
  if (!session_.document()) return false;
  if (shownDay_ && !(*shownDay_ == today())) {
    reloadData();  // "today" means another day now
    log_.dayChanged();
  }
  const Activity* selected = selectedActivity();
  if (selected && selected->isRunning()) showElapsedTime(selected);
  for (const QPersistentModelIndex& row : runningRows_) updateOneRow(row.row());
  log_.updateRunningEntries();
  hours_.update();
  display_.showWhatRuns(whatRuns());
  return true;
}

std::vector<RunningTimer> TimerState::whatRuns() const {
  const ObjectContext* context = openContext(session_);
  return context ? runningTimers(*context) : std::vector<RunningTimer>();
}

void TimerState::showElapsedTime(const Activity* selected) {
  if (const TimeEntry* running = selected ? selected->runningEntry() : nullptr) {
    showElapsed(running->elapsed());
  } else {
    display_.showElapsedTime(lastEntryLength(selected));
  }
  display_.showIsLastEntry(selected && !selected->isRunning() && !selected->entries().empty());
}

void TimerState::showElapsed(double seconds) {
  // A clock that was set back shows nothing new until it has caught up.
  if (std::trunc(seconds) >= 0) display_.showElapsedTime(durationText(std::trunc(seconds)));
}

Activity* TimerState::selectedActivity() const {
  const ActivityRow* row = rows_.row(selection_.row());
  return row ? row->activity.get() : nullptr;
}

std::optional<int> TimerState::rowOfCurrentActivity() const {
  const Activity* current = currentActivity();
  if (!current) return std::nullopt;
  return rows_.indexOf([current](const ActivityRow& row) { return row.activity == current; });
}

QString TimerState::lastEntryLength(const Activity* activity) {
  const TimeEntry* latest = nullptr;
  if (activity) {
    for (const TimeEntry* period : activity->entries()) {
      if (!latest || latest->compare(*period) < 0) latest = period;
    }
  }
  return latest ? durationText(std::trunc(latest->storedDuration())) : kNoTime;
}

void TimerState::toggleTimer() {
  if (Activity* activity = currentActivity()) {
    toggle(*activity);
  } else {
    display_.showActivitySheet(true);
  }
}

void TimerState::toggleSelected() {
  if (Activity* selected = selectedActivity()) toggle(*selected);
}

void TimerState::selectActivity(const Activity& activity) {
  const auto row = rows_.indexOf([&](const ActivityRow& one) { return one.activity == &activity; });
  if (row) selection_.selectRow(*row);
}

void TimerState::toggle(Activity& activity) {
  if (activity.isRunning()) {
    edit(tr("Stop"), [&] { activity.stop(); });
  } else {
    edit(tr("Start"), [&] { activity.startEntry(); });
  }
}

void TimerState::edit(const QString& name, const std::function<void()>& work) {
  std::ignore = session_.context()->edit(name, work);  // such work cannot fail
}

void TimerState::clearTableSelection() {
  selection_.clearSelection();
  selectionChanged();  // also when the selected row went with its activity
}

void TimerState::deleteActivity(Activity& activity) {
  edit(tr("Delete of an Activity"), [&] { activity.context()->deleteObject(activity); });
  clearTableSelection();
}

void TimerState::deleteEntries(const std::vector<Ref<TimeEntry>>& entries) {
  const auto count = std::count_if(entries.begin(), entries.end(), [](const auto& entry) { return !!entry; });
  if (count == 0) return;
  const QString name =
      count == 1 ? tr("Delete of an Entry") : formatted(tr("Delete of %@ Entries"), {QString::number(count)});
  edit(name, [&] {
    for (const Ref<TimeEntry>& entry : entries) {
      if (!entry) continue;
      if (entry->running() == true) entry->stopTimer();
      entry->context()->deleteObject(*entry);
    }
  });
  clearTableSelection();
}

void TimerState::markSelectedCompleted() {
  Activity* selected = selectedActivity();
  if (!selected) return;
  edit(tr("Activity Complete"), [&] {
    selected->stop();
    selected->setCompleted(true);
  });
  clearTableSelection();
}

void TimerState::makeCurrent() {
  Activity* activity = currentEntry() ? currentEntry()->activity() : nullptr;
  if (activity) edit(tr("Make Activity Current"), [&] { activity->setCompleted(false); });
}

}  // namespace pendra
