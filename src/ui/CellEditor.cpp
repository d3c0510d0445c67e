#include "CellEditor.h"

#include <QKeyEvent>
#include <QScopedValueRollback>

#include "CellEcho.h"
#include "ui/Buttons.h"
#include "ui/EchoLine.h"

namespace pendra {

CellEditor::CellEditor(QWidget* parent, Read read)
    : QLineEdit(parent),
      read_(std::move(read)),
      guard_(new LeaveGuard(*this)),
      echo_(std::make_unique<CellEcho>(*this)) {
  setObjectName(QStringLiteral("cellEditor"));
  setFrame(true);
  guard_->watch(*this, {.mayLeave = [this] { return leave(); }, .isTyped = [this] { return isTyped(); }});
  connect(this, &QLineEdit::textChanged, this, &CellEditor::readAgain);
}

CellEditor::~CellEditor() = default;

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

/// Tab has been asked about by the guard, which has stored the text.
bool CellEditor::event(QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Tab || key == Qt::Key_Backtab) {
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
      std::ignore = guard_->mayFinish();
      if (!isTyped() && !settled_) Q_EMIT storeAsked();
      return;
    case Qt::Key_Escape:
      Q_EMIT abandoned();
      return;
    case Qt::Key_Up:
    case Qt::Key_Down:
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
