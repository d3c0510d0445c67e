#pragma once
// A press and a selection are two things. A press on a sign, a link or a check box acts at once and is
// reported as `cellPressed`; the row is selected by the same press, as by any other.

#include <QMap>
#include <QPointer>
#include <QTableView>
#include <memory>
#include <vector>

#include "ui_core/TableSelection.h"

class QMenu;

namespace pendra {

class CellEditor;
class ColumnWidths;
class EmptyState;
class ScrollAnchor;

/// The program's table: rows of one height with a line under each, quiet heads, one look for what runs.
/// It shows a table's rows and its selection, and owns neither.
class RowTableView : public QTableView {
  Q_OBJECT
 public:
  using QTableView::edit;

  explicit RowTableView(QWidget* parent = nullptr);
  ~RowTableView() override;
  /// Shows the table and its selection, which outlive the view or are dropped before they go.
  void setTable(TableModel& table, TableSelection& selection);
  /// The same with a selection of its own.
  void setTable(TableModel& table) { setTable(table, *new TableSelection(table, this)); }
  /// Shows nothing from now on.
  void dropTable();
  [[nodiscard]] TableModel& tableModel() const { return *model_; }

  /// The selected rows, ascending, and the first of them; -1 when none is.
  [[nodiscard]] std::vector<int> selectedRows() const;
  [[nodiscard]] int selectedRow() const { return selection_ ? selection_->row() : -1; }
  /// As the selection's own, and scrolls there.
  void selectRow(int row);
  /// Selects several rows, reported once.
  void selectRows(const std::vector<int>& rows);
  [[nodiscard]] QString sortKey() const;
  [[nodiscard]] bool sortAscending() const;
  /// Sorts and shows the sign in the head; not reported.
  void setSortOrder(const SortOrder& descriptor);

  /// Gives the columns their places on the grid of the timer window (ui/Grid.h).
  void standOnGrid();
  /// The part of a cell, or of a column's head, in which its content stands.
  [[nodiscard]] QRect contentRect(const QRect& cell, int column) const;
  /// The widths that were set by hand on the grid, by column.
  [[nodiscard]] const QMap<QString, int>& chosenWidths() const;
  void chooseWidths(const QMap<QString, int>& widths);
  /// Adds a choice for each column that can be hidden.
  void addColumnChoices(QMenu& menu) const;

  /// The column whose cell Space presses, whichever column the current cell is in.
  void setSpaceColumn(const QString& identifier) { spaceColumn_ = identifier; }
  /// From now on letters that are typed are reported instead of leading to the row that begins with them.
  void reportTyping() { reportsTyping_ = true; }
  /// Opens the cell's editor.
  void editCell(const QString& identifier, int row);
  /// Takes over what is being typed into a cell, and closes its editor.
  void commitEditing();
  /// The same, where what is typed may be refused: false, and the keyboard is in the cell.
  [[nodiscard]] bool finishEditing();
  /// What a press on the cell does; the way in for the keyboard and for assistive technology.
  void pressCell(const QModelIndex& index);
  /// Scrolls to the row that is selected, or to the first.
  void showSelectionOrTop();
  /// What stands in the middle while there are no rows; an empty title leaves its button out.
  void setEmptyState(const QString& sentence, const QString& buttonTitle = {}, const QString& helpTitle = {});
  /// Presses a cell, after selecting its row, or with row -1 the head of a column: the way in for assistive
  /// technology.
  void pressPlace(int row, int column);

 public Q_SLOTS:
  /// Hands the selected rows to the clipboard as they are shown: a line each, cells parted by tabs, signs and
  /// links left out.
  void copy() const;

 Q_SIGNALS:
  void selectionChanged();
  void cellPressed(int row, const QString& identifier);
  /// A double click on a row, outside its acting and editable cells, or Return outside its links.
  void rowActivated(int row);
  void headClicked(const QString& identifier);
  void sortChanged();
  void lettersTyped(const QString& letters);
  /// A column on the grid was dragged to another width.
  void widthChosen();
  /// The menu of the current row is wanted at a point of the screen.
  void rowMenuWanted(const QPoint& at);
  /// Space was pressed where no cell acts on it.
  void spacePressed();
  /// Why a cell was not opened.
  void editRefused(const QString& why);
  /// Something was typed and could be neither stored nor kept.
  void typingLost(const QString& text);
  void emptyButtonClicked();
  void emptyHelpClicked();

 protected:
  bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
  void commitData(QWidget* editor) override;
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
  void initViewItemOption(QStyleOptionViewItem* option) const override;
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  void keyboardSearch(const QString& letters) override;
  bool viewportEvent(QEvent* event) override;
  void rowsAboutToBeRemoved(const QModelIndex& parent, int first, int last) override;
  void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                   const QList<int>& roles) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void takeUp(CellEditor& editor, const QModelIndex& index);
  [[nodiscard]] QModelIndex typedIndex() const;
  void storeCell();
  void closeCell();
  void letGo();
  void keepTyping();
  void typeOn();
  void tellTyping(int firstChanged, int lastChanged);
  void editNextCell(bool forward);
  [[nodiscard]] bool editFirstCell();
  [[nodiscard]] bool leaveCellFor(const QMouseEvent& event);
  void askForMenu();
  void makeHeads();
  void lookForLetters(const QString& letters);
  void clickHead(int section);
  void connectTable();
  void rowsChanged();
  void distributeWidths();
  void fitRows();
  void showColumns();
  void askForColumns(const QPoint& place);
  void placeEmptyState();
  void setHovered(int row);
  void redrawRect(int row);
  [[nodiscard]] QString toolTipFor(const QModelIndex& index) const;

  [[nodiscard]] QModelIndex pressedBy(const QKeyEvent& event) const;

  QPointer<TableModel> model_;
  QPointer<TableSelection> selection_;
  Notifier::Subscription selectionChanges_;
  EmptyState* empty_ = nullptr;
  int scroll_ = 0;  ///< before a reset
  std::unique_ptr<ScrollAnchor> anchor_;
  std::unique_ptr<ColumnWidths> widths_;
  Notifier::Subscription shownColumns_;
  /// A cell that acts and on which the button of the mouse is held.
  struct Pressed {
    quint64 identity = 0;
    int column = 0;
    QRect cell;  ///< where it stood; empty when none is held
  };
  Pressed pressed_;
  /// The cell that is being typed over, or was last.
  struct Typing {
    QPointer<CellEditor> editor{};
    quint64 identity = 0;
    QString column{};
    struct Kept {
      QString before;
      QString typed;
      bool isTyped;
    };
    std::optional<Kept> kept{};  ///< while the rows are being set anew
  };
  Typing typing_;
  int hovered_ = -1;
  QString spaceColumn_;
  bool reportsTyping_ = false;
};

}  // namespace pendra
