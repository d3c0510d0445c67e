#pragma once
// A press and a selection are two things. A press on a sign, a link or a check box acts at once and is
// reported as `cellPressed`; the row is selected by the same press, as by any other.

#include <QTableView>
#include <vector>

#include "ui/TableModel.h"
#include "ui_core/TablePort.h"

namespace pendra {

class EmptyState;

/// The program's table: rows of one height with a line under each, quiet heads, one look for what runs.
/// It keeps the selection over a reload, by the rows' identity, and is silent about it unless a selected
/// object is gone.
class RowTableView : public QTableView, public TablePort {
  Q_OBJECT
 public:
  explicit RowTableView(QWidget* parent = nullptr);
  /// Shows the source, which must outlive the view.
  void setSource(TableSource& source);
  /// Shows nothing from now on; for a source that goes before the view.
  void dropSource();
  [[nodiscard]] TableModel& tableModel() const { return *model_; }

  void reloadData() override;
  void redrawRow(int row) override;
  /// Another name of redrawRow.
  void updateRow(int row) { redrawRow(row); }
  [[nodiscard]] std::vector<int> selectedRows() const override;
  void selectRow(int row) override;
  /// Selects several rows, reported once.
  void selectRows(const std::vector<int>& rows);
  void clearSelection() override;
  [[nodiscard]] QString sortKey() const;
  [[nodiscard]] bool sortAscending() const;
  /// Sorts and shows the sign in the head; not reported.
  void setSortOrder(const SortOrder& descriptor);

  /// Opens the cell's editor.
  void editCell(const QString& identifier, int row);
  /// Takes over what is being typed into a cell, and closes its editor.
  void commitEditing();
  /// What a press on the cell does; the way in for the keyboard and for assistive technology.
  void pressCell(const QModelIndex& index);
  /// Scrolls to the row that is selected, or to the first.
  void showSelectionOrTop();
  /// What stands in the middle while there are no rows; an empty title leaves its button out.
  void setEmptyState(const QString& sentence, const QString& buttonTitle = {}, const QString& helpTitle = {});
  /// Presses a cell, after selecting its row, or with row -1 the head of a column: the way in for assistive
  /// technology.
  void pressPlace(int row, int column);

 Q_SIGNALS:
  void selectionChanged();
  void cellPressed(int row, const QString& identifier);
  /// A double click on a row, outside its acting and editable cells, or Return.
  void rowActivated(int row);
  void headClicked(const QString& identifier);
  void sortChanged();
  void emptyButtonClicked();
  void emptyHelpClicked();

 protected:
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  bool viewportEvent(QEvent* event) override;
  void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                   const QList<int>& roles) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  /// What is selected, by identity: at a reload the source holds other rows already.
  struct Remembered {
    std::vector<quint64> selected;
    quint64 current = 0;
    int currentColumn = 0;
    int scroll = 0;
  };

  void makeHeads();
  void clickHead(int section);
  void rememberSelection();
  void rememberScroll();
  void restoreSelection();
  void selectSilently(const std::vector<int>& rows, int current, int column);
  void distributeWidths();
  void keepDraggedWidth(int section, int width);
  [[nodiscard]] int contentWidth(int column) const;
  void placeEmptyState();
  void setHovered(int row);
  void redrawRect(int row);
  [[nodiscard]] QString toolTipFor(const QModelIndex& index) const;

  TableModel* model_ = nullptr;
  EmptyState* empty_ = nullptr;
  Remembered remembered_;
  std::vector<double> weights_;
  /// A cell that acts and on which the button of the mouse is held.
  struct Pressed {
    quint64 identity = 0;
    int column = 0;
    QRect cell;  ///< where it stood; empty when none is held
  };
  Pressed pressed_;
  int hovered_ = -1;
  bool distributing_ = false;
};

}  // namespace pendra
