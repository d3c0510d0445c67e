#include "ui/NameComboBox.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QStandardItemModel>
#include <QStringListModel>
#include <QWheelEvent>

#include "NameEdit.h"
#include "ui_core/ListSteps.h"

namespace pendra {

namespace {
constexpr int kVisibleItems = 12;
}

NameComboBox::NameComboBox(QWidget* parent)
    : QComboBox(parent),
      edit_(new NameEdit(*this)),
      list_(new QCompleter(this)),
      listItems_(new QStringListModel(this)) {
  setEditable(true);
  setLineEdit(edit_);
  setInsertPolicy(NoInsert);
  setCompleter(nullptr);
  setMaxVisibleItems(kVisibleItems);
  setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
  list_->setModel(listItems_);
  list_->setWidget(edit_);
  list_->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
  list_->setCaseSensitivity(Qt::CaseInsensitive);
  list_->setMaxVisibleItems(kVisibleItems);
  connect(edit_, &QLineEdit::textEdited, this, &NameComboBox::typed);
  connect(this, &QComboBox::activated, this, &NameComboBox::pick);
  connect(list_, qOverload<const QString&>(&QCompleter::activated), this, [this](const QString& name) {
    edit_->setText(name);
    pick();
  });
}

void NameComboBox::setRules(Rules rules) {
  rules_ = std::move(rules);
  edit_->setAccessibleName(accessibleName());  // it has the focus, so it is what is read
  reloadItems();
}

void NameComboBox::setText(const QString& text) {
  const QSignalBlocker silent(this);
  const QSignalBlocker silentEdit(edit_);
  setEditText(text);
  edit_->setCursorPosition(0);  // a long name shows its beginning
  settledText_ = text;
}

/// Fills the list with the names of now and points at the one that the text equals, if any.
void NameComboBox::reloadItems() {
  const QSignalBlocker silent(this);
  const QSignalBlocker silentEdit(edit_);
  const QString text = this->text();
  const QStringList names = rules_.names ? rules_.names() : QStringList();
  clear();
  addItems(names);
  listItems_->setStringList(names);
  const qint64 index = indexOfName(names, text);
  setCurrentIndex(index == kNotFound ? -1 : static_cast<int>(index));
  setEditText(text);
}

void NameComboBox::showPopup() {
  reloadItems();
  if (count() == 0) sayThatItIsEmpty();
  if (count() > 0) QComboBox::showPopup();
}

void NameComboBox::sayThatItIsEmpty() {
  if (rules_.whenEmpty.isEmpty()) return;
  const QSignalBlocker silent(this);
  const QSignalBlocker silentEdit(edit_);
  const QString text = this->text();
  auto* words = new QStandardItem(rules_.whenEmpty);
  words->setFlags(Qt::NoItemFlags);
  static_cast<QStandardItemModel*>(model())->appendRow(words);
  setCurrentIndex(-1);
  setEditText(text);
}

void NameComboBox::typed(const QString& text) {
  if (!deleting_ && edit_->cursorPosition() == text.size()) complete(text);
  deleting_ = false;
  Q_EMIT textEdited(this->text());
}

/// Puts the rest of the first fitting name behind what was typed, selected, so that typing goes over it.
void NameComboBox::complete(const QString& typedText) {
  if (typedText.isEmpty()) return;
  const QStringList names = rules_.names ? rules_.names() : QStringList();
  const QString whole = completedName(names, typedText);
  if (rules_.opensListWhileTyping) openList(typedText);
  if (whole.size() <= typedText.size()) return;
  edit_->setText(whole);
  edit_->setSelection(static_cast<int>(whole.size()), static_cast<int>(typedText.size() - whole.size()));
}

void NameComboBox::openList(const QString& typedText) {
  reloadItems();
  if (listItems_->rowCount() == 0) return;
  list_->setCompletionPrefix(typedText);
  list_->complete(rect().translated(-edit_->pos()));
  QAbstractItemView& view = *list_->popup();
  if (view.currentIndex().isValid()) {
    view.selectionModel()->select(view.currentIndex(), QItemSelectionModel::ClearAndSelect);
  }
}

void NameComboBox::closeList() {
  if (list_->popup()->isVisible()) list_->popup()->hide();
  hidePopup();
}

/// The field itself reports a name once more when it is left; that is no second pick.
void NameComboBox::pick() {
  if (text() == settledText_) return;
  settledText_ = text();
  Q_EMIT textEdited(settledText_);
  Q_EMIT picked();
}

void NameComboBox::accept() {
  closeList();
  if (!isTyped()) return;
  settledText_ = text();
  Q_EMIT picked();
}

void NameComboBox::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down) reloadItems();  // through the names of now
  QComboBox::keyPressEvent(event);
}

/// Turning the wheel over a sheet must not change whom the time is billed to.
void NameComboBox::wheelEvent(QWheelEvent* event) { event->ignore(); }

}  // namespace pendra
