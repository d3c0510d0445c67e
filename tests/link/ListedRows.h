#pragma once

#include <optional>
#include <vector>

#include "link/Summary.h"
#include "model/Queries.h"

namespace pendra {

/// A time log whose rows are what the test says.
class ListedRows final : public SubmissionRows {
 public:
  std::vector<SubmissionRow> rows;
  std::vector<SubmissionRow> filteredAway;
  std::optional<std::size_t> selected;

  void add(TimeEntry& entry) {
    Activity& activity = *entry.activity();
    rows.push_back({&entry, &activity, queries::nameOf(activity.customer()), queries::nameOf(activity.job()),
                    queries::nameOf(activity.service())});
  }
  [[nodiscard]] std::vector<SubmissionRow> consideredRows() const override {
    return selected ? std::vector{rows[*selected]} : rows;
  }
  [[nodiscard]] std::vector<SubmissionRow> allRows() const override { return rows; }
  void clearSelection() override { selected.reset(); }
  void showAll() override {
    selected.reset();
    rows.insert(rows.end(), filteredAway.begin(), filteredAway.end());
    filteredAway.clear();
  }
};

class ScriptedSummary final : public SummarySheet {
 public:
  bool sends = true;
  bool showsAll = false;
  Summary shown;
  bool open = false;

  [[nodiscard]] bool run(const Summary& summary, const std::function<Summary()>& showAll) override {
    shown = showsAll ? showAll() : summary;
    open = true;
    return sends;
  }
  void close() override { open = false; }
};

}  // namespace pendra
