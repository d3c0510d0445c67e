#include "ScrollAnchor.h"

#include <QScrollBar>

#include "ui/RowTableView.h"

namespace pendra {

ScrollAnchor::ScrollAnchor(RowTableView& view) : view_(view) {
  const QAbstractItemModel* model = view.model();
  connect(model, &QAbstractItemModel::modelAboutToBeReset, this, &ScrollAnchor::hold);
  connect(model, &QAbstractItemModel::modelReset, this, [this] {
    if (const auto row = view_.tableModel().rowWith(top_)) moveTo(*row);
  });
  connect(model, &QAbstractItemModel::rowsInserted, this,
          [this](const QModelIndex&, int first, int last) { holdMoved(first, last - first + 1); });
  connect(model, &QAbstractItemModel::rowsRemoved, this,
          [this](const QModelIndex&, int first, int last) { holdMoved(last + 1, first - last - 1); });
}

void ScrollAnchor::hold() {
  const int row = view_.rowAt(0);
  top_ = row > 0 ? view_.tableModel().identity(row) : 0;
}

void ScrollAnchor::holdMoved(int before, int by) {
  const int top = view_.verticalScrollBar()->value();
  if (top > 0 && before <= top) moveTo(top + by);
}

void ScrollAnchor::moveTo(int row) {
  const QModelIndex index = view_.model()->index(row, std::max(0, view_.columnAt(0)));
  if (index.isValid()) view_.scrollTo(index, QAbstractItemView::PositionAtTop);
}

}  // namespace pendra
