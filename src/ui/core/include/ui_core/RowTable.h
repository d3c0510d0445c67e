#pragma once
// A table is its columns over rows of one kind, which show objects or hold raw values of them; text is made
// when a cell is asked for. Nothing here follows the objects: their owner hears the news and changes rows,
// and each change tells Qt's views exactly what came, went, moved or changed.

#include <algorithm>
#include <concepts>
#include <functional>
#include <iterator>
#include <limits>
#include <numeric>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "platform/Clock.h"
#include "ui_core/TableModel.h"

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
  std::function<QString(const Row&)> remark{};
};

/// What a RowTable asks of every row, whatever the column.
template <class Row>
struct RowTraits {
  std::function<quint64(const Row&)> identity{};
  std::function<bool(const Row&)> running{};
  std::function<bool(const Row&)> quiet{};
  std::function<bool(const Row&)> sum{};
  /// Rows for which it holds stand above the others, whatever the order.
  std::function<bool(const Row&)> first{};
  std::function<RowSign(const Row&)> sign{};
  /// Rows that stand together and answer the same here are a group, while the order is one of these keys.
  std::function<qint64(const Row&)> group{};
  QStringList groupedBy{};
};

/// What becomes of a row that was looked at; one that moves has changed so that it may stand elsewhere now.
enum class RowFate { Stays, Changed, Moves, Goes };

template <class Row>
class RowTable;

/// The rows that a table shows, to be walked through in their order; valid until the table changes.
template <class Row>
class ShownRows {
 public:
  explicit ShownRows(const RowTable<Row>& table) : table_(&table) {}

  class Iterator {
   public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = Row;
    using difference_type = std::ptrdiff_t;
    using pointer = const Row*;
    using reference = const Row&;

    Iterator() = default;
    Iterator(const RowTable<Row>* table, int index) : table_(table), index_(index) {}
    reference operator*() const { return *table_->row(index_); }
    pointer operator->() const { return table_->row(index_); }
    Iterator& operator++() {
      ++index_;
      return *this;
    }
    Iterator operator++(int) {
      Iterator before = *this;
      ++index_;
      return before;
    }
    friend bool operator==(const Iterator&, const Iterator&) = default;

   private:
    const RowTable<Row>* table_ = nullptr;
    int index_ = 0;
  };

  [[nodiscard]] std::size_t size() const { return static_cast<std::size_t>(table_->rowCount()); }
  [[nodiscard]] const Row& operator[](std::size_t index) const {
    return *table_->row(static_cast<int>(index));
  }
  [[nodiscard]] Iterator begin() const { return {table_, 0}; }
  [[nodiscard]] Iterator end() const { return {table_, table_->rowCount()}; }

 private:
  const RowTable<Row>* table_;
};

/// Rows under a fixed table of columns, sorted by one order. Sorting is stable in both directions.
template <class Row>
class RowTable final : public TableModel {
 public:
  explicit RowTable(std::vector<Column<Row>> columns, RowTraits<Row> traits = {})
      : columns_(std::move(columns)), traits_(std::move(traits)) {}

  /// Other rows, sorted, told as a reset.
  void setRows(std::vector<Row> rows) {
    beginResetModel();
    rows_ = std::move(rows);
    arrange(rows_, orderOf(rows_));
    lookThrough();
    endResetModel();
  }
  /// Shows only those rows for which `passes` holds at this moment or when they come; none: all. Told as a
  /// reset.
  void setFilter(std::function<bool(const Row&)> passes) {
    beginResetModel();
    filter_ = std::move(passes);
    lookThrough();
    endResetModel();
  }
  /// How many rows the filter holds back.
  [[nodiscard]] int heldBack() const { return static_cast<int>(rows_.size()) - rowCount(); }
  /// All rows, also those that the filter holds back, to set in them what no cell shows.
  [[nodiscard]] std::span<Row> all() { return rows_; }
  /// The rows as they are now, sorted, told as the difference: by identity what came, went and moved, and of
  /// what stayed the rows that differ. Many differences are told as a reset.
  void updateRows(std::vector<Row> rows) {
    if (filter_) return setRows(std::move(rows));
    arrange(rows, orderOf(rows));
    const RowChanges changes(identitiesOf(rows_), identitiesOf(rows));
    if (changes.areMany() || !traits_.identity) {
      beginResetModel();
      rows_ = std::move(rows);
      return endResetModel();
    }
    removeRanges(changes.gone);
    reorder(changes.order);
    for (const RowRange& range : changes.come.ranges()) {
      beginInsertRows({}, range.first, range.last);
      rows_.insert(rows_.begin() + range.first, rows.begin() + range.first, rows.begin() + range.last + 1);
      endInsertRows();
    }
    RowRanges other;
    if constexpr (std::equality_comparable<Row>) {
      for (int row = 0; row < rowCount(); ++row) {
        if (!(rows[static_cast<size_t>(row)] == *this->row(row))) other.add(row);
      }
    }
    rows_ = std::move(rows);
    tellChanged(other);
  }
  /// Puts a row in where the sort order wants it, behind its equals; answers whether it is shown.
  bool insertSorted(Row row) {
    const auto place = placeFor(row);
    const int at = static_cast<int>(place - rows_.begin());
    const int index = shownBefore(at);
    const bool passes = !filter_ || filter_(row);
    if (passes) beginInsertRows({}, index, index);
    if (filter_) {
      const auto behind = shown_.begin() + index;
      std::for_each(behind, shown_.end(), [](int& shown) { ++shown; });
      if (passes) shown_.insert(behind, at);
    }
    rows_.insert(place, std::move(row));
    if (passes) endInsertRows();
    return passes;
  }
  /// Asks of each row for which `concerned` holds what becomes of it; the answer may change the row in place.
  /// No more than `most` rows are concerned, so that the others need not be looked at.
  template <class Concerned, class Judge>
  void review(std::size_t most, const Concerned& concerned, const Judge& judge) {
    RowRanges changed;
    RowRanges gone;
    std::vector<int> moved;
    std::size_t found = 0;
    for (int place = 0; found < most && place < std::ssize(rows_); ++place) {
      Row& row = rows_[static_cast<size_t>(place)];
      if (!concerned(std::as_const(row))) continue;
      ++found;
      const RowFate fate = judge(row, isShown(place));
      if (fate == RowFate::Goes) gone.add(place);
      if (fate == RowFate::Moves) moved.push_back(place);
      if (fate != RowFate::Goes && fate != RowFate::Stays && isShown(place)) changed.add(shownBefore(place));
    }
    tellChanged(changed);
    const bool isOne = moved.size() == 1 && gone.ranges().empty() && !filter_;
    removePlaces(gone);
    if (!moved.empty()) isOne ? settle(moved.front()) : sortAgain();
  }
  /// Replaces one row where it stands. An index past the end does nothing.
  void replaceRow(int index, Row row) {
    if (!holds(index)) return;
    rows_[placeAt(index)] = std::move(row);
    RowRanges changed;
    changed.add(index);
    tellChanged(changed);
  }
  /// Changes rows in place, without sorting; `change` answers whether the cells of its row are others now.
  template <class Change>
  void changeRows(const Change& change) {
    RowRanges changed;
    int index = 0;
    for (size_t place = 0; place < rows_.size(); ++place) {
      const bool isShown = holds(index) && placeAt(index) == place;
      if (change(rows_[place]) && isShown) changed.add(index);
      index += isShown ? 1 : 0;
    }
    tellChanged(changed);
  }

  /// The rows that are shown.
  [[nodiscard]] ShownRows<Row> rows() const { return ShownRows<Row>(*this); }
  /// The row at an index, or none past the end.
  [[nodiscard]] const Row* row(int index) const { return holds(index) ? &rows_[placeAt(index)] : nullptr; }
  /// The first row for which `matches` holds.
  template <class Predicate>
  [[nodiscard]] std::optional<int> indexOf(Predicate matches) const {
    for (int index = 0; index < rowCount(); ++index) {
      if (matches(*row(index))) return index;
    }
    return std::nullopt;
  }
  /// Other texts among which is the widest of a column; to be told by whoever shows the column anew.
  void setWidest(QStringView identifier, const QStringList& texts) {
    if (const auto column = columnOf(identifier)) columns_[static_cast<size_t>(*column)].head.widest = texts;
  }
  /// Puts the rows in order again after some were changed in place.
  void sortAgain() { reorder(orderOf(rows_)); }

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(filter_ ? shown_.size() : rows_.size());
  }
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
  }
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
  [[nodiscard]] bool isSum(int row) const override {
    return traits_.sum && holds(row) && traits_.sum(*this->row(row));
  }
  [[nodiscard]] bool isChecked(int row, int column) const override {
    return ask(row, column, &Column<Row>::checked);
  }
  [[nodiscard]] QString warning(int row, int column) const override {
    return ask(row, column, &Column<Row>::warning);
  }
  [[nodiscard]] QString remark(int row, int column) const override {
    return ask(row, column, &Column<Row>::remark);
  }
  [[nodiscard]] RowSign sign(int row) const override {
    return traits_.sign && holds(row) ? traits_.sign(*this->row(row)) : RowSign::None;
  }
  [[nodiscard]] InGroup groupPlace(int row) const override {
    if (!traits_.group || !holds(row) || !traits_.groupedBy.contains(sort_.key)) return InGroup::Ungrouped;
    const bool isFurther = row > 0 && traits_.group(*this->row(row)) == traits_.group(*this->row(row - 1));
    return isFurther ? InGroup::Further : InGroup::First;
  }
  [[nodiscard]] bool isEditable(int row, int column) const override {
    return ask(row, column, &Column<Row>::editable);
  }
  void sortBy(const SortOrder& order) override {
    if (order.key.isEmpty()) return;
    sort_ = order;
    sortAgain();
  }
  [[nodiscard]] const SortOrder& sortOrder() const override { return sort_; }

 private:
  [[nodiscard]] bool holds(int row) const { return row >= 0 && row < rowCount(); }
  /// Where the row with that index stands among all.
  [[nodiscard]] size_t placeAt(int index) const {
    return static_cast<size_t>(filter_ ? shown_[static_cast<size_t>(index)] : index);
  }
  void lookThrough() {
    shown_.clear();
    for (int place = 0; filter_ && place < std::ssize(rows_); ++place) {
      if (filter_(rows_[static_cast<size_t>(place)])) shown_.push_back(place);
    }
  }
  /// How many of the rows before that place are shown.
  [[nodiscard]] int shownBefore(int place) const {
    if (!filter_) return place;
    return static_cast<int>(std::lower_bound(shown_.begin(), shown_.end(), place) - shown_.begin());
  }
  [[nodiscard]] bool isShown(int place) const {
    const int index = shownBefore(place);
    return holds(index) && placeAt(index) == static_cast<size_t>(place);
  }

  template <class Value>
  Value ask(int row, int column, std::function<Value(const Row&)> Column<Row>::*question) const {
    if (!holds(row) || column < 0 || column >= columnCount()) return Value{};
    const auto& answer = columns_[static_cast<size_t>(column)].*question;
    return answer ? answer(*this->row(row)) : Value{};
  }

  [[nodiscard]] bool isFirst(const Row& row) const { return traits_.first && traits_.first(row); }

  /// Behind all that may stand before the row.
  auto placeFor(const Row& row) { return placeFor(row, rows_.begin(), rows_.end()); }
  /// The same among these, of which none is the row itself.
  template <class Place>
  Place placeFor(const Row& row, Place begin, Place end) {
    const auto column = columnOf(sort_.key);
    if (sort_.key.isEmpty() || !column) return end;
    const auto others = std::partition_point(begin, end, [this](const Row& other) { return isFirst(other); });
    (isFirst(row) ? end : begin) = others;
    const auto& key = columns_[static_cast<size_t>(*column)];
    if (key.time) return placeByValue(row, begin, end, key.time);
    return key.text ? placeByValue(row, begin, end, key.text) : end;
  }
  template <class Place, class ValueOf>
  Place placeByValue(const Row& row, Place begin, Place end, const ValueOf& valueOf) {
    return std::upper_bound(begin, end, valueOf(row), [&](const auto& value, const Row& other) {
      return sort_.ascending ? value < valueOf(other) : valueOf(other) < value;
    });
  }
  /// Puts one row where the order wants it now, the others being in order.
  void settle(int place) {
    const auto at = rows_.begin() + place;
    const auto next = at + 1;
    auto to = placeFor(*at, rows_.begin(), at);
    const bool isBehindNext = to == at && next != rows_.end() && placeFor(*next, at, next) == at;
    if (isBehindNext) to = placeFor(*at, next, rows_.end());
    if (to == at) return;
    std::vector<int> order(rows_.size());
    std::iota(order.begin(), order.end(), 0);
    const auto rotate = [&](auto all) {
      const auto target = all + (to - rows_.begin());
      target < all + place ? std::rotate(target, all + place, all + place + 1)
                           : std::rotate(all + place, all + place + 1, target);
    };
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    rotate(rows_.begin());
    rotate(order.begin());
    movePersistentIndexes(order);
    Q_EMIT layoutChanged({}, VerticalSortHint);
  }

  /// For each place in the sort order, the row that goes there; empty when all rows stay.
  [[nodiscard]] std::vector<int> orderOf(const std::vector<Row>& rows) const {
    std::vector<int> order = sortedOrderOf(rows);
    if (!traits_.first || rows.empty()) return order;
    if (order.empty()) {
      order.resize(rows.size());
      std::iota(order.begin(), order.end(), 0);
    }
    std::stable_partition(order.begin(), order.end(),
                          [&](int row) { return isFirst(rows[static_cast<size_t>(row)]); });
    return order;
  }
  [[nodiscard]] std::vector<int> sortedOrderOf(const std::vector<Row>& rows) const {
    const auto column = columnOf(sort_.key);
    if (sort_.key.isEmpty() || !column) return {};
    const auto& key = columns_[static_cast<size_t>(*column)];
    if (key.time) {  // as plain numbers, which are compared fastest; none comes before any
      return orderByValue(rows, [&key](const Row& row) {
        const auto time = key.time(row);
        return time ? time->seconds : -std::numeric_limits<double>::infinity();
      });
    }
    return key.text ? orderByValue(rows, key.text) : std::vector<int>();
  }
  /// Reads each row's value once, so that no text is formatted within a comparison.
  template <class ValueOf>
  [[nodiscard]] std::vector<int> orderByValue(const std::vector<Row>& rows, const ValueOf& valueOf) const {
    using Value = std::decay_t<decltype(valueOf(rows.front()))>;
    std::vector<std::pair<Value, int>> keys;
    keys.reserve(rows.size());
    for (const Row& row : rows) keys.emplace_back(valueOf(row), static_cast<int>(keys.size()));
    const auto before = [](const auto& a, const auto& b) { return a.first < b.first; };
    const auto after = [](const auto& a, const auto& b) { return b.first < a.first; };
    const auto sort = [&keys](const auto& comesFirst) {
      if (std::is_sorted(keys.begin(), keys.end(), comesFirst)) return false;
      std::stable_sort(keys.begin(), keys.end(), comesFirst);
      return true;
    };
    if (!(sort_.ascending ? sort(before) : sort(after))) return {};
    std::vector<int> order;
    order.reserve(keys.size());
    for (const auto& [value, index] : keys) order.push_back(index);
    return order;
  }
  /// Within the same memory, of which many rows have much: round by round of those that change places.
  static void arrange(std::vector<Row>& rows, std::vector<int> order) {
    const auto rowFor = [&order](size_t place) { return static_cast<size_t>(order[place]); };
    for (size_t begin = 0; begin < order.size(); ++begin) {
      if (rowFor(begin) == begin) continue;
      Row first = std::move(rows[begin]);
      size_t place = begin;
      for (size_t from = rowFor(place); from != begin; from = rowFor(place)) {
        rows[place] = std::move(rows[from]);
        order[place] = static_cast<int>(place);
        place = from;
      }
      rows[place] = std::move(first);
      order[place] = static_cast<int>(place);
    }
  }
  void reorder(const std::vector<int>& order) {
    if (std::is_sorted(order.begin(), order.end())) return;
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    arrange(rows_, order);
    movePersistentIndexes(filter_ ? reorderShown(order) : order);
    Q_EMIT layoutChanged({}, VerticalSortHint);
  }
  /// Follows a new order of all rows; answers the same order of those that are shown.
  std::vector<int> reorderShown(const std::vector<int>& order) {
    std::vector<int> indexes(order.size(), -1);
    for (size_t index = 0; index < shown_.size(); ++index) {
      indexes[static_cast<size_t>(shown_[index])] = static_cast<int>(index);
    }
    shown_.clear();
    std::vector<int> shownOrder;
    for (size_t place = 0; place < order.size(); ++place) {
      const int index = indexes[static_cast<size_t>(order[place])];
      if (index < 0) continue;
      shown_.push_back(static_cast<int>(place));
      shownOrder.push_back(index);
    }
    return shownOrder;
  }
  void removePlaces(const RowRanges& gone) {
    if (!gone.areMany()) return removeRanges(gone);
    beginResetModel();
    std::vector<Row> rows;
    std::vector<int> shown;
    auto range = gone.ranges().begin();
    for (int place = 0; place < std::ssize(rows_); ++place) {
      if (range != gone.ranges().end() && place > range->last) ++range;
      if (range != gone.ranges().end() && place >= range->first) continue;
      if (filter_ && isShown(place)) shown.push_back(static_cast<int>(rows.size()));
      rows.push_back(std::move(rows_[static_cast<size_t>(place)]));
    }
    rows_ = std::move(rows);
    shown_ = std::move(shown);
    endResetModel();
  }
  /// The last ones first, so that the places of those before stay what they are.
  void removeRanges(const RowRanges& gone) {
    for (auto range = gone.ranges().rbegin(); range != gone.ranges().rend(); ++range) removeRange(*range);
  }
  void removeRange(const RowRange& range) {
    const int first = shownBefore(range.first);
    const int behind = shownBefore(range.last + 1);
    if (first < behind) beginRemoveRows({}, first, behind - 1);
    if (filter_) {
      const auto rest = shown_.erase(shown_.begin() + first, shown_.begin() + behind);
      std::for_each(rest, shown_.end(), [&range](int& place) { place -= range.last - range.first + 1; });
    }
    rows_.erase(rows_.begin() + range.first, rows_.begin() + range.last + 1);
    if (first < behind) endRemoveRows();
  }
  [[nodiscard]] std::vector<quint64> identitiesOf(const std::vector<Row>& rows) const {
    std::vector<quint64> identities;
    identities.reserve(rows.size());
    for (const Row& row : rows) identities.push_back(traits_.identity ? traits_.identity(row) : 0);
    return identities;
  }

  std::vector<Column<Row>> columns_;
  RowTraits<Row> traits_;
  std::vector<Row> rows_;
  std::function<bool(const Row&)> filter_;
  std::vector<int> shown_;  // where the rows that pass stand among all; unused without a filter
  SortOrder sort_;
};

}  // namespace pendra
