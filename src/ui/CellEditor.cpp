#include "CellEditor.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <utility>

#include "CellCompletions.h"
#include "CellEcho.h"
#include "ui/Buttons.h"
#include "ui/EchoLine.h"

namespace pendra {

CellEditor::CellEditor(QWidget* parent, Read read)
    : QLineEdit(parent),
      read_(std::move(read)),
      guard_(new LeaveGuard(*this)),
      echo_(std::make_unique<CellEcho>(*this)),
      completions_(new CellCompletions(*this)) {
  setObjectName(QStringLiteral("cellEditor"));
  setFrame(true);
  guard_->watch(*this, {.mayLeave = [this] { return leave(); }, .isTyped = [this] { return isTyped(); }});
  connect(this, &QLineEdit::textEdited, this, [this] { isTyping_ = true; });
  connect(this, &QLineEdit::textChanged, this, &CellEditor::textHasChanged);
  connect(completions_, &CellCompletions::openChanged, this,
          [this](bool isOpen) { echo_->giveWay(isOpen && !settled_); });
}

CellEditor::~CellEditor() { delete completions_; }  // before what it tells when it closes

void CellEditor::begin(const QString& text) { goOn(text, text); }

void CellEditor::goOn(const QString& before, const QString& typed) {
  before_ = before;
  setText(typed);
  readAgain();
}

bool CellEditor::leave() {
  if (settled_) return true;
  readAgain();
  if (isRefused()) return false;
  Q_EMIT storeAsked();
  return true;
}

void CellEditor::textHasChanged() {
  readAgain();
  if (std::exchange(isTyping_, false))
    completions_->offer(text().isEmpty() ? QStringList() : reading_.completions);
}

void CellEditor::readAgain() {
  if (settled_ || isReading_) return;
  const QScopedValueRollback once(isReading_, true);
  reading_ = read_(text());
  const bool refused = isRefused();
  if (property(kUnreadableProperty).toBool() != refused) {
    setProperty(kUnreadableProperty, refused);
    update();
  }
  QStringList lines;
  for (const Echo& echo : reading_.echoes) lines << echo.text;
  setAccessibleDescription(lines.join(QStringLiteral(". ")));
  echo_->show(reading_.echoes);
  Q_EMIT followed(reading_.follows.value_or(CellReading::Following{}));
}

/// Tab has been asked about by the guard, which has stored the text; but the open list hands it to this field
/// alone.
bool CellEditor::event(QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Tab || key == Qt::Key_Backtab) {
      if (completions_->isOpen()) {
        completions_->close();
        return QCoreApplication::sendEvent(this, event);
      }
      Q_EMIT wentOn(key == Qt::Key_Tab);
      return true;
    }
  }
  return QLineEdit::event(event);
}

void CellEditor::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      completions_->close();
      std::ignore = guard_->mayFinish();
      if (!isTyped() && !settled_) Q_EMIT storeAsked();
      return;
    case Qt::Key_Escape:
      if (!completions_->takeBack()) Q_EMIT abandoned();
      return;
    case Qt::Key_Down:
      return completions_->offer(reading_.completions);
    case Qt::Key_Up:
      return;  // not the table's: the row stays
    default:
      QLineEdit::keyPressEvent(event);
  }
}

void CellEditor::moveEvent(QMoveEvent* event) {
  QLineEdit::moveEvent(event);
  echo_->place();
}

void CellEditor::resizeEvent(QResizeEvent* event) {
  QLineEdit::resizeEvent(event);
  echo_->place();
}

}  // namespace pendra
