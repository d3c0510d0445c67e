#pragma once

#include <vector>

#include "model/TimeEntry.h"

namespace pendra {

class Activity;

/// One row of the time log as sending needs it. The names are those of the time when the row was made.
struct SubmissionRow {
  Ref<TimeEntry> period;
  Ref<Activity> activity;
  QString customer;
  QString job;
  QString service;
};

/// The time log, as sending asks it.
class SubmissionRows {
 public:
  virtual ~SubmissionRows() = default;
  /// The selected rows, or all when none is selected, in the order of the table.
  [[nodiscard]] virtual std::vector<SubmissionRow> consideredRows() const = 0;
  [[nodiscard]] virtual std::vector<SubmissionRow> allRows() const = 0;
  virtual void clearSelection() = 0;
  virtual void reloadData() = 0;
};

/// One line of the summary: what goes out for one customer, job and service.
struct SummaryLine {
  QString customer;
  QString job;
  QString service;
  QString duration;

  friend bool operator==(const SummaryLine&, const SummaryLine&) = default;
};

/// The sheet on the timer window that shows what will be sent.
class SummarySheet {
 public:
  virtual ~SummarySheet() = default;
  /// Application-modal; 1 when the user wants to send, 0 when not.
  [[nodiscard]] virtual int run(const std::vector<SummaryLine>& lines) = 0;
  virtual void close() = 0;
};

/// The unsent rows, one line for each combination of the three names, in the order of the rows.
[[nodiscard]] std::vector<SummaryLine> summaryLines(const std::vector<SubmissionRow>& rows);

}  // namespace pendra
