#include "ui_core/TimerState.h"

#include <cmath>

#include "document/DocumentLoading.h"
#include "link/AffectedActivities.h"
#include "model/DurationText.h"
#include "model/Queries.h"
#include "platform/DateTexts.h"

namespace pendra {

namespace {

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
      column(head(QStringLiteral("today"), QStringLiteral("Today"), CellKind::Time, 0), &ActivityRow::today),
      column(head(QStringLiteral("total"), QStringLiteral("Total"), CellKind::SecondaryTime, 0),
             &ActivityRow::total),
      constant(silent(head(QStringLiteral("edit"), {}, CellKind::Link, 0), QStringLiteral("Edit")),
               QStringLiteral("Edit")),
      constant(silent(head(QStringLiteral("complete"), {}, CellKind::Link, 0), QStringLiteral("Complete")),
               QStringLiteral("Activity Complete")),
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

TimerState::TimerState(Session& session, TablePort& table, TimerDisplay& display)
    : session_(session), table_(table), display_(display), rows_(activityColumns(), activityTraits()) {}

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
  rows_.setRows(std::move(rows));
  table_.reloadData();
  if (session_.isStandalone()) display_.hideSendTime();
}

void TimerState::reloadLog() {
  log_->reloadKeepingChoice();
  log_->reloadData();
}

void TimerState::selectionChanged() {
  currentActivity_ = selectedActivity();
  isRunning_ = currentActivity() && currentActivity()->isRunning();
  updateCustomerJobLabel();
  updateTimeDisplay();
  updateMainButton();
  currentEntry_ = {};
  log_->clearSelection();
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
  table_.redrawRow(index);
  updateCustomerJobLabel();
}

void TimerState::updateSelectedRow() { updateOneRow(table_.selectedRow()); }

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
  if (table_.selectedRow() < 0) display_.showElapsedTime(kNoTime);
}

bool TimerState::updateTimeDisplay() {
  if (!session_.document()) return false;
  const Activity* selected = selectedActivity();
  if (isRunning_) {
    const TimeEntry* running = selected ? selected->runningEntry() : nullptr;
    showElapsed(running ? running->elapsed() : 0);
  } else {
    display_.showElapsedTime(lastEntryLength(selected));
  }
  for (int row = 0; row < rows_.rowCount(); ++row) {
    const Activity* activity = rows_.row(row)->activity.get();
    if (activity && activity->isRunning()) updateOneRow(row);
  }
  log_->updateRunningEntries();
  return true;
}

void TimerState::showElapsed(double seconds) {
  // A clock that was set back shows nothing new until it has caught up.
  if (std::trunc(seconds) >= 0) display_.showElapsedTime(durationText(std::trunc(seconds)));
}

Activity* TimerState::selectedActivity() const {
  const ActivityRow* row = rows_.row(table_.selectedRow());
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
  if (Activity* activity = currentActivity(); !activity) {
    display_.showActivitySheet(true);
  } else if (activity->isRunning()) {
    isRunning_ = false;
    activity->stop();
    display_.showMainButton(false);
  } else {
    activity->startEntry();
    display_.showMainButton(true);
    updateCustomerJobLabel();
    isRunning_ = true;
  }
  log_->reloadKeepingChoice();
  reloadData();
  log_->updateRunningEntries();  // at once, not at the next tick
}

void TimerState::toggleSelected() {
  Activity* selected = selectedActivity();
  if (!selected) return;
  isRunning_ = !selected->isRunning();
  if (isRunning_) {
    selected->startEntry();
  } else {
    selected->stop();
  }
  reloadLog();
  updateSelectedRow();
  updateMainButton();
  updateTimeDisplay();
}

void TimerState::clearTableSelection() {
  table_.clearSelection();
  selectionChanged();  // also when the selected row went with its activity
}

void TimerState::deleteSelectedActivity() {
  Activity* selected = selectedActivity();
  if (!selected) return;
  ObjectContext& context = *selected->context();
  for (TimeEntry* period : selected->entries().copy()) context.deleteObject(*period);
  context.deleteObject(*selected);
  reloadLog();
  reloadData();
  clearTableSelection();
}

void TimerState::deleteSelectedTimeEntries() {
  const auto periods = log_->selectedEntries();
  for (const Ref<TimeEntry>& period : periods) {
    if (!period) break;
    Activity* activity = period->activity();
    ObjectContext& context = *period->context();
    if (activity && period->running() == true) activity->stop();
    TimeEntry& entry = *period;
    context.deleteObject(entry);
  }
  if (periods.empty()) return;
  reloadData();
  clearTableSelection();
  log_->reloadNames();
  log_->reloadData();  // the filters say “All” again
}

void TimerState::markSelectedCompleted() {
  Activity* selected = selectedActivity();
  if (!selected) return;
  selected->stop();
  selected->setCompleted(true);
  reloadData();
  log_->reloadNames();
  log_->reloadData();  // the filters say “All” again
  clearTableSelection();
}

void TimerState::makeCurrent() {
  if (!currentEntry() || !currentEntry()->activity()) return;
  currentEntry()->activity()->setCompleted(false);
  reloadData();
}

}  // namespace pendra
