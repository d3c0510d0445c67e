#pragma once

#include "link/SubmissionRows.h"
#include "ui_core/LogController.h"

namespace pendra {

/// The rows of the time log, as sending asks for them.
class LogSubmissionRows final : public SubmissionRows {
 public:
  /// The log must outlive it.
  explicit LogSubmissionRows(LogController& log) : log_(log) {}

  [[nodiscard]] std::vector<SubmissionRow> consideredRows() const override {
    return converted(log_.consideredRows());
  }
  [[nodiscard]] std::vector<SubmissionRow> allRows() const override { return converted(log_.allRows()); }
  void clearSelection() override { log_.clearSelection(); }
  void showAll() override {
    log_.clearSelection();
    log_.showAll();
  }

 private:
  [[nodiscard]] static std::vector<SubmissionRow> converted(const std::vector<LogRow>& rows) {
    std::vector<SubmissionRow> converted;
    converted.reserve(rows.size());
    for (const LogRow& row : rows) {
      converted.push_back({row.entry, row.activity(), row.customer(), row.job(), row.service()});
    }
    return converted;
  }

  LogController& log_;
};

}  // namespace pendra
