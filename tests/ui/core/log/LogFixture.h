#pragma once

#include "support/CellText.h"
#include "support/Rows.h"
#include "support/TestSession.h"
#include "ui_core/LogController.h"

namespace pendra {

/// A table that holds a selection by index and reports as the real one does.
class LogTableOfTest final : public TablePort {
 public:
  void setLog(LogController& log) { log_ = &log; }
  void select(std::vector<int> rows) {
    selected_ = std::move(rows);
    log_->selectionChanged();
  }

  void reloadData() override { ++reloads; }
  void redrawRow(int row) override { redrawn << row; }
  [[nodiscard]] std::vector<int> selectedRows() const override { return selected_; }
  void selectRow(int row) override { select({row}); }
  void clearSelection() override {
    if (!selected_.empty()) select({});
  }

  int reloads = 0;
  QList<int> redrawn;

 private:
  LogController* log_ = nullptr;
  std::vector<int> selected_;
};

class SilentTable final : public TablePort {
 public:
  void reloadData() override {}
  void redrawRow(int) override {}
  [[nodiscard]] std::vector<int> selectedRows() const override { return {}; }
  void selectRow(int) override {}
  void clearSelection() override {}
};

class SilentDisplay final : public TimerDisplay {
 public:
  void showElapsedTime(const QString&) override {}
  void showCustomerJobLabel(const QString&) override {}
  void showMainButton(bool) override {}
  void hideSendTime() override {}
  void showActivitySheet(bool) override {}
};

/// A time log over an open document, at 2026-11-24 10:00 in Berlin.
class TimeLog : public testing::Test {
 protected:
  TimeLog() {
    table.setLog(log);
    test.openDocument();
    design = &test.addService("Design");
  }

  Activity& activityOf(const QString& customer, const QString& job = {}) {
    const auto named = queries::customersNamed(*test.session.context(), customer);
    Customer& found = named.empty() ? test.addCustomer(customer) : *named[0];
    return test.addActivity(&found, design, job.isEmpty() ? nullptr : &test.addJob(found, job));
  }
  /// The column's texts, from the first row to the last.
  QStringList column(const char* identifier) {
    QStringList texts;
    const auto& rows = log.rows();
    for (int row = 0; row < rows.rowCount(); ++row) {
      texts << cellText(rows, QString::fromLatin1(identifier), row);
    }
    return texts;
  }
  void pickCustomer(const QString& name) {
    log.customerPopup.selectItemWithTitle(name);
    log.customerPicked(log.customerPopup);
  }

  TestSession test;
  SilentTable activities;
  SilentDisplay display;
  LogTableOfTest table;
  TimerState window{test.session, activities, display};
  LogController log{test.session, window, table, QLocale::c()};
  Service* design = nullptr;
};

}  // namespace pendra
