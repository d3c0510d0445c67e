#pragma once

#include <vector>

#include "model/TimeEntry.h"

namespace pendra {

class Activity;

/// One row of the time log as sending needs it. The names are those of the time when the row was made.
struct SubmissionRow {
  Ref<TimeEntry> entry;
  Ref<Activity> activity;
  QString customer;
  QString job;
  QString service;

  /// By the rule of the time log exactly one second after the reference instant is sent here.
  [[nodiscard]] bool isUnsent() const { return entry && entry->sentSeconds() < 1.0; }
};

/// The time log, as sending asks it.
class SubmissionRows {
 public:
  virtual ~SubmissionRows() = default;
  /// The selected rows, or all when none is selected, in the order of the table.
  [[nodiscard]] virtual std::vector<SubmissionRow> consideredRows() const = 0;
  [[nodiscard]] virtual std::vector<SubmissionRow> allRows() const = 0;
  virtual void clearSelection() = 0;
  /// Lifts selection and filters, so that every entry is considered.
  virtual void showAll() = 0;
};

}  // namespace pendra
