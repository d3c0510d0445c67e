#pragma once
// A row is a snapshot: it holds the raw values that an object had when the table was last reloaded, and turns
// them into text when a cell is asked for. Nothing here follows the object; who wants news reloads, or
// replaces one row.

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "platform/Clock.h"
#include "ui_core/TableSource.h"

namespace pendra {

/// One column of a RowTable: its head and what it reads from a row.
template <class Row>
struct Column {
  ColumnHead head{};
  std::function<QString(const Row&)> text{};
  /// Set for a column that is sorted by time; every other one is sorted by its text, by code unit.
  std::function<std::optional<Instant>(const Row&)> time{};
  std::function<bool(const Row&)> checked{};
  std::function<bool(const Row&)> editable{};
  std::function<QString(const Row&)> warning{};
};

/// What a RowTable asks of every row, whatever the column.
template <class Row>
struct RowTraits {
  std::function<quint64(const Row&)> identity{};
  std::function<bool(const Row&)> running{};
  std::function<bool(const Row&)> quiet{};
};

/// Rows under a fixed table of columns, sorted by one descriptor. Sorting is stable in both directions.
template <class Row>
class RowTable final : public TableSource {
 public:
  explicit RowTable(std::vector<Column<Row>> columns, RowTraits<Row> traits = {})
      : columns_(std::move(columns)), traits_(std::move(traits)) {}

  /// Replaces all rows and sorts them.
  void setRows(std::vector<Row> rows) {
    rows_ = std::move(rows);
    sort();
  }
  /// Puts a row in without sorting; an index past the end appends.
  void insertRow(int index, Row row) {
    const auto at = std::clamp<std::ptrdiff_t>(index, 0, std::ssize(rows_));
    rows_.insert(rows_.begin() + at, std::move(row));
  }
  /// Puts a row in where the sort order wants it, behind its equals.
  void insertSorted(Row row) {
    const auto place = placeFor(row);
    rows_.insert(place, std::move(row));
  }
  /// Removes the rows for which `goes` holds; the others keep their order.
  template <class Predicate>
  void removeRows(const Predicate& goes) {
    std::erase_if(rows_, goes);
  }
  /// Replaces one row where it stands. An index past the end does nothing.
  void replaceRow(int index, Row row) {
    if (holds(index)) rows_[static_cast<size_t>(index)] = std::move(row);
  }
  /// Changes every row in place, without sorting.
  template <class Change>
  void changeRows(const Change& change) {
    for (Row& row : rows_) change(row);
  }

  [[nodiscard]] std::span<const Row> rows() const { return rows_; }
  /// The row at an index, or none past the end.
  [[nodiscard]] const Row* row(int index) const {
    return holds(index) ? &rows_[static_cast<size_t>(index)] : nullptr;
  }
  /// The first row for which `matches` holds.
  template <class Predicate>
  [[nodiscard]] std::optional<int> indexOf(Predicate matches) const {
    const auto found = std::find_if(rows_.begin(), rows_.end(), matches);
    if (found == rows_.end()) return std::nullopt;
    return static_cast<int>(found - rows_.begin());
  }
  [[nodiscard]] std::optional<int> columnOf(QStringView identifier) const {
    const auto found = std::find_if(columns_.begin(), columns_.end(),
                                    [&](const auto& column) { return column.head.identifier == identifier; });
    if (found == columns_.end()) return std::nullopt;
    return static_cast<int>(found - columns_.begin());
  }

  void sort() {
    const auto column = columnOf(sort_.key);
    if (sort_.key.isEmpty() || !column) return;
    const auto& key = columns_[static_cast<size_t>(*column)];
    if (key.time) {
      sortByValue(key.time);
    } else if (key.text) {
      sortByValue(key.text);
    }
  }

  [[nodiscard]] int rowCount() const override { return static_cast<int>(rows_.size()); }
  [[nodiscard]] int columnCount() const override { return static_cast<int>(columns_.size()); }
  [[nodiscard]] const ColumnHead& head(int column) const override {
    return columns_.at(static_cast<size_t>(column)).head;
  }
  [[nodiscard]] QString text(int row, int column) const override {
    return ask(row, column, &Column<Row>::text);
  }
  [[nodiscard]] quint64 identity(int row) const override {
    return traits_.identity && holds(row) ? traits_.identity(*this->row(row)) : 0;
  }
  [[nodiscard]] bool isRunning(int row) const override {
    return traits_.running && holds(row) && traits_.running(*this->row(row));
  }
  [[nodiscard]] bool isQuiet(int row) const override {
    return traits_.quiet && holds(row) && traits_.quiet(*this->row(row));
  }
  [[nodiscard]] bool isChecked(int row, int column) const override {
    return ask(row, column, &Column<Row>::checked);
  }
  [[nodiscard]] QString warning(int row, int column) const override {
    return ask(row, column, &Column<Row>::warning);
  }
  [[nodiscard]] bool isEditable(int row, int column) const override {
    return ask(row, column, &Column<Row>::editable);
  }
  /// A descriptor without a key changes nothing.
  void sortBy(const SortOrder& descriptor) override {
    if (descriptor.key.isEmpty()) return;
    sort_ = descriptor;
    sort();
  }
  [[nodiscard]] const SortOrder& sortOrder() const override { return sort_; }

 private:
  [[nodiscard]] bool holds(int row) const { return row >= 0 && row < rowCount(); }

  template <class Value>
  Value ask(int row, int column, std::function<Value(const Row&)> Column<Row>::*question) const {
    if (!holds(row) || column < 0 || column >= columnCount()) return Value{};
    const auto& answer = columns_[static_cast<size_t>(column)].*question;
    return answer ? answer(*this->row(row)) : Value{};
  }

  auto placeFor(const Row& row) {
    const auto column = columnOf(sort_.key);
    if (sort_.key.isEmpty() || !column) return rows_.end();
    const auto& key = columns_[static_cast<size_t>(*column)];
    if (key.time) return placeByValue(row, key.time);
    return key.text ? placeByValue(row, key.text) : rows_.end();
  }
  template <class ValueOf>
  auto placeByValue(const Row& row, const ValueOf& valueOf) {
    return std::upper_bound(rows_.begin(), rows_.end(), valueOf(row),
                            [&](const auto& value, const Row& other) {
                              return sort_.ascending ? value < valueOf(other) : valueOf(other) < value;
                            });
  }

  /// Reads each row's value once, so that no text is formatted within a comparison.
  template <class ValueOf>
  void sortByValue(const ValueOf& valueOf) {
    using Value = std::decay_t<decltype(valueOf(rows_.front()))>;
    std::vector<std::pair<Value, size_t>> keys;
    keys.reserve(rows_.size());
    for (const Row& row : rows_) keys.emplace_back(valueOf(row), keys.size());
    const auto before = [](const auto& a, const auto& b) { return a.first < b.first; };
    const auto after = [](const auto& a, const auto& b) { return b.first < a.first; };
    if (sort_.ascending) {
      std::stable_sort(keys.begin(), keys.end(), before);
    } else {
      std::stable_sort(keys.begin(), keys.end(), after);
    }
    std::vector<Row> sorted;
    sorted.reserve(rows_.size());
    for (const auto& [value, index] : keys) sorted.push_back(std::move(rows_[index]));
    rows_ = std::move(sorted);
  }

  std::vector<Column<Row>> columns_;
  RowTraits<Row> traits_;
  std::vector<Row> rows_;
  SortOrder sort_;
};

}  // namespace pendra
