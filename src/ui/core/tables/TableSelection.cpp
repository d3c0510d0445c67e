#include "ui_core/TableSelection.h"

#include <QSet>
#include <QSignalBlocker>
#include <utility>

namespace pendra {

TableSelection::TableSelection(TableModel& table, QObject* parent)
    : QItemSelectionModel(&table, parent), table_(table) {
  connect(&table, &QAbstractItemModel::modelAboutToBeReset, this, [this] { beforeReset_ = kept(); });
  connect(this, &QItemSelectionModel::selectionChanged, this, &TableSelection::lookAgain);
}

std::vector<int> TableSelection::rows() const {
  std::vector<int> rows;
  const QItemSelection selected = selection();
  for (const QItemSelectionRange& range : selected) {
    for (int row = range.top(); row <= range.bottom(); ++row) rows.push_back(row);
  }
  std::sort(rows.begin(), rows.end());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  return rows;
}

int TableSelection::row() const {
  int first = -1;
  const QItemSelection selected = selection();
  for (const QItemSelectionRange& range : selected) {
    if (first < 0 || range.top() < first) first = range.top();
  }
  return first;
}

void TableSelection::selectRows(std::vector<int> wanted) {
  std::erase_if(wanted, [this](int row) { return row < 0 || row >= table_.rowCount(); });
  std::sort(wanted.begin(), wanted.end());
  if (wanted.empty()) return clearSelection();
  const bool same = rows() == wanted;
  setCurrentIndex(table_.index(wanted.front(), std::max(0, currentIndex().column())), NoUpdate);
  if (same) return changes.changed();
  select(rangesOf(wanted), ClearAndSelect | Rows);
}

void TableSelection::lookAgain() {
  std::vector<quint64> objects = kept().selected;
  std::sort(objects.begin(), objects.end());
  if (objects == announced_) return;
  announced_ = std::move(objects);
  changes.changed();
}

/// The rows as ranges, so that many neighbours cost no more than one.
QItemSelection TableSelection::rangesOf(const std::vector<int>& rows) const {
  RowRanges ranges;
  for (const int row : rows) ranges.add(row);
  QItemSelection selection;
  const int last = table_.columnCount() - 1;
  for (const RowRange& range : ranges.ranges()) {
    selection.append(QItemSelectionRange(table_.index(range.first, 0), table_.index(range.last, last)));
  }
  return selection;
}

TableSelection::Kept TableSelection::kept() const {
  Kept kept{.selected = {},
            .current = table_.identity(currentIndex().row()),
            .column = std::max(0, currentIndex().column())};
  for (const int row : rows()) kept.selected.push_back(table_.identity(row));
  return kept;
}

void TableSelection::reset() {
  if (!model()) return QItemSelectionModel::reset();  // the rows have gone
  // A view resets its selection once more after the model has: then all stays as it is.
  const Kept before = beforeReset_ ? *std::exchange(beforeReset_, std::nullopt) : kept();
  const QSet<quint64> wanted(before.selected.begin(), before.selected.end());
  std::vector<int> found;
  int current = -1;
  for (int row = 0; (!wanted.isEmpty() || before.current) && row < table_.rowCount(); ++row) {
    const quint64 identity = table_.identity(row);
    if (identity == 0) continue;
    if (wanted.contains(identity)) found.push_back(row);
    if (identity == before.current) current = row;
  }
  {
    const QSignalBlocker silent(this);
    QItemSelectionModel::reset();
    setCurrentIndex(table_.index(current, std::min(before.column, table_.columnCount() - 1)), NoUpdate);
    select(rangesOf(found), ClearAndSelect | Rows);
  }
  lookAgain();
}

}  // namespace pendra
