#include "CellAccessible.h"

#include <QHeaderView>

namespace pendra {

bool CellAccessible::isValid() const {
  return view_ && view_->model() && row_ < view_->model()->rowCount() &&
         column_ < view_->model()->columnCount();
}

QWindow* CellAccessible::window() const { return isValid() ? view_->window()->windowHandle() : nullptr; }

QAccessibleInterface* CellAccessible::parent() const { return QAccessible::queryAccessibleInterface(view_); }

QString CellAccessible::text(QAccessible::Text what) const {
  if (!isValid() || column_ < 0) return {};
  if (what == QAccessible::Description && isCell())
    return index().data(Qt::AccessibleDescriptionRole).toString();
  if (what != QAccessible::Name) return {};
  return isHead() ? view_->model()->headerData(column_, Qt::Horizontal, Qt::AccessibleTextRole).toString()
                  : index().data(Qt::AccessibleTextRole).toString();
}

QRect CellAccessible::rect() const {
  if (!isValid() || column_ < 0) return {};
  if (isCell()) {
    const QRect cell = view_->visualRect(index());
    return {view_->viewport()->mapToGlobal(cell.topLeft()), cell.size()};
  }
  const QHeaderView& heads = *view_->horizontalHeader();
  return {heads.viewport()->mapToGlobal(QPoint(heads.sectionViewportPosition(column_), 0)),
          QSize(heads.sectionSize(column_), heads.height())};
}

QAccessible::Role CellAccessible::role() const {
  if (isCell()) return QAccessible::Cell;
  if (isHead()) return column_ < 0 ? QAccessible::Pane : QAccessible::ColumnHeader;
  return QAccessible::RowHeader;
}

QAccessible::State CellAccessible::state() const {
  QAccessible::State state;
  if (!isValid() || column_ < 0) {
    state.invisible = true;
    return state;
  }
  if (isHead()) return state;
  state.invisible = view_->isColumnHidden(column_);
  state.selectable = true;
  state.focusable = true;
  state.selected = isSelected();
  state.focused = view_->hasFocus() && view_->currentIndex() == index();
  state.offscreen = !view_->viewport()->rect().intersects(view_->visualRect(index()));
  const QVariant check = index().data(Qt::CheckStateRole);
  state.checkable = check.isValid();
  state.checked = check.toInt() == Qt::Checked;
  state.editable = bool(index().flags() & Qt::ItemIsEditable);
  return state;
}

void* CellAccessible::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::TableCellInterface && isCell())
    return static_cast<QAccessibleTableCellInterface*>(this);
  if (type == QAccessible::ActionInterface && column_ >= 0)
    return static_cast<QAccessibleActionInterface*>(this);
  return nullptr;
}

bool CellAccessible::isSelected() const {
  return isCell() && isValid() && view_->selectionModel()->isSelected(index());
}

QList<QAccessibleInterface*> CellAccessible::columnHeaderCells() const {
  QAccessibleInterface* table = parent();
  return table ? QList{table->child(column_ + 1)} : QList<QAccessibleInterface*>();
}

bool CellAccessible::canBePressed() const {
  const ColumnHead& head = view_->tableModel().head(column_);
  return isHead() || actsOnPress(head.kind);
}

QStringList CellAccessible::actionNames() const {
  if (!isValid() || column_ < 0) return {};
  QStringList names;
  if (canBePressed()) names << pressAction();
  if (isCell()) names << toggleAction();
  return names;
}

void CellAccessible::doAction(const QString& name) {
  if (!isValid()) return;
  if (name == toggleAction() && isCell()) {
    return isSelected() ? view_->clearSelection() : view_->selectRow(row_);
  }
  if (name != pressAction() || !canBePressed()) return;
  // Queued: the press may open a sheet, and who asked for it waits for an answer.
  QMetaObject::invokeMethod(
      view_, [view = view_, row = row_, column = column_] { view->pressPlace(row, column); },
      Qt::QueuedConnection);
}

}  // namespace pendra
