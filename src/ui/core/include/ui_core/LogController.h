#pragma once
// Filters choose what is listed, never what is true. The rows are those of the last rebuild: between two of
// them names, marks and lengths follow the document, running lengths the tick, and what was deleted goes; a
// row does not go because it no longer passes a filter.

#include <QLocale>

#include "document/Session.h"
#include "store/Observers.h"
#include "ui_core/LogRow.h"
#include "ui_core/PopUp.h"
#include "ui_core/TableSelection.h"

namespace pendra {

class ChangeSet;
class DayRange;
class TimerState;

/// How many entries there are and how long they are together.
struct LogSummary {
  int entries = 0;
  double seconds = 0;
};

/// Why the log shows no rows.
enum class LogEmptiness { HasRows, NoEntries, FilteredAway };

/// The logic of the time log: its rows, its filters, and what is done to the selected entries.
class LogController {
 public:
  /// All must outlive it. The locale shapes the date column.
  LogController(Session& session, TimerState& window, const QLocale& locale);
  LogController(const LogController&) = delete;
  LogController& operator=(const LogController&) = delete;

  /// Fills the filters; to be called once, when the window is there.
  void start();

  [[nodiscard]] Session& session() const { return session_; }
  [[nodiscard]] RowTable<LogRow>& rows() { return rows_; }
  /// Any number of rows.
  [[nodiscard]] TableSelection& selection() { return selection_; }

  /// The filters' state. A view shows it and writes back what the user chooses, followed by the action.
  PopUp customerPopup{QStringLiteral("All")};
  PopUp jobPopup{QStringLiteral("All")};
  PopUp servicePopup{QStringLiteral("All")};
  QString startDateField;
  QString endDateField;
  [[nodiscard]] bool hidesSubmitted() const;
  /// Writes the preference, which reloads.
  void setHidesSubmitted(bool hides);
  /// Whether a date field holds nothing or something that reads as a date; else it does not limit.
  [[nodiscard]] bool isReadable(const QString& dateField) const;
  /// Everything to "All", no dates, sent entries shown.
  void clearFilters();
  /// Everything as `clearFilters` leaves it, but for these days and perhaps one customer.
  void showOnly(QDate first, QDate last, const std::optional<QString>& customer);
  /// Announces that titles or choices of the filters changed other than by the user.
  Notifier filtersChanges;
  /// Announces that rows, their durations or the selection changed.
  Notifier contentsChanges;

  /// The filter as a condition's text; empty when nothing is filtered by name.
  [[nodiscard]] QString buildPredicate() const;
  /// Acts only for the customer pop-up.
  void customerPicked(const PopUp& sender);
  void resetNameFilters();

  /// The rebuild: what passes the filters now.
  void reloadData();
  void reloadNames();
  void reloadKeepingChoice();
  /// The tick.
  void updateRunningEntries();
  void markSelectedUnsent();
  /// Stops the entry of a row that runs; else starts the row's activity again, unless it runs already.
  void startOrStop(int row);
  /// Selects, as the only one, the row of that entry.
  void selectEntry(const TimeEntry* period);
  void clearSelection() { selection_.clearSelection(); }
  /// The entries of the selected rows, in row order.
  [[nodiscard]] std::vector<Ref<TimeEntry>> selectedEntries() const;
  /// The activity of the first selected row; asked only while a row is selected.
  [[nodiscard]] Activity* selectedActivity() const;
  [[nodiscard]] int numberOfSelectedRows() const;

  /// The entry of the first selected row; none without a selection.
  [[nodiscard]] TimeEntry* selectedEntry() const;
  /// The selected rows, or all when none is selected, in the order of the table.
  [[nodiscard]] std::vector<LogRow> consideredRows() const;
  [[nodiscard]] std::vector<LogRow> allRows() const;

  /// Of the selected rows, or of all when none is selected.
  [[nodiscard]] LogSummary summary() const;
  [[nodiscard]] LogEmptiness emptiness() const;

 private:
  void selectionChanged();
  [[nodiscard]] ObjectContext* context() const;
  void followDocument();
  void showWhatApplies();
  void documentEdited(const ChangeSet& changes);
  [[nodiscard]] bool movesThroughFilters(const ChangeSet& changes) const;
  /// Puts these new entries into the rows where a rebuild would list them.
  void takeIn(const Objects<TimeEntry>& entries);
  void refreshRows(const ChangeSet& changes);
  /// What is chosen in the filters stays chosen under its new name.
  void renameFilters(const ChangeSet& changes);
  /// Whether one of the three pop-ups limits what is listed.
  [[nodiscard]] bool filtersByName() const;
  [[nodiscard]] std::vector<LogRow> makeRows() const;
  [[nodiscard]] DayRange days() const;
  [[nodiscard]] std::optional<Instant> dateOf(const QString& field) const;
  void fillJobs(const std::optional<QString>& customer);
  void updateRunningRow(const TimeEntry& period);
  [[nodiscard]] int indexOf(const TimeEntry& period);

  Session& session_;
  TimerState& window_;
  RowTable<LogRow> rows_;
  TableSelection selection_{rows_};
  double secondsOfAll_ = 0;
  QHash<qint64, int> runningRows_;  // where a running entry was last found; -1: it is not listed
  Notifier::Subscription selectionChanges_;
  Notifier::Subscription hideSubmitted_;
  Notifier::Subscription shownColumns_;
  Subscription news_;
  Notifier::Subscription standaloneChanges_;
  Notifier::Subscription documentChanges_;
};

}  // namespace pendra
