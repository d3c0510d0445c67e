#pragma once
// Filters choose what is listed, never what is true: the rows are a snapshot taken at every reload, and
// between two reloads only the durations of running entries move.

#include <QLocale>

#include "ui_core/LogPane.h"
#include "ui_core/LogRow.h"
#include "ui_core/PopUp.h"
#include "ui_core/TablePort.h"
#include "ui_core/TimerState.h"

namespace pendra {

/// How many entries there are and how long they are together.
struct LogSummary {
  int entries = 0;
  double seconds = 0;
};

/// Why the log shows no rows.
enum class LogEmptiness { HasRows, NoEntries, FilteredAway };

/// The logic of the time log: its rows, its filters, and what is done to the selected entries.
class LogController final : public LogPane {
 public:
  /// All must outlive it. The locale shapes the date column.
  LogController(Session& session, TimerState& window, TablePort& table, const QLocale& locale = QLocale());

  /// To be called once, when the table can be asked.
  void awakeFromNib();

  [[nodiscard]] TimerState& windowController() const { return window_; }
  [[nodiscard]] RowTable<LogRow>& tableDataArray() { return tableDataArray_; }

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
  /// Announces that titles or choices of the filters changed other than by the user.
  Notifier filtersChanges;
  /// Announces that rows, their durations or the selection changed.
  Notifier contentsChanges;

  /// The filter as a condition's text; empty when nothing is filtered by name.
  [[nodiscard]] QString buildPredicate() const;
  void changeFilter() { reloadData(); }
  void hideSubmittedChanged() { reloadData(); }
  void changeDateRange() { reloadData(); }
  /// Acts only for the customer pop-up.
  void pickACustomer(const PopUp& sender);
  void pickACustomerAfterDeleting();

  void reloadData() override;
  void reloadComboxes() override;
  void reloadPopupsToSameChoice() override;
  void updateRunningPeriods() override;
  void markSelectedForResend() override;
  void selectPeriod(const TimePeriod* period) override;
  void clearSelection() override { table_.clearSelection(); }
  [[nodiscard]] std::vector<Ref<TimePeriod>> deleteSelectedRows() const override;
  [[nodiscard]] Activity* selectedActivity() const override;
  [[nodiscard]] int numberOfSelectedRows() const override;

  /// The entry of the first selected row; none without a selection.
  [[nodiscard]] TimePeriod* selectedTimePeriod() const;
  /// Whether something is selected and the window's current entry has not been sent.
  [[nodiscard]] bool anyPeriodsSelected() const;
  /// The selected rows, or all when none is selected, in the order of the table.
  [[nodiscard]] std::vector<LogRow> consideredRows() const;
  [[nodiscard]] std::vector<LogRow> allRows() const;
  /// To be called whenever the table's selection changed.
  void tableViewSelectionDidChange();

  /// Of the selected rows, or of all when none is selected.
  [[nodiscard]] LogSummary summary() const;
  [[nodiscard]] LogEmptiness emptiness() const;

 private:
  [[nodiscard]] ObjectContext* context() const;
  [[nodiscard]] std::vector<LogRow> makeRows() const;
  [[nodiscard]] std::optional<Instant> dateOf(const QString& field) const;
  void fillJobs(const std::optional<QString>& customer);
  void updateRunningRow(const TimePeriod& period);
  [[nodiscard]] int indexOf(const TimePeriod& period);

  Session& session_;
  TimerState& window_;
  TablePort& table_;
  RowTable<LogRow> tableDataArray_;
  double secondsOfAll_ = 0;
  QHash<qint64, int> runningRows_;  // where a running entry was last found; -1: it is not listed
  Notifier::Subscription hideSubmitted_;
};

}  // namespace pendra
