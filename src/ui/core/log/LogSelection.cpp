#include "platform/Translation.h"
#include "ui_core/LogController.h"
#include "ui_core/TimerState.h"

#include <QSet>

#include "ui_core/RunCommand.h"

namespace pendra {

namespace {

bool userMarksAsUnsent(Alerts& alerts) {
  return alerts.runAlert(
             {.style = Alert::Style::Warning,
              .message = tr("Mark selected activities as unsent"),
              .informative = tr("The selected activities will be marked as unsent. If they are already in "
                                "Vantor and you send them again, this will result in duplicate activities."),
              .buttons = {tr("Continue"), tr("Cancel")}}) == kFirstButton;
}

}  // namespace

TimeEntry* LogController::selectedEntry() const {
  const LogRow* row = rows_.row(selection_.row());
  return row ? row->entry.get() : nullptr;
}

int LogController::selectedCount() const { return static_cast<int>(selection_.rows().size()); }

std::vector<Ref<TimeEntry>> LogController::selectedEntries() const {
  std::vector<Ref<TimeEntry>> entries;
  for (const int index : selection_.rows()) {
    if (const LogRow* row = rows_.row(index)) entries.push_back(row->entry);
  }
  return entries;
}

void LogController::selectEntry(const TimeEntry* entry) {
  int found = selection_.row();
  found = rows_.indexOf([entry](const LogRow& row) { return row.entry == entry; }).value_or(found);
  if (found >= 0) selection_.selectRow(found);
}

void LogController::selectEntries(const std::vector<const TimeEntry*>& entries) {
  const QSet<const TimeEntry*> wanted(entries.begin(), entries.end());
  std::vector<int> found;
  const auto rows = rows_.rows();
  for (std::size_t index = 0; index < rows.size(); ++index) {
    if (wanted.contains(rows[index].entry.get())) found.push_back(static_cast<int>(index));
  }
  if (!found.empty()) selection_.selectRows(std::move(found));
}

std::vector<LogRow> LogController::consideredRows() const {
  const auto selected = selection_.rows();
  if (selected.empty()) return allRows();
  std::vector<LogRow> rows;
  for (const int index : selected) {
    if (const LogRow* row = rows_.row(index)) rows.push_back(*row);
  }
  return rows;
}

std::vector<LogRow> LogController::allRows() const {
  const auto rows = rows_.rows();
  return {rows.begin(), rows.end()};
}

void LogController::selectionChanged() {
  const Notifier::Change contents(contentsChanges);
  window_.setCurrentEntry(selectedEntry());
}

void LogController::startOrStop(int row) {
  const LogRow* pressed = rows_.row(row);
  if (!pressed || !pressed->entry || !pressed->of) return;
  const Ref<Activity> activity = pressed->of;
  if (pressed->entry->isRunning()) {
    editAsCommand(tr("Stop"), [&] { activity->stop(); });
  } else if (pressed->canStart()) {
    editAsCommand(tr("Start"), [&] {
      activity->setCompleted(false);  // what runs is to be seen among the activities
      activity->startEntry();
    });
  }
}

/// A sign in a row is pressed without a command: it waits for Vantor like all others.
void LogController::editAsCommand(const QString& name, const std::function<void()>& work) {
  runCommand(session_, name, [&] { std::ignore = session_.context()->edit(name, work); });
}

void LogController::markSelectedUnsent() {
  const auto entries = selectedEntries();
  if (entries.empty() || !userMarksAsUnsent(session_.ports().alerts)) return;
  std::ignore = session_.context()->edit(tr("Mark as Unsent"), [&] {
    for (const Ref<TimeEntry>& entry : entries) {
      if (entry && entry->wasSent()) entry->setDateSubmitted(kReferenceInstant);
    }
  });
}

}  // namespace pendra
