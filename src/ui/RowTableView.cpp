#include "ui/RowTableView.h"

#include <QHelpEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <memory>
#include <utility>

#include "CellEditor.h"
#include "ColumnWidths.h"
#include "EmptyState.h"
#include "RowDelegate.h"
#include "RowHeader.h"
#include "ScrollAnchor.h"
#include "TableAccessible.h"
#include "ui/Grid.h"
#include "ui/OneLine.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

RowDelegate& delegateOf(const RowTableView& view) { return *static_cast<RowDelegate*>(view.itemDelegate()); }

bool acts(const QModelIndex& index) { return index.isValid() && actsOnPress(RowDelegate::kindOf(index)); }

}  // namespace

RowTableView::RowTableView(QWidget* parent)
    : QTableView(parent), empty_(new EmptyState(viewport())), widths_(std::make_unique<ColumnWidths>(*this)) {
  TableAccessible::install();
  setFrameShape(QFrame::NoFrame);
  setShowGrid(false);
  setFont(Theme::cellFont());
  setSelectionBehavior(SelectRows);
  setSelectionMode(SingleSelection);
  setEditTriggers(DoubleClicked | EditKeyPressed);
  setTabKeyNavigation(false);
  setWordWrap(false);
  setMouseTracking(true);
  setHorizontalScrollMode(ScrollPerPixel);
  setItemDelegate(new RowDelegate(this));
  empty_->hide();
  connect(&empty_->button(), &QPushButton::clicked, this, &RowTableView::emptyButtonClicked);
  connect(&empty_->helpButton(), &QPushButton::clicked, this, &RowTableView::emptyHelpClicked);
  makeHeads();
  // What is scrolled takes the ring along.
  connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this] {
    if (hasFocus()) viewport()->update();
  });
}

RowTableView::~RowTableView() = default;

void RowTableView::makeHeads() {
  auto* heads = new RowHeader(this);
  setHorizontalHeader(heads);
  new HeadCorner(*heads, *this);
  verticalHeader()->hide();
  verticalHeader()->setMinimumSectionSize(metrics::kRowHeight);
  fitRows();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  connect(heads, &QHeaderView::sectionClicked, this, &RowTableView::clickHead);
  connect(heads, &QHeaderView::sectionResized, this, [this](int section, int, int width) {
    if (model_ && widths_->keepDragged(section, width)) Q_EMIT widthChosen();
  });
  heads->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(heads, &QWidget::customContextMenuRequested, this,
          [this, heads](const QPoint& place) { askForColumns(heads->mapToGlobal(place)); });
}

void RowTableView::setTable(TableModel& table, TableSelection& selection) {
  model_ = &table;
  selection_ = &selection;
  setModel(model_);
  const std::unique_ptr<QItemSelectionModel> unused(selectionModel());  // Qt has made one for the model
  setSelectionModel(selection_);
  widths_->followTable();
  connectTable();
  showColumns();
  rowsChanged();
}

void RowTableView::connectTable() {
  connect(model_, &QAbstractItemModel::modelAboutToBeReset, this, [this] {
    scroll_ = verticalScrollBar()->value();
    keepTyping();
  });
  connect(model_, &QAbstractItemModel::modelReset, this, [this] {
    rowsChanged();
    verticalScrollBar()->setValue(scroll_);
    typeOn();
  });
  connect(model_, &QAbstractItemModel::rowsInserted, this, [this](const QModelIndex&, int first, int last) {
    if (model_->rowCount() == last - first + 1) rowsChanged();  // the first ones
  });
  connect(model_, &QAbstractItemModel::rowsRemoved, this, &RowTableView::placeEmptyState);
  connect(model_, &QAbstractItemModel::layoutChanged, horizontalHeader()->viewport(),
          qOverload<>(&QWidget::update));
  anchor_ = std::make_unique<ScrollAnchor>(*this);
  shownColumns_ = model_->shownColumnsChanges.observe([this] { showColumns(); });
  selectionChanges_ = selection_->changes.observe([this] {
    viewport()->update();  // the ring around all of it comes or goes
    Q_EMIT selectionChanged();
  });
}

/// Some widths are those of what the rows show.
void RowTableView::rowsChanged() {
  distributeWidths();
  placeEmptyState();
}

void RowTableView::dropTable() {
  if (!model_) return;
  if (QWidget* editor = indexWidget(currentIndex())) closeEditor(editor, QAbstractItemDelegate::NoHint);
  disconnect(model_, nullptr, this, nullptr);
  anchor_.reset();
  selectionChanges_ = {};
  shownColumns_ = {};
  model_ = nullptr;
  selection_ = nullptr;
  setModel(nullptr);
}

std::vector<int> RowTableView::selectedRows() const {
  return selection_ ? selection_->rows() : std::vector<int>();
}

void RowTableView::selectRow(int row) { selectRows({row}); }

void RowTableView::selectRows(const std::vector<int>& rows) {
  selection_->selectRows(rows);
  if (currentIndex().isValid()) scrollTo(currentIndex());
}

QString RowTableView::sortKey() const { return model_ ? model_->sortOrder().key : QString(); }

bool RowTableView::sortAscending() const { return !model_ || model_->sortOrder().ascending; }

void RowTableView::setSortOrder(const SortOrder& descriptor) {
  model_->sortBy(descriptor);
  horizontalHeader()->viewport()->update();
}

void RowTableView::clickHead(int section) {
  const ColumnHead& head = model_->head(section);
  if (head.sortable) {
    const bool again = sortKey() == head.identifier;
    setSortOrder({head.identifier, again ? !sortAscending() : true});
    Q_EMIT sortChanged();
  }
  Q_EMIT headClicked(head.identifier);
}

void RowTableView::editCell(const QString& identifier, int row) {
  const QModelIndex index = model_->index(row, model_->columnOf(identifier).value_or(-1));
  if (!index.isValid()) return;
  scrollTo(index);
  setCurrentIndex(index);
  edit(index);
}

void RowTableView::commitEditing() {
  QWidget* editor = state() == EditingState ? indexWidget(currentIndex()) : nullptr;
  if (!editor) return;
  commitData(editor);
  closeEditor(editor, QAbstractItemDelegate::NoHint);
}

void RowTableView::showSelectionOrTop() {
  if (selectedRow() < 0) return scrollToTop();
  scrollTo(model_->index(selectedRow(), 0));
}

void RowTableView::setEmptyState(const QString& sentence, const QString& buttonTitle,
                                 const QString& helpTitle) {
  empty_->say(sentence, buttonTitle, helpTitle);
  placeEmptyState();
}

void RowTableView::pressPlace(int row, int column) {
  if (row < 0) return clickHead(column);
  const QPersistentModelIndex index = model_->index(row, column);
  if (!selectionModel()->isRowSelected(row)) selectRow(row);
  pressCell(index);
}

void RowTableView::pressCell(const QModelIndex& index) {
  if (acts(index)) Q_EMIT cellPressed(index.row(), model_->head(index.column()).identifier);
}

// Columns.

/// The scroll bar stands in the margin of the last column, so that figures end where they end without it.
QRect RowTableView::contentRect(const QRect& cell, int column) const {
  const QHeaderView& heads = *horizontalHeader();
  int first = 0;
  int last = heads.count() - 1;
  while (first < last && isColumnHidden(heads.logicalIndex(first))) ++first;
  while (last > first && isColumnHidden(heads.logicalIndex(last))) --last;
  const int place = heads.visualIndex(column);
  const int margin = metrics::kSide - (width() - viewport()->width());
  const bool isStar = model_->head(column).kind == CellKind::Star;
  const int before = isStar ? grid::kBeforeStar : metrics::kCellPadding;
  const int left = place == first ? metrics::kSide : before;
  // Words begin where their column begins and may come near to the next; figures end in a line.
  const bool isWords = model_->head(column).alignment == Alignment::Left;
  const int between = isWords ? metrics::kCellPadding / 2 : metrics::kCellPadding;
  const int right = place == last ? std::max(margin, metrics::kGrid / 2) : between;
  return cell.adjusted(left, 0, -right, -1);
}

void RowTableView::standOnGrid() {
  widths_->standOnGrid();
  distributeWidths();
}

const QMap<QString, int>& RowTableView::chosenWidths() const { return widths_->byHand(); }

void RowTableView::chooseWidths(const QMap<QString, int>& widths) {
  widths_->setByHand(widths);
  distributeWidths();
}

void RowTableView::distributeWidths() {
  if (model_) widths_->distribute();
}

void RowTableView::showColumns() { widths_->showColumns(); }

void RowTableView::addColumnChoices(QMenu& menu) const {
  for (int column = 0; column < model_->columnCount(); ++column) {
    const ColumnHead& head = model_->head(column);
    if (!head.canHide) continue;
    QAction* choice = menu.addAction(head.title);
    choice->setCheckable(true);
    choice->setChecked(!model_->isHidden(head.identifier));
    connect(choice, &QAction::toggled, model_, [model = model_, identifier = head.identifier](bool shown) {
      model->setHidden(identifier, !shown);
    });
  }
}

void RowTableView::askForColumns(const QPoint& place) {
  QMenu menu(this);
  addColumnChoices(menu);
  if (!menu.isEmpty()) menu.exec(place);
}

void RowTableView::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  distributeWidths();
  placeEmptyState();
}

void RowTableView::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() != QEvent::FontChange) return;
  fitRows();
  distributeWidths();
}

void RowTableView::fitRows() {
  verticalHeader()->setDefaultSectionSize(std::max(metrics::kRowHeight, fontMetrics().height() + 10));
}

void RowTableView::placeEmptyState() {
  const bool shown = empty_->hasSomethingToSay() && model_ && model_->rowCount() == 0;
  empty_->setVisible(shown);
  if (!shown) return;
  empty_->adjustSize();
  QRect place = empty_->rect();
  place.moveCenter(viewport()->rect().center());
  empty_->setGeometry(place);
}

// Drawing and presses.

void RowTableView::redrawRect(int row) {
  const int height = rowHeight(row);
  viewport()->update(0, rowViewportPosition(row), viewport()->width(), height);
}

/// Where one row is selected at a time, Qt would select a neighbour of it when it goes, which nobody asked
/// for.
void RowTableView::rowsAboutToBeRemoved(const QModelIndex& parent, int first, int last) {
  const QModelIndex typed = typing_.editor ? typedIndex() : QModelIndex();
  if (typed.isValid() && typed.row() >= first && typed.row() <= last) letGo();
  const SelectionMode mode = selectionMode();
  setSelectionMode(ExtendedSelection);
  QTableView::rowsAboutToBeRemoved(parent, first, last);
  setSelectionMode(mode);
}

/// A changed row costs the painting of that row, not of the table.
void RowTableView::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                               const QList<int>&) {
  if (QAccessible::isActive()) {
    auto* seen = static_cast<TableAccessible*>(QAccessible::queryAccessibleInterface(this));
    seen->tellChanged(topLeft.row(), bottomRight.row());
  }
  tellTyping(topLeft.row(), bottomRight.row());
  const int rows = bottomRight.row() - topLeft.row() + 1;
  if (rows > viewport()->height() / metrics::kRowHeight) return viewport()->update();
  for (int row = topLeft.row(); row <= bottomRight.row(); ++row) redrawRect(row);
}

void RowTableView::setHovered(int row) {
  if (row == hovered_) return;
  for (const int changed : {hovered_, row}) {
    if (model_ && changed >= 0 && changed < model_->rowCount()) redrawRect(changed);
  }
  hovered_ = row;
}

void RowTableView::mousePressEvent(QMouseEvent* event) {
  if (!leaveCellFor(*event)) return;
  QTableView::mousePressEvent(event);
  const QModelIndex index = indexAt(event->pos());
  const bool plain = event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier;
  pressed_ = {};
  if (plain && acts(index)) pressed_ = {model_->identity(index.row()), index.column(), visualRect(index)};
  if (plain && !index.isValid()) clearSelection();
}

void RowTableView::mouseReleaseEvent(QMouseEvent* event) {
  QTableView::mouseReleaseEvent(event);
  const Pressed pressed = std::exchange(pressed_, {});
  if (!model_ || !pressed.cell.contains(event->pos())) return;
  // The row meant is the one that was pressed, also when storing what was typed has moved it meanwhile. Last:
  // whoever answers a press may open a sheet or close the window.
  if (const auto row = model_->rowWith(pressed.identity)) pressCell(model_->index(*row, pressed.column));
}

void RowTableView::mouseDoubleClickEvent(QMouseEvent* event) {
  const QModelIndex index = indexAt(event->pos());
  if (acts(index)) return mousePressEvent(event);
  QTableView::mouseDoubleClickEvent(event);
  if (event->button() != Qt::LeftButton || !index.isValid() || index.flags() & Qt::ItemIsEditable) return;
  if (!model_->whyNot(index).isEmpty()) return;
  Q_EMIT rowActivated(index.row());
}

void RowTableView::mouseMoveEvent(QMouseEvent* event) {
  QTableView::mouseMoveEvent(event);
  const QModelIndex index = indexAt(event->pos());
  if (delegateOf(*this).hovered() == index) return;
  delegateOf(*this).setHovered(index);
  if (index.row() == hovered_ && hovered_ >= 0) redrawRect(hovered_);
  setHovered(index.row());
  viewport()->setCursor(acts(index) ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

/// The cell that a key presses; none where it presses none.
QModelIndex RowTableView::pressedBy(const QKeyEvent& event) const {
  const QModelIndex index = currentIndex();
  if (!index.isValid() || event.modifiers() & ~Qt::KeypadModifier) return {};
  if (event.key() == Qt::Key_Space) {
    if (spaceColumn_.isEmpty()) return acts(index) ? index : QModelIndex();
    return selectionModel()->isRowSelected(index.row())
               ? index.siblingAtColumn(model_->columnOf(spaceColumn_).value_or(index.column()))
               : QModelIndex();
  }
  const bool isReturn = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
  const CellKind kind = RowDelegate::kindOf(index);
  return isReturn && (kind == CellKind::Link || kind == CellKind::Star) ? index : QModelIndex();
}

void RowTableView::keyPressEvent(QKeyEvent* event) {
  const QModelIndex index = currentIndex();
  if (const QModelIndex pressed = pressedBy(*event); pressed.isValid()) return pressCell(pressed);
  if (event->key() == Qt::Key_F2 && editFirstCell()) return;
  if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) return askForMenu();
  const bool isSpace = event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier;
  if (isSpace && index.isValid() && selectionModel()->isRowSelected(index.row())) {
    Q_EMIT spacePressed();
    return;
  }
  const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  // The table comes with a current row that is not selected; the first key takes that one, not its neighbour.
  const bool takesRow = isReturn || event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
  const bool toAnEnd = event->key() == Qt::Key_Home || event->key() == Qt::Key_End;
  if ((takesRow || toAnEnd) && model_ && model_->rowCount() > 0 && !selectionModel()->hasSelection()) {
    const int end = event->key() == Qt::Key_Home ? 0 : model_->rowCount() - 1;
    return selectRow(toAnEnd ? end : std::max(0, index.row()));
  }
  if (isReturn && index.isValid() && state() != EditingState) {
    Q_EMIT rowActivated(index.row());
    return;
  }
  // A selection grows from the row that is selected, also where it was not a key or a press that selected it.
  const bool grows = event->modifiers().testFlag(Qt::ShiftModifier) && index.isValid();
  if (grows && selectedRows() == std::vector<int>{index.row()}) setCurrentIndex(index);
  QTableView::keyPressEvent(event);
}

void RowTableView::keyboardSearch(const QString& letters) {
  if (reportsTyping_) {
    Q_EMIT lettersTyped(letters);
  } else {
    lookForLetters(letters);
  }
}

/// Home and End lead to the first and the last row: to a row it makes no difference in which column one is.
QModelIndex RowTableView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
  const bool toAnEnd = action == MoveHome || action == MoveEnd;
  return QTableView::moveCursor(action, toAnEnd ? modifiers | Qt::ControlModifier : modifiers);
}

/// The letters that are typed look for what people see first in a row, in whichever cell they are.
void RowTableView::lookForLetters(const QString& letters) {
  const int rows = model_ ? model_->rowCount() : 0;
  const QModelIndex current = currentIndex();
  for (int column = 0; rows > 0 && column < model_->columnCount(); ++column) {
    if (isColumnHidden(column) || model_->head(column).kind != CellKind::Text) continue;
    selectionModel()->setCurrentIndex(model_->index(std::max(0, current.row()), column),
                                      QItemSelectionModel::NoUpdate);
    break;
  }
  QTableView::keyboardSearch(letters);
}

void RowTableView::focusInEvent(QFocusEvent* event) {
  QTableView::focusInEvent(event);
  viewport()->update();
}

void RowTableView::focusOutEvent(QFocusEvent* event) {
  QTableView::focusOutEvent(event);
  viewport()->update();
}

/// Where no row shows that the keyboard is here, the table does.
void RowTableView::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (!hasFocus() || !selectionModel() || selectionModel()->hasSelection()) return;
  QPainter painter(viewport());
  painter.setPen(QPen(Theme::colours(palette()).link, 2));
  painter.drawRect(viewport()->rect().adjusted(1, 1, -1, -1));
}

bool RowTableView::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Leave && model_) {
    delegateOf(*this).setHovered({});
    setHovered(-1);
  }
  if (event->type() == QEvent::ToolTip) {
    const auto* help = static_cast<QHelpEvent*>(event);
    const QModelIndex index = indexAt(help->pos());
    QToolTip::showText(help->globalPos(), toolTipFor(index), this);
    return true;
  }
  return QTableView::viewportEvent(event);
}

/// Why a cell is marked, or its words when they do not fit; empty when there is nothing to say.
QString RowTableView::toolTipFor(const QModelIndex& index) const {
  if (!index.isValid()) return {};
  const QString warning = index.data(TableModel::kWarningRole).toString();
  if (!warning.isEmpty()) return QStringLiteral("<span>%1</span>").arg(warning.toHtmlEscaped());
  const QString text = beginningOf(index.data().toString());
  const QRect content = contentRect(visualRect(index), index.column());
  if (fontMetrics().horizontalAdvance(text.simplified()) <= content.width()) return {};
  return QStringLiteral("<span>%1</span>").arg(text.toHtmlEscaped());
}

}  // namespace pendra
