#pragma once
// Assistive technology sees a table as heads and cells, and presses a cell as it would a button. Qt's own
// interface can only select a cell; this one offers the press too, where a cell has one.

#include <QAccessibleWidget>
#include <QHash>

namespace pendra {

class RowTableView;

/// The accessible side of a RowTableView. Its children stand in the order that Qt's views count in: a corner
/// and the heads, then for each row its edge and its cells, then whatever widgets lie over the rows.
class TableAccessible final : public QAccessibleWidget, public QAccessibleTableInterface {
 public:
  explicit TableAccessible(RowTableView* view);
  ~TableAccessible() override;
  /// From now on every RowTableView is seen through this class.
  static void install();
  /// Tells of the cells in these rows that read otherwise now; of those that nobody knows there is no news.
  void tellChanged(int firstRow, int lastRow);

  [[nodiscard]] int childCount() const override;
  [[nodiscard]] QAccessibleInterface* child(int index) const override;
  [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
  [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;
  [[nodiscard]] QAccessibleInterface* focusChild() const override;
  void* interface_cast(QAccessible::InterfaceType type) override;

  [[nodiscard]] QAccessibleInterface* caption() const override { return nullptr; }
  [[nodiscard]] QAccessibleInterface* summary() const override { return nullptr; }
  [[nodiscard]] QAccessibleInterface* cellAt(int row, int column) const override;
  [[nodiscard]] int selectedCellCount() const override;
  [[nodiscard]] QList<QAccessibleInterface*> selectedCells() const override;
  [[nodiscard]] QString columnDescription(int column) const override;
  [[nodiscard]] QString rowDescription(int) const override { return {}; }
  [[nodiscard]] int selectedColumnCount() const override { return 0; }
  [[nodiscard]] int selectedRowCount() const override;
  [[nodiscard]] int columnCount() const override;
  [[nodiscard]] int rowCount() const override;
  [[nodiscard]] QList<int> selectedColumns() const override { return {}; }
  [[nodiscard]] QList<int> selectedRows() const override;
  [[nodiscard]] bool isColumnSelected(int) const override { return false; }
  [[nodiscard]] bool isRowSelected(int row) const override;
  bool selectRow(int row) override;
  bool selectColumn(int) override { return false; }
  bool unselectRow(int row) override;
  bool unselectColumn(int) override { return false; }
  /// Cells are made anew after rows came, went or moved.
  void modelChange(QAccessibleTableModelChangeEvent* event) override;

 private:
  /// A place that somebody has asked for, and what was said of it then.
  struct Known {
    QAccessible::Id id;
    QString name;
    bool checked;
  };
  [[nodiscard]] RowTableView* view() const;
  [[nodiscard]] QList<QWidget*> widgetsOverRows() const;
  [[nodiscard]] int cellsEnd() const;
  void forgetChildren();

  mutable QHash<int, Known> children_;
};

}  // namespace pendra
