#pragma once
// The header (button, time, name) belongs to the selected activity, the rows to all that are open. Both are
// shown anew from the news of the document; only running lengths are the tick's.

#include <QLocale>
#include <QString>
#include <functional>
#include <vector>

#include "document/Session.h"
#include "model/Activity.h"
#include "model/ActivityTimes.h"
#include "model/TimeEntry.h"
#include "store/Observers.h"
#include "ui_core/ActivityRows.h"
#include "ui_core/HoursAtAGlance.h"
#include "ui_core/LogController.h"
#include "ui_core/RunningTimers.h"
#include "ui_core/TableSelection.h"

namespace pendra {

class ChangeSet;

/// What the logic asks of the timer window's own controls.
class TimerDisplay {
 public:
  virtual ~TimerDisplay() = default;
  virtual void showElapsedTime(const QString& text) = 0;
  virtual void showCustomerJobLabel(const QString& text) = 0;
  /// The start/stop button: the pause image when running, else the play image.
  virtual void showMainButton(bool running) = 0;
  /// Whether the elapsed time is the length of the selected activity's last entry, which has ended.
  virtual void showIsLastEntry(bool) {}
  /// What runs, the longest first, the selected activity among the others.
  virtual void showWhatRuns(const std::vector<RunningTimer>&) {}
  virtual void hideSendTime() = 0;
  /// Runs the activity sheet; true for a new activity. Called when the timer is started with nothing
  /// selected.
  virtual void showActivitySheet(bool forNew) = 0;
};

/// The logic of the timer window: the rows, the selection, and everything that starts or stops a timer. It
/// follows the open document by its news; a command changes the document and shows nothing by itself.
class TimerState {
 public:
  /// All must outlive it. The locale shapes the log's dates.
  TimerState(Session& session, TimerDisplay& display, const QLocale& locale = QLocale());

  [[nodiscard]] Session& session() const { return session_; }
  /// The time log below the activities.
  [[nodiscard]] LogController& log() { return log_; }
  /// The hours of today, of this week and not sent.
  [[nodiscard]] HoursAtAGlance& hours() { return hours_; }

  /// The activity to which editing and starting apply.
  [[nodiscard]] Activity* currentActivity() const { return currentActivity_.get(); }
  void setCurrentActivity(Activity* activity) { currentActivity_ = activity; }
  /// The entry selected in the log; set by the log.
  [[nodiscard]] TimeEntry* currentEntry() const { return currentEntry_.get(); }
  void setCurrentEntry(TimeEntry* entry) { currentEntry_ = entry; }

  [[nodiscard]] bool editable() const { return currentEntry() || currentActivity(); }
  [[nodiscard]] bool canSend() const;

  /// The rows of the activity table, and by what they are sorted.
  [[nodiscard]] RowTable<ActivityRow>& rows() { return rows_.table(); }
  /// One row at a time.
  [[nodiscard]] TableSelection& selection() { return selection_; }
  /// Rebuilds all rows from the document, loading one when none is open.
  void rebuild();
  /// Lists the activities that contain what was typed; all for nothing. Changes no sum and nothing that runs.
  /// Where the selected one is left out, the first that is listed is selected until the search is given up.
  void searchActivities(const QString& typed);
  [[nodiscard]] bool isSearching() const { return !rows_.searchText().isEmpty(); }
  /// How many open activities the search leaves out.
  [[nodiscard]] int leftOut() const { return rows_.leftOut(); }
  /// Announces that a search lists others now, or was given up.
  Notifier listedChanges;
  void updateMainButton();
  void updateCustomerJobLabel();
  /// The tick.
  void updateTimeDisplay();

  /// What runs at this moment, the longest first.
  [[nodiscard]] std::vector<RunningTimer> whatRuns() const;
  /// The activity of the selected row; none without one.
  [[nodiscard]] Activity* selectedActivity() const;
  /// The row of `currentActivity`; none when it is not listed.
  [[nodiscard]] std::optional<int> rowOfCurrentActivity() const;
  /// The stored length of the entry with the latest start, in whole seconds.
  [[nodiscard]] static QString lastEntryLength(const Activity* activity);

  void toggleTimer();
  /// Starts or stops the activity of the selected row.
  void toggleSelected();
  void toggle(Activity& activity);
  /// Selects its row, which a search that hides it gives up; nothing when it is not open.
  void selectActivity(const Activity& activity);
  /// Deletes the activity with all its entries; not asked again here.
  void deleteActivity(Activity& activity);
  /// Deletes those of the entries that still exist; not asked again here.
  void deleteEntries(const std::vector<Ref<TimeEntry>>& entries);
  void markSelectedCompleted();
  /// Puts the current activity above the others in the table, or among them again.
  void toggleFavourite();
  /// Makes the activity of the log's selected entry current again.
  void makeCurrent();

 private:
  void selectionChanged();
  [[nodiscard]] Today today() const;
  void followDocument();
  void documentEdited(const ChangeSet& changes);
  void showHeader();
  void showElapsedTime(const Activity* selected);
  void showElapsed(double seconds);
  void clearTableSelection();
  /// Changes the open document under a name.
  void edit(const QString& name, const std::function<void()>& work);

  Session& session_;
  TimerDisplay& display_;
  Ref<Activity> currentActivity_;
  Ref<TimeEntry> currentEntry_;
  ActivityRows rows_;
  TableSelection selection_{rows_.table()};
  LogController log_;
  HoursAtAGlance hours_;
  Ref<Activity> beforeSearch_;  ///< what was selected when it began
  Ref<Activity> firstFound_;    ///< what it has selected by itself
  std::optional<Today> shownDay_;
  Notifier::Subscription selectionChanges_;
  Subscription news_;
  Notifier::Subscription documentChanges_;
};

}  // namespace pendra
