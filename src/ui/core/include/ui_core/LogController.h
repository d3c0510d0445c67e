#pragma once
// Filters choose what is listed, never what is true. The rows are those of the last rebuild: between two of
// them names, marks and lengths follow the document, running lengths the tick, and what was deleted goes; a
// row does not go because it no longer passes a filter.

#include <QCoreApplication>
#include <QLocale>
#include <memory>

#include "document/Session.h"
#include "model/Hours.h"
#include "store/Observers.h"
#include "ui_core/LogRange.h"
#include "ui_core/LogRow.h"
#include "ui_core/PopUp.h"
#include "ui_core/TableSelection.h"

namespace pendra {

class ChangeSet;
class DayRange;
class LogSearch;
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
  ~LogController();

  /// Fills the filters; to be called once, when the window is there.
  void start();

  [[nodiscard]] Session& session() const { return session_; }
  [[nodiscard]] RowTable<LogRow>& rows() { return rows_; }
  /// Any number of rows.
  [[nodiscard]] TableSelection& selection() { return selection_; }

  /// The filters' state. A view shows it and writes back what the user chooses, followed by the action.
  PopUp customerPopup{QCoreApplication::translate("pendra", "All")};
  PopUp jobPopup{QCoreApplication::translate("pendra", "All")};
  PopUp servicePopup{QCoreApplication::translate("pendra", "All")};
  PopUp rangePopup;
  QString startDateField;
  QString endDateField;
  [[nodiscard]] bool hidesSubmitted() const;
  /// Writes the preference, which reloads.
  void setHidesSubmitted(bool hides);
  /// When and where the dates are read.
  [[nodiscard]] DayReader dayReader() const;
  [[nodiscard]] LogRange range() const { return static_cast<LogRange>(rangePopup.selectedIndex()); }
  /// Fills the date fields with the days of the range; "Dates" leaves them as they are.
  void chooseRange(LogRange range);
  /// To be called when a date field was typed into.
  void datesTyped();
  /// To be called when another day has begun: "today" is that one now.
  void dayChanged();
  /// What is looked for in names and notes; a limit as the others are.
  [[nodiscard]] const QString& search() const { return searchTyped_; }
  void setSearch(const QString& typed);
  /// Makes the next letter of a search as fast as the later ones.
  void prepareSearch();
  /// How many entries pass the other filters and not the search.
  [[nodiscard]] int hiddenBySearch() const { return rows_.heldBack(); }
  /// Whether anything limits what is listed, but for the preference to hide what was sent.
  [[nodiscard]] bool isLimited() const;
  /// Names, dates and search limit nothing any more.
  void showAll();
  /// The same, and sent entries are shown.
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
  void rebuild();
  void reloadNames();
  /// The tick.
  void updateRunningEntries();
  void markSelectedUnsent();
  /// Stops the entry of a row that runs; else starts the row's activity again, unless it runs already.
  void startOrStop(int row);
  /// Selects, as the only one, the row of that entry.
  void selectEntry(const TimeEntry* entry);
  /// Selects the rows of these entries as far as they are listed; nothing changes when none is.
  void selectEntries(const std::vector<const TimeEntry*>& entries);
  void clearSelection() { selection_.clearSelection(); }
  /// The entries of the selected rows, in row order.
  [[nodiscard]] std::vector<Ref<TimeEntry>> selectedEntries() const;
  [[nodiscard]] int selectedCount() const;

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
  void editAsCommand(const QString& name, const std::function<void()>& work);
  [[nodiscard]] ObjectContext* context() const;
  void followDocument();
  void showWhatApplies();
  void documentEdited(const ChangeSet& changes);
  /// Entries that may pass a filter now that held them back, or the other way round.
  [[nodiscard]] std::vector<TimeEntry*> movingThroughFilters(const ChangeSet& changes) const;
  /// Whether a rebuild would list it.
  [[nodiscard]] bool passesFilters(TimeEntry& entry) const;
  /// Puts these entries into the rows where a rebuild would list them.
  void takeIn(const std::vector<TimeEntry*>& entries);
  /// Rows, sums and filters after an edit: what it costs is what the edit touched, not how many rows there
  /// are.
  void followEntries(const ChangeSet& changes, const Objects<TimeEntry>& inserted,
                     std::vector<TimeEntry*> moving);
  /// `names` are those that are others now. What has a row is taken out of `moving`.
  void reviewRows(const ChangeSet& changes, const QSet<const ManagedObject*>& names,
                  std::vector<TimeEntry*>& moving);
  /// What is chosen in the filters stays chosen under its new name.
  void renameFilters(const ChangeSet& changes);
  /// Whether one of the three pop-ups limits what is listed.
  [[nodiscard]] bool filtersByName() const;
  [[nodiscard]] std::vector<LogRow> makeRows() const;
  [[nodiscard]] DayRange days() const;
  [[nodiscard]] std::optional<DaySpan> daysOfField(const QString& field) const;
  void fillDates();
  [[nodiscard]] bool hasEntriesAfterToday(const DaySpan& days) const;
  /// What is chosen in the filters stays chosen, unless it would hide what has come; that is said.
  void reloadNamesFor(const Objects<TimeEntry>& inserted);
  void sayNamesAreAll(const QString& text);
  [[nodiscard]] bool passesNameFilters(const TimeEntry& entry) const;
  void lookThroughRows();
  void sumUp();
  void chooseNames(const std::optional<QString>& customer, const std::optional<QString>& job,
                   const std::optional<QString>& service);
  void fillJobs(const std::optional<QString>& customer);
  void updateRunningRow(const TimeEntry& entry);
  [[nodiscard]] int indexOf(const TimeEntry& entry);

  Session& session_;
  TimerState& window_;
  QLocale locale_;
  std::unique_ptr<LogSearch> search_;
  QString searchTyped_;
  RowTable<LogRow> rows_;
  TableSelection selection_{rows_};
  Length lengthOfAll_{};
  QHash<qint64, int> runningRows_;  // where a running entry was last found; -1: it is not listed
  Notifier::Subscription selectionChanges_;
  Notifier::Subscription hideSubmitted_;
  Notifier::Subscription weekBegins_;
  Notifier::Subscription shownColumns_;
  Subscription news_;
  Notifier::Subscription standaloneChanges_;
  Notifier::Subscription documentChanges_;
};

}  // namespace pendra
