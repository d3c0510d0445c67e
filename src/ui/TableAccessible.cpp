#include "TableAccessible.h"

#include <QHeaderView>

#include "CellAccessible.h"
#include "ui/RowTableView.h"

namespace pendra {

namespace {

QAccessibleInterface* seenAs(const QString&, QObject* object) {
  auto* view = qobject_cast<RowTableView*>(object);
  return view ? new TableAccessible(view) : nullptr;
}

}  // namespace

void TableAccessible::install() {
  [[maybe_unused]] static const bool installed = [] {
    QAccessible::installFactory(seenAs);
    return true;
  }();
}

TableAccessible::TableAccessible(RowTableView* view) : QAccessibleWidget(view, QAccessible::Table) {}

TableAccessible::~TableAccessible() { forgetChildren(); }

RowTableView* TableAccessible::view() const { return qobject_cast<RowTableView*>(object()); }

int TableAccessible::columnCount() const { return view()->model() ? view()->model()->columnCount() : 0; }

int TableAccessible::rowCount() const { return view()->model() ? view()->model()->rowCount() : 0; }

int TableAccessible::cellsEnd() const { return (rowCount() + 1) * (columnCount() + 1); }

QList<QWidget*> TableAccessible::widgetsOverRows() const {
  QList<QWidget*> widgets = view()->viewport()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
  widgets.removeIf([](const QWidget* widget) { return widget->isHidden(); });
  return widgets;
}

int TableAccessible::childCount() const { return cellsEnd() + static_cast<int>(widgetsOverRows().size()); }

QAccessibleInterface* TableAccessible::child(int index) const {
  if (index >= cellsEnd()) {
    return QAccessible::queryAccessibleInterface(widgetsOverRows().value(index - cellsEnd()));
  }
  if (index < 0) return nullptr;
  if (const auto known = children_.constFind(index); known != children_.cend()) {
    return QAccessible::accessibleInterface(known->id);
  }
  const int width = columnCount() + 1;
  auto* cell = new CellAccessible(view(), index / width - 1, index % width - 1);
  const QAccessible::Id id = QAccessible::registerAccessibleInterface(cell);
  children_.insert(index, {id, cell->text(QAccessible::Name), bool(cell->state().checked)});
  return cell;
}

int TableAccessible::indexOfChild(const QAccessibleInterface* child) const {
  if (const auto* cell = dynamic_cast<const CellAccessible*>(child)) {
    return (cell->rowIndex() + 1) * (columnCount() + 1) + cell->columnIndex() + 1;
  }
  const auto over = widgetsOverRows().indexOf(qobject_cast<QWidget*>(child->object()));
  return over < 0 ? -1 : cellsEnd() + static_cast<int>(over);
}

QAccessibleInterface* TableAccessible::cellAt(int row, int column) const {
  if (row < 0 || column < 0 || row >= rowCount() || column >= columnCount()) return nullptr;
  return child((row + 1) * (columnCount() + 1) + column + 1);
}

QAccessibleInterface* TableAccessible::childAt(int x, int y) const {
  const QPoint inRows = view()->viewport()->mapFromGlobal(QPoint(x, y));
  if (const QModelIndex index = view()->indexAt(inRows); index.isValid()) {
    return cellAt(index.row(), index.column());
  }
  const QHeaderView& heads = *view()->horizontalHeader();
  const QPoint inHeads = heads.viewport()->mapFromGlobal(QPoint(x, y));
  const int column = heads.rect().contains(inHeads) ? heads.logicalIndexAt(inHeads) : -1;
  return column < 0 ? nullptr : child(column + 1);
}

QAccessibleInterface* TableAccessible::focusChild() const {
  const QModelIndex current = view()->currentIndex();
  return current.isValid() ? cellAt(current.row(), current.column()) : nullptr;
}

void* TableAccessible::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::TableInterface) return static_cast<QAccessibleTableInterface*>(this);
  return QAccessibleWidget::interface_cast(type);
}

int TableAccessible::selectedCellCount() const { return selectedRowCount() * columnCount(); }

QList<QAccessibleInterface*> TableAccessible::selectedCells() const {
  QList<QAccessibleInterface*> cells;
  for (const int row : selectedRows()) {
    for (int column = 0; column < columnCount(); ++column) cells << cellAt(row, column);
  }
  return cells;
}

QString TableAccessible::columnDescription(int column) const {
  return view()->model()->headerData(column, Qt::Horizontal, Qt::AccessibleTextRole).toString();
}

int TableAccessible::selectedRowCount() const { return static_cast<int>(view()->selectedRows().size()); }

QList<int> TableAccessible::selectedRows() const {
  const std::vector<int> rows = view()->selectedRows();
  return {rows.begin(), rows.end()};
}

bool TableAccessible::isRowSelected(int row) const {
  return view()->selectionModel() && view()->selectionModel()->isRowSelected(row);
}

bool TableAccessible::selectRow(int row) {
  if (row < 0 || row >= rowCount()) return false;
  view()->selectRow(row);
  return true;
}

bool TableAccessible::unselectRow(int row) {
  if (!isRowSelected(row)) return false;
  view()->selectionModel()->select(view()->model()->index(row, 0),
                                   QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
  return true;
}

void TableAccessible::modelChange(QAccessibleTableModelChangeEvent*) { forgetChildren(); }

void TableAccessible::tellChanged(int firstRow, int lastRow) {
  for (Known& known : children_) {
    QAccessibleInterface* cell = QAccessible::accessibleInterface(known.id);
    const int row = cell->tableCellInterface() ? cell->tableCellInterface()->rowIndex() : -1;
    if (row < firstRow || row > lastRow) continue;
    const QString name = std::exchange(known.name, cell->text(QAccessible::Name));
    if (name != known.name) {
      QAccessibleEvent renamed(cell, QAccessible::NameChanged);
      QAccessible::updateAccessibility(&renamed);
    }
    const bool checked = std::exchange(known.checked, bool(cell->state().checked));
    if (checked == known.checked) continue;
    QAccessible::State what;
    what.checked = true;
    QAccessibleStateChangeEvent turned(cell, what);
    QAccessible::updateAccessibility(&turned);
  }
}

void TableAccessible::forgetChildren() {
  for (const Known& known : std::as_const(children_)) QAccessible::deleteAccessibleInterface(known.id);
  children_.clear();
}

}  // namespace pendra
