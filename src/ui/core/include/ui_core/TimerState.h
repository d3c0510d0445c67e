#pragma once
// The window's own flag `isRunning` is about the selected activity only and is trusted by the display;
// whether an activity runs is the model's word. The two agree after every selection and toggle.

#include <QString>
#include <vector>

#include "document/Session.h"
#include "model/Activity.h"
#include "model/ActivityTimes.h"
#include "model/TimeEntry.h"
#include "ui_core/LogPane.h"
#include "ui_core/RowTable.h"
#include "ui_core/TablePort.h"

namespace pendra {

/// One row of the activity table, a snapshot taken at reload. "edit" and "complete" show constant texts.
struct ActivityRow {
  Ref<Activity> activity;
  QString customer;
  QString job;
  QString service;
  QString notes;
  QString total;
  QString today;
  bool running = false;  ///< shows the pause sign, else the play sign
  QString warning{};     ///< why the row is marked; empty when it is not
};

/// What the logic asks of the timer window's own controls.
class TimerDisplay {
 public:
  virtual ~TimerDisplay() = default;
  virtual void showElapsedTime(const QString& text) = 0;
  virtual void showCustomerJobLabel(const QString& text) = 0;
  /// The start/stop button: the pause image when running, else the play image.
  virtual void showMainButton(bool running) = 0;
  virtual void hideSendTime() = 0;
  /// Runs the activity sheet; true for a new activity. Called when the timer is started with nothing
  /// selected.
  virtual void showActivitySheet(bool forNew) = 0;
};

/// The logic of the timer window: the rows, the selection, and everything that starts or stops a timer.
class TimerState {
 public:
  /// All must outlive it. The log is given later, by `setLog`.
  TimerState(Session& session, TablePort& table, TimerDisplay& display);

  [[nodiscard]] Session& session() const { return session_; }
  void setLog(LogPane& log) { log_ = &log; }
  [[nodiscard]] LogPane& log() const { return *log_; }

  /// The activity to which editing and starting apply.
  [[nodiscard]] Activity* currentActivity() const { return currentActivity_.get(); }
  void setCurrentActivity(Activity* activity) { currentActivity_ = activity; }
  /// The entry selected in the log; set by the log.
  [[nodiscard]] TimeEntry* currentEntry() const { return currentEntry_.get(); }
  void setCurrentEntry(TimeEntry* period) { currentEntry_ = period; }
  [[nodiscard]] bool isRunning() const { return isRunning_; }
  void setIsRunning(bool running) { isRunning_ = running; }

  [[nodiscard]] bool editable() const { return currentEntry() || currentActivity(); }
  [[nodiscard]] bool canSend() const;
  [[nodiscard]] bool exportable() const { return rows_.rowCount() > 0; }

  /// The rows of the activity table, and by what they are sorted.
  [[nodiscard]] RowTable<ActivityRow>& rows() { return rows_; }
  /// Rebuilds all rows from the document, loading one when none is open.
  void reloadData();
  void reloadLog();
  void selectionChanged();
  void updateOneRow(int index);
  void updateSelectedRow();
  void updateMainButton();
  void updateCustomerJobLabel();
  /// The tick; false when no document is open and the ticking must end.
  bool updateTimeDisplay();

  /// The activity of the selected row; none without one.
  [[nodiscard]] Activity* selectedActivity() const;
  /// The row of `currentActivity`; none when it is not listed.
  [[nodiscard]] std::optional<int> rowOfCurrentActivity() const;
  /// The stored length of the entry with the latest start, in whole seconds.
  [[nodiscard]] static QString lastEntryLength(const Activity* activity);

  void toggleTimer();
  /// Starts or stops the activity of the selected row.
  void toggleSelected();
  /// Deletes the selected activity with all its entries; not asked again here.
  void deleteSelectedActivity();
  /// Deletes the entries that are selected in the log; not asked again here.
  void deleteSelectedTimeEntries();
  void markSelectedCompleted();
  /// Makes the activity of the log's selected entry current again.
  void makeCurrent();

 private:
  [[nodiscard]] ActivityRow rowOf(Activity& activity, const Today& today) const;
  [[nodiscard]] Today today() const;
  void showElapsed(double seconds);
  void clearTableSelection();

  Session& session_;
  TablePort& table_;
  TimerDisplay& display_;
  NoLogPane noLog_;
  LogPane* log_ = &noLog_;
  Ref<Activity> currentActivity_;
  Ref<TimeEntry> currentEntry_;
  bool isRunning_ = false;
  RowTable<ActivityRow> rows_;
};

}  // namespace pendra
