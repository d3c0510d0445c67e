#pragma once

#include <vector>

#include "model/TimeEntry.h"

namespace pendra {

/// What the timer window asks of the time log below it.
class LogPane {
 public:
  virtual ~LogPane() = default;

  virtual void reloadData() = 0;
  virtual void reloadNames() = 0;
  virtual void reloadKeepingChoice() = 0;
  virtual void clearSelection() = 0;
  virtual void updateRunningEntries() = 0;
  virtual void markSelectedUnsent() = 0;
  /// Selects, as the only one, the row of that entry.
  virtual void selectEntry(const TimeEntry* period) = 0;
  /// Kept: deletes nothing; gives the entries of the selected rows, in row order.
  [[nodiscard]] virtual std::vector<Ref<TimeEntry>> selectedEntries() const = 0;
  /// The activity of the selected row; asked only while a row is selected.
  [[nodiscard]] virtual Activity* selectedActivity() const = 0;
  [[nodiscard]] virtual int numberOfSelectedRows() const = 0;
};

/// A log that is not there: a window before its log pane has been made.
class NoLogPane final : public LogPane {
 public:
  void reloadData() override {}
  void reloadNames() override {}
  void reloadKeepingChoice() override {}
  void clearSelection() override {}
  void updateRunningEntries() override {}
  void markSelectedUnsent() override {}
  void selectEntry(const TimeEntry*) override {}
  [[nodiscard]] std::vector<Ref<TimeEntry>> selectedEntries() const override { return {}; }
  [[nodiscard]] Activity* selectedActivity() const override { return nullptr; }
  [[nodiscard]] int numberOfSelectedRows() const override { return 0; }
};

}  // namespace pendra
