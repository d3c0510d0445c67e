// How a cell that says what is typed into it is opened, left and kept.

#include <QHeaderView>
#include <QMouseEvent>
#include <utility>

#include "CellEditor.h"
#include "ui/RowTableView.h"

namespace pendra {

bool RowTableView::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
  const bool isAsked = trigger == DoubleClicked || trigger == EditKeyPressed || trigger == AllEditTriggers;
  if (const QString why = isAsked && model_ ? model_->whyNot(index) : QString(); !why.isEmpty()) {
    Q_EMIT editRefused(why);
    return false;
  }
  const bool opened = QTableView::edit(index, trigger, event);
  auto* editor = qobject_cast<CellEditor*>(indexWidget(index));
  if (editor && editor != typing_.editor) takeUp(*editor, index);
  return opened;
}

void RowTableView::takeUp(CellEditor& editor, const QModelIndex& index) {
  typing_ = {&editor, model_->identity(index.row()), model_->head(index.column()).identifier};
  connect(&editor, &CellEditor::storeAsked, this, &RowTableView::storeCell);
  connect(&editor, &CellEditor::abandoned, this, &RowTableView::closeCell);
  connect(&editor, &CellEditor::wentOn, this, &RowTableView::editNextCell);
  connect(&editor, &CellEditor::followed, this, [this](const CellReading::Following& follows) {
    model_->setFollowing({typing_.identity, follows.column, follows.text});
  });
}

QModelIndex RowTableView::typedIndex() const {
  const auto row = model_ ? model_->rowWith(typing_.identity) : std::nullopt;
  return row ? model_->index(*row, model_->columnOf(typing_.column).value_or(-1)) : QModelIndex();
}

/// Closed first: what is stored may move the row, or list others.
void RowTableView::storeCell() {
  if (!typing_.editor) return;
  const bool isTyped = typing_.editor->isTyped();
  const QString text = typing_.editor->text();
  closeCell();
  if (const QModelIndex index = typedIndex(); isTyped && index.isValid())
    model_->setData(index, text, Qt::EditRole);
}

void RowTableView::closeCell() {
  CellEditor* editor = typing_.editor;
  if (!editor) return;
  editor->settle();
  closeEditor(editor, QAbstractItemDelegate::NoHint);
}

bool RowTableView::finishEditing() {
  if (!typing_.editor) {
    commitEditing();
    return true;
  }
  if (!typing_.editor->guard().mayFinish()) return false;
  closeCell();  // unless it was stored
  return true;
}

/// The current cell becomes another one without anybody leaving the field: what can be stored is.
void RowTableView::commitData(QWidget* editor) {
  if (editor != typing_.editor || !editor) return QTableView::commitData(editor);
  if (!typing_.editor->isTyped() || typing_.editor->isRefused()) return;
  typing_.editor->settle();
  if (const QModelIndex index = typedIndex(); index.isValid()) {
    model_->setData(index, typing_.editor->text(), Qt::EditRole);
  }
}

void RowTableView::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
  if (editor && editor == typing_.editor) letGo();
  QTableView::closeEditor(editor, hint);
}

/// The keyboard is in the table as long as it is in a cell of it.
void RowTableView::initViewItemOption(QStyleOptionViewItem* option) const {
  QTableView::initViewItemOption(option);
  if (typing_.editor && isActiveWindow()) option->state |= QStyle::State_Active;
}

/// Nothing that was typed is lost in silence.
void RowTableView::letGo() {
  CellEditor* editor = std::exchange(typing_.editor, nullptr);
  if (model_) model_->setFollowing({});
  if (!editor || !editor->isTyped()) return;
  editor->settle();
  Q_EMIT typingLost(editor->text());
}

/// Before a reset, which closes every editor.
void RowTableView::keepTyping() {
  typing_.kept.reset();
  if (!typing_.editor) return;
  typing_.kept = {typing_.editor->before(), typing_.editor->text(), typing_.editor->isTyped()};
  typing_.editor->settle();
  typing_.editor = nullptr;
}

void RowTableView::typeOn() {
  const auto kept = std::exchange(typing_.kept, std::nullopt);
  if (!kept) return;
  const QModelIndex index = typedIndex();
  if (index.isValid() && index.flags() & Qt::ItemIsEditable) edit(index);
  if (typing_.editor) return typing_.editor->goOn(kept->before, kept->typed);
  model_->setFollowing({});
  if (kept->isTyped) Q_EMIT typingLost(kept->typed);
}

/// Time goes on, and the entry may be another by now.
void RowTableView::tellTyping(int firstChanged, int lastChanged) {
  if (!typing_.editor) return;
  const int row = typedIndex().row();
  if (row >= firstChanged && row <= lastChanged) typing_.editor->readAgain();
}

void RowTableView::editNextCell(bool forward) {
  const QModelIndex from = typedIndex();
  if (!from.isValid() || typing_.editor) return;
  const QHeaderView& heads = *horizontalHeader();
  const int step = forward ? 1 : -1;
  for (int place = heads.visualIndex(from.column()) + step; place >= 0 && place < heads.count();
       place += step) {
    const QModelIndex next = from.siblingAtColumn(heads.logicalIndex(place));
    if (isColumnHidden(next.column()) || !(next.flags() & Qt::ItemIsEditable)) continue;
    setCurrentIndex(next);
    edit(next);
    return;
  }
}

/// Whether a press goes on to be one: a text that cannot be stored holds the keyboard, and the row that was
/// meant may stand elsewhere by now.
bool RowTableView::leaveCellFor(const QMouseEvent& event) {
  if (!typing_.editor || !model_) return true;
  const QModelIndex pressed = indexAt(event.pos());
  const quint64 meant = pressed.isValid() ? model_->identity(pressed.row()) : 0;
  if (!finishEditing()) return false;
  const QModelIndex now = indexAt(event.pos());
  if (meant == 0 || (now.isValid() && model_->identity(now.row()) == meant)) return true;
  if (const auto row = model_->rowWith(meant)) selectRow(*row);
  return false;
}

/// F2 where nothing can be typed opens the first cell of the row where something can.
bool RowTableView::editFirstCell() {
  if (!model_ || !model_->readsTyping() || !currentIndex().isValid()) return false;
  if (currentIndex().flags() & Qt::ItemIsEditable || !model_->whyNot(currentIndex()).isEmpty()) return false;
  typing_.identity = model_->identity(currentIndex().row());
  typing_.column = model_->head(horizontalHeader()->logicalIndex(0)).identifier;
  editNextCell(true);
  return true;
}

}  // namespace pendra
