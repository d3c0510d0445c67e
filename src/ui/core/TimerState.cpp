#include "ui_core/TimerState.h"

#include <cmath>

#include "document/DocumentLoading.h"
#include "model/DurationText.h"
#include "model/Queries.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "store/ObjectContext.h"
#include "ui_core/RunCommand.h"

namespace pendra {

namespace {

const QString kNoTime = QStringLiteral("00:00:00");

}  // namespace

TimerState::TimerState(Session& session, TimerDisplay& display, const QLocale& locale)
    : session_(session),
      display_(display),
      rows_(session),
      log_(session, *this, locale),
      hours_(session, locale),
      selectionChanges_(selection_.changes.observe([this] { selectionChanged(); })),
      documentChanges_(session.documentChanges().observe([this] {
        followDocument();
        if (session_.document()) rebuild();
      })) {
  followDocument();
}

void TimerState::followDocument() {
  news_ = {};
  if (const auto context = session_.context()) {
    news_ = context->observe([this](const ChangeSet& changes) { documentEdited(changes); });
  }
}

bool TimerState::canSend() const { return currentEntry() && !currentEntry()->wasSent(); }

Today TimerState::today() const { return Today(session_.ports().clock.now(), session_.ports().calendar); }

void TimerState::rebuild() {
  if (!session_.document()) loadLastDocument(session_);
  rows_.reload();
  shownDay_ = today();
  if (session_.isStandalone()) display_.hideSendTime();
}

void TimerState::documentEdited(const ChangeSet& changes) {
  rows_.follow(changes);
  showHeader();
  if (isSearching()) listedChanges.changed();
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
    // Kept: promised to those who watch the display: without a customer the label keeps what it showed.
    if (selected->customer()) display_.showCustomerJobLabel(parts.join(u" - "));
  } else {
    display_.showCustomerJobLabel(QString());
  }
  if (selection_.row() < 0) display_.showElapsedTime(kNoTime);
}

void TimerState::updateTimeDisplay() {
  if (!session_.document()) return;
  if (shownDay_ && !(*shownDay_ == today())) {
    rebuild();  // "today" means another day now
    log_.dayChanged();
  }
  const Activity* selected = selectedActivity();
  if (selected && selected->isRunning()) showElapsedTime(selected);
  rows_.updateRunning();
  log_.updateRunningEntries();
  hours_.update();
  display_.showWhatRuns(whatRuns());
}

std::vector<RunningTimer> TimerState::whatRuns() const {
  const auto context = session_.context();
  return context ? runningTimers(*context) : std::vector<RunningTimer>();
}

void TimerState::showElapsedTime(const Activity* selected) {
  if (const TimeEntry* running = selected ? selected->runningEntry() : nullptr) {
    showElapsed(running->length());
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
  const ActivityRow* row = rows_.table().row(selection_.row());
  return row ? row->activity.get() : nullptr;
}

std::optional<int> TimerState::rowOfCurrentActivity() const { return rows_.rowOf(currentActivity()); }

QString TimerState::lastEntryLength(const Activity* activity) {
  const TimeEntry* latest = nullptr;
  if (activity) {
    for (const TimeEntry* entry : activity->entries()) {
      if (!latest || latest->compare(*entry) < 0) latest = entry;
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
  if (!rows_.rowOf(&activity) && activity.completed() == false) searchActivities({});
  if (const auto row = rows_.rowOf(&activity)) selection_.selectRow(*row);
}

void TimerState::searchActivities(const QString& typed) {
  if (!isSearching()) beforeSearch_ = selectedActivity();
  rows_.search(typed);
  if (isSearching() && selection_.row() < 0) {
    selection_.selectRow(0);
    firstFound_ = selectedActivity();
  } else if (!isSearching()) {
    const Ref<Activity> found = std::exchange(firstFound_, {});
    if (found && beforeSearch_ && found == selectedActivity()) selectActivity(*beforeSearch_);
  }
  listedChanges.changed();
}

void TimerState::toggle(Activity& activity) {
  firstFound_ = {};  // it was meant
  if (activity.isRunning()) {
    edit(tr("Stop"), [&] { activity.stop(); });
  } else {
    edit(tr("Start"), [&] { activity.startEntry(); });
  }
}

void TimerState::edit(const QString& name, const std::function<void()>& work) {
  // A sign in a row is pressed without a command: it waits for Vantor like all others.
  runCommand(session_, name, [&] {
    std::ignore = session_.context()->edit(name, work);  // such work cannot fail
  });
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
  const QString name = counted(count, "Delete of an Entry", "Delete of %Ln Entries");
  edit(name, [&] {
    for (const Ref<TimeEntry>& entry : entries) {
      if (!entry) continue;
      if (entry->isRunning()) entry->stopTimer();
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

void TimerState::toggleFavourite() {
  Activity* activity = currentActivity();
  if (!activity) return;
  const bool was = activity->favourite() == true;
  edit(was ? tr("No Favourite") : tr("Favourite"), [&] { activity->setFavourite(!was); });
}

void TimerState::makeCurrent() {
  Activity* activity = currentEntry() ? currentEntry()->activity() : nullptr;
  if (activity) edit(tr("Make Activity Current"), [&] { activity->setCompleted(false); });
}

}  // namespace pendra
