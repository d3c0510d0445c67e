#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHeaderView>

#include "ui/RowTableView.h"

namespace pendra {

void RowTableView::copy() const {
  const auto rows = selectedRows();
  if (!model_ || rows.empty()) return;
  std::vector<int> columns;
  for (int place = 0; place < model_->columnCount(); ++place) {
    const int column = horizontalHeader()->logicalIndex(place);
    if (!isColumnHidden(column) && !actsOnPress(model_->head(column).kind)) columns.push_back(column);
  }
  QStringList lines;
  for (const int row : rows) {
    QStringList cells;
    // A note of several lines stays in its cell.
    for (const int column : columns) cells << model_->text(row, column).simplified();
    lines << cells.join(u'\t');
  }
  QGuiApplication::clipboard()->setText(lines.join(u'\n') + u'\n');
}

/// Shift+F10, which the toolkit leaves to the platform.
void RowTableView::askForMenu() {
  QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
  contextMenuEvent(&event);
}

/// A row that is not selected is selected first, so that what is chosen is done to the row that was meant.
void RowTableView::contextMenuEvent(QContextMenuEvent* event) {
  if (!model_ || model_->rowCount() == 0) return;
  const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
  const QModelIndex index =
      byMouse ? indexAt(event->pos()) : model_->index(std::max(0, currentIndex().row()), 0);
  if (!index.isValid()) return;
  if (!selectionModel()->isRowSelected(index.row())) selectRow(index.row());
  const QModelIndex shown = currentIndex().isValid() ? currentIndex() : index;
  const QPoint under = viewport()->mapToGlobal(visualRect(shown).bottomLeft());
  Q_EMIT rowMenuWanted(byMouse ? event->globalPos() : under);
}

}  // namespace pendra
