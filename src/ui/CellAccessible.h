#pragma once

#include <QAccessibleInterface>
#include <QPointer>

#include "ui/RowTableView.h"

namespace pendra {

/// One place of a table for assistive technology. Row -1 is the heads, column -1 the edge of a row.
class CellAccessible final : public QAccessibleInterface,
                             public QAccessibleTableCellInterface,
                             public QAccessibleActionInterface {
 public:
  CellAccessible(RowTableView* view, int row, int column) : view_(view), row_(row), column_(column) {}

  [[nodiscard]] bool isValid() const override;
  [[nodiscard]] QObject* object() const override { return nullptr; }
  [[nodiscard]] QWindow* window() const override;
  [[nodiscard]] QAccessibleInterface* parent() const override;
  [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
  [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  [[nodiscard]] int childCount() const override { return 0; }
  [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  [[nodiscard]] QString text(QAccessible::Text what) const override;
  void setText(QAccessible::Text, const QString&) override {}
  [[nodiscard]] QRect rect() const override;
  [[nodiscard]] QAccessible::Role role() const override;
  [[nodiscard]] QAccessible::State state() const override;
  void* interface_cast(QAccessible::InterfaceType type) override;

  [[nodiscard]] bool isSelected() const override;
  [[nodiscard]] QList<QAccessibleInterface*> columnHeaderCells() const override;
  [[nodiscard]] QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
  [[nodiscard]] int columnIndex() const override { return column_; }
  [[nodiscard]] int rowIndex() const override { return row_; }
  [[nodiscard]] int columnExtent() const override { return 1; }
  [[nodiscard]] int rowExtent() const override { return 1; }
  [[nodiscard]] QAccessibleInterface* table() const override { return parent(); }

  /// The first action is the press of a cell that acts or of a head that sorts, else the selection.
  [[nodiscard]] QStringList actionNames() const override;
  void doAction(const QString& name) override;
  [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

 private:
  [[nodiscard]] bool isHead() const { return row_ < 0; }
  [[nodiscard]] bool isCell() const { return row_ >= 0 && column_ >= 0; }
  [[nodiscard]] QModelIndex index() const { return view_->model()->index(row_, column_); }
  [[nodiscard]] bool canBePressed() const;

  QPointer<RowTableView> view_;
  int row_;
  int column_;
};

}  // namespace pendra
