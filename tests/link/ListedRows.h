#pragma once

#include <optional>
#include <vector>

#include "link/SubmissionRows.h"
#include "model/Queries.h"

namespace pendra {

/// A time log whose rows are what the test says.
class ListedRows final : public SubmissionRows {
 public:
  std::vector<SubmissionRow> rows;
  std::optional<std::size_t> selected;
  int reloads = 0;

  void add(TimeEntry& period) {
    Activity& activity = *period.activity();
    rows.push_back({&period, &activity, queries::nameOf(activity.customer()), queries::nameOf(activity.job()),
                    queries::nameOf(activity.service())});
  }
  [[nodiscard]] std::vector<SubmissionRow> consideredRows() const override {
    return selected ? std::vector{rows[*selected]} : rows;
  }
  [[nodiscard]] std::vector<SubmissionRow> allRows() const override { return rows; }
  void clearSelection() override { selected.reset(); }
  void reloadData() override { ++reloads; }
};

class ScriptedSummary final : public SummarySheet {
 public:
  int answer = 1;
  std::vector<SummaryLine> lines;
  bool open = false;

  [[nodiscard]] int run(const std::vector<SummaryLine>& shown) override {
    lines = shown;
    open = true;
    return answer;
  }
  void close() override { open = false; }
};

}  // namespace pendra
