#pragma once
// The window's own flag `isRunning` is about the selected activity only and is trusted by the display;
// whether an activity runs is the model's word. The two agree after every selection and toggle.

#include <QString>
#include <vector>

#include "document/Session.h"
#include "model/Activity.h"
#include "model/ActivityTimes.h"
#include "model/TimePeriod.h"
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
  [[nodiscard]] Activity* myCurrentActivity() const { return myCurrentActivity_.get(); }
  void setMyCurrentActivity(Activity* activity) { myCurrentActivity_ = activity; }
  /// The entry selected in the log; set by the log.
  [[nodiscard]] TimePeriod* myCurrentTimePeriod() const { return myCurrentTimePeriod_.get(); }
  void setMyCurrentTimePeriod(TimePeriod* period) { myCurrentTimePeriod_ = period; }
  [[nodiscard]] bool isRunning() const { return isRunning_; }
  void setIsRunning(bool running) { isRunning_ = running; }

  /// What commands are enabled by, and the announcements of their changes.
  [[nodiscard]] bool editable() const { return myCurrentTimePeriod() || myCurrentActivity(); }
  [[nodiscard]] bool deleteable() const { return editable(); }
  [[nodiscard]] bool canSendToVT() const;
  [[nodiscard]] bool exportable() const { return tableDataArray_.rowCount() > 0; }
  Notifier editableChanges;
  Notifier deleteableChanges;
  Notifier canSendToVTChanges;
  Notifier exportableChanges;

  /// The rows of the activity table, and by what they are sorted.
  [[nodiscard]] RowTable<ActivityRow>& tableDataArray() { return tableDataArray_; }
  /// Rebuilds all rows from the document, loading one when none is open.
  void reloadData();
  void reloadLog();
  void tableViewSelectionDidChange();
  void updateOneRow(int index);
  void updateSelectedRow();
  void updateMainButton();
  void updateCustomerJobLabel();
  /// The tick; false when no document is open and the ticking must end.
  bool updateTimeDisplay();

  /// The activity of the selected row; none without one.
  [[nodiscard]] Activity* selectedActivity() const;
  /// The row of `myCurrentActivity`; none when it is not listed.
  [[nodiscard]] std::optional<int> indexSetOfCurActivity() const;
  /// The stored length of the entry with the latest start, in whole seconds.
  [[nodiscard]] static QString timeStringForLastTimePerioid(const Activity* activity);
  [[nodiscard]] QString getCurDateStr() const;
  [[nodiscard]] QString getCurTimeStr() const;

  void toggleTimer();
  /// Starts or stops the activity of the selected row.
  void restartSelected();
  void addTimeEnry() { restartSelected(); }
  /// Deletes the selected activity with all its entries; not asked again here.
  void deleteSelectedActivity();
  /// Deletes the entries that are selected in the log; not asked again here.
  void deleteSelectedTimeEntries();
  void markSelectedCompleted();
  /// Makes the activity of the log's selected entry current again.
  void addPeriodToCurrentActiivities();

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
  Ref<Activity> myCurrentActivity_;
  Ref<TimePeriod> myCurrentTimePeriod_;
  bool isRunning_ = false;
  RowTable<ActivityRow> tableDataArray_;
};

}  // namespace pendra
