#pragma once

#include <QWidget>

#include "ui_core/LogController.h"

namespace pendra {

class LogFilterRow;
class RowTableView;

/// The lower half of the timer window: the filters in one row, the log's table under them. It shows what the
/// log's logic says, which is the window's.
class LogPaneView final : public QWidget {
  Q_OBJECT
 public:
  /// The session and the window's logic must outlive it.
  LogPaneView(Session& session, TimerState& window, QWidget* parent = nullptr);

  ~LogPaneView() override;

  [[nodiscard]] LogController& logController() { return log_; }
  [[nodiscard]] RowTableView& table() { return *table_; }
  /// A new widget that says how many entries there are and how long they are, for the window's footer.
  [[nodiscard]] QWidget* makeSummary();
  /// Puts the keyboard into the field that searches the log.
  void find();
  /// Runs the export with a sheet that shows its progress, and can end it, when it takes long.
  void exportTimeLog();

 Q_SIGNALS:
  /// An entry is to be edited; it is the only selected one.
  void editTimeEntry();

 private:
  void tell(const QString& sentence);
  void showEmptiness();
  void pressCell(int row, const QString& identifier);

  Session& session_;
  LogController& log_;
  // These look at the logic until they are gone, so they go first, before Qt's own turn.
  std::unique_ptr<RowTableView> table_;
  std::unique_ptr<LogFilterRow> filters_;
  Notifier::Subscription contents_;
};

}  // namespace pendra
