#include "ui_core/TimerState.h"

#include <cmath>

#include "document/DocumentLoading.h"
#include "model/DurationText.h"
#include "model/Queries.h"
#include "platform/DateTexts.h"

namespace pendra {

namespace {

const QString kNoTime = QStringLiteral("00:00:00");

/// The text by which a row is sorted; columns without one sort as equal.
QString ActivityRow::*sortMember(const QString& key) {
  if (key == u"customer") return &ActivityRow::customer;
  if (key == u"job") return &ActivityRow::job;
  if (key == u"service") return &ActivityRow::service;
  if (key == u"notes") return &ActivityRow::notes;
  if (key == u"total") return &ActivityRow::total;
  if (key == u"today") return &ActivityRow::today;
  return nullptr;
}

}  // namespace

TimerState::TimerState(Session& session, TablePort& table, TimerDisplay& display)
    : session_(session), table_(table), display_(display) {}

bool TimerState::canSendToVT() const { return myCurrentTimePeriod() && !myCurrentTimePeriod()->wasSubmitted(); }

Today TimerState::today() const { return Today(session_.ports().clock.now(), session_.ports().calendar); }

ActivityRow TimerState::rowOf(Activity& activity, const Today& today) const {
  const TimeStrings times = getTimeStringsForActivity(activity, today);
  return {.activity = &activity,
          .customer = queries::nameOf(activity.customer()),
          .job = queries::nameOf(activity.job()),
          .service = queries::nameOf(activity.service()),
          .notes = activity.notes().value_or(QString()),
          .total = times.total,
          .today = times.today,
          .running = activity.isRunning()};
}

void TimerState::reloadData() {
  if (!session_.theFileDoc()) loadData(session_);
  tableDataArray_.clear();
  if (const CorvelFileDoc* document = session_.theFileDoc()) {
    const Today now = today();
    for (Activity* activity : queries::openActivities(*document->managedObjectContext())) {
      tableDataArray_.push_back(rowOf(*activity, now));
    }
  }
  sortDescriptorsDidChange();
  if (session_.myStandalone()) display_.hideSendTime();
}

void TimerState::reloadLog() {
  log_->reloadPopupsToSameChoice();
  log_->reloadData();
}

void TimerState::sortDescriptorsDidChange() {
  if (const QString key = table_.sortKey(); !key.isEmpty()) {
    sortKey_ = key;
    sortUP_ = table_.sortAscending();
  }
  sortRows();
  table_.reloadData();
}

void TimerState::sortRows() {
  const auto member = sortMember(sortKey_);
  if (!member) return;
  std::stable_sort(tableDataArray_.begin(), tableDataArray_.end(),
                   [member, up = sortUP_](const ActivityRow& a, const ActivityRow& b) {
                     return up ? a.*member < b.*member : b.*member < a.*member;
                   });
}

void TimerState::tableViewSelectionDidChange() {
  {
    const Notifier::Change editable(editableChanges);
    const Notifier::Change deleteable(deleteableChanges);
    const Notifier::Change exportable(exportableChanges);
    myCurrentActivity_ = selectedActivity();
  }
  isRunning_ = myCurrentActivity() && myCurrentActivity()->isRunning();
  updateCustomerJobLabel();
  updateTimeDisplay();
  updateMainButton();
  myCurrentTimePeriod_ = {};
  log_->clearSelection();
}

void TimerState::updateOneRow(int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= tableDataArray_.size()) return;
  ActivityRow& row = tableDataArray_[static_cast<std::size_t>(index)];
  row.running = row.activity && row.activity->isRunning();
  if (row.running) {
    const TimeStrings times = getTimeStringsForActivity(*row.activity, today());
    row.total = times.total;
    row.today = times.today;
  }
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
  if (!session_.theFileDoc()) return false;
  const Activity* selected = selectedActivity();
  if (isRunning_) {
    const TimePeriod* running = selected ? selected->runningTimePeriod() : nullptr;
    showElapsed(running ? running->curElapsedTime() : 0);
  } else {
    display_.showElapsedTime(timeStringForLastTimePerioid(selected));
  }
  for (std::size_t row = 0; row < tableDataArray_.size(); ++row) {
    const Activity* activity = tableDataArray_[row].activity.get();
    if (activity && activity->isRunning()) updateOneRow(static_cast<int>(row));
  }
  log_->updateRunningPeriods();
  return true;
}

void TimerState::showElapsed(double seconds) {
  // A clock that was set back shows nothing new until it has caught up.
  if (std::trunc(seconds) >= 0) display_.showElapsedTime(durationText(std::trunc(seconds)));
}

Activity* TimerState::selectedActivity() const {
  const int row = table_.selectedRow();
  if (row < 0 || static_cast<std::size_t>(row) >= tableDataArray_.size()) return nullptr;
  return tableDataArray_[static_cast<std::size_t>(row)].activity.get();
}

std::optional<int> TimerState::indexSetOfCurActivity() const {
  const Activity* current = myCurrentActivity();
  if (!current) return std::nullopt;
  const auto found = std::find_if(tableDataArray_.begin(), tableDataArray_.end(),
                                  [current](const ActivityRow& row) { return row.activity == current; });
  if (found == tableDataArray_.end()) return std::nullopt;
  return static_cast<int>(found - tableDataArray_.begin());
}

QString TimerState::timeStringForLastTimePerioid(const Activity* activity) {
  const TimePeriod* latest = nullptr;
  if (activity) {
    for (const TimePeriod* period : activity->timePeriod()) {
      if (!latest || latest->compare(*period) < 0) latest = period;
    }
  }
  return latest ? durationText(std::trunc(latest->storedDuration())) : kNoTime;
}

QString TimerState::getCurDateStr() const {
  return shortDate(session_.ports().clock.now(), session_.ports().calendar);
}

QString TimerState::getCurTimeStr() const {
  return timeWithMarker(session_.ports().clock.now(), session_.ports().calendar);
}

void TimerState::toggleTimer() {
  if (Activity* activity = myCurrentActivity(); !activity) {
    display_.showActivitySheet(true);
  } else if (activity->isRunning()) {
    isRunning_ = false;
    activity->stop();
    display_.showMainButton(false);
  } else {
    activity->startNewTimePeriod();
    display_.showMainButton(true);
    updateCustomerJobLabel();
    isRunning_ = true;
  }
  log_->reloadPopupsToSameChoice();
  reloadData();
}

void TimerState::restartSelected() {
  Activity* selected = selectedActivity();
  if (!selected) return;
  isRunning_ = !selected->isRunning();
  if (isRunning_) {
    selected->startNewTimePeriod();
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
  tableViewSelectionDidChange();  // also when the selected row went with its activity
}

void TimerState::deleteSelectedActivity() {
  Activity* selected = selectedActivity();
  if (!selected) return;
  ObjectContext& context = *selected->context();
  for (TimePeriod* period : selected->timePeriod().copy()) context.deleteObject(*period);
  context.deleteObject(*selected);
  reloadLog();
  reloadData();
  clearTableSelection();
}

void TimerState::deleteSelectedTimeEntries() {
  for (const Ref<TimePeriod>& period : log_->deleteSelectedRows()) {
    if (!period) break;
    Activity* activity = period->activity();
    ObjectContext& context = *period->context();
    if (activity && period->running() == true) activity->stop();
    TimePeriod& entry = *period;
    if (activity) activity->deletTimePeriod(entry);
    context.deleteObject(entry);
    reloadData();
    clearTableSelection();
    log_->reloadData();
    log_->reloadComboxes();
  }
}

void TimerState::markSelectedCompleted() {
  Activity* selected = selectedActivity();
  if (!selected) return;
  selected->stop();
  selected->setCompleted(true);
  reloadData();
  log_->reloadData();
  log_->reloadComboxes();
  clearTableSelection();
}

void TimerState::addPeriodToCurrentActiivities() {
  if (!myCurrentTimePeriod() || !myCurrentTimePeriod()->activity()) return;
  myCurrentTimePeriod()->activity()->setCompleted(false);
  reloadData();
}

}  // namespace pendra
