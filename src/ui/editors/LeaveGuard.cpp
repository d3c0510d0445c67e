#include "LeaveGuard.h"

#include <QFocusEvent>
#include <QPointer>
#include <QScopedValueRollback>
#include <QWidget>

namespace pendra {

namespace {

bool leavesForAnotherField(const QFocusEvent& event) {
  switch (event.reason()) {
    case Qt::PopupFocusReason:
    case Qt::ActiveWindowFocusReason:
    case Qt::MenuBarFocusReason:
      return false;
    default:
      return true;
  }
}

bool movesFocus(const QEvent& event) {
  if (event.type() != QEvent::KeyPress) return false;
  const int key = static_cast<const QKeyEvent&>(event).key();
  return key == Qt::Key_Tab || key == Qt::Key_Backtab;
}

}  // namespace

LeaveGuard::LeaveGuard(QWidget& window) : QObject(&window), window_(window) {}

void LeaveGuard::watch(QWidget& field, const std::function<bool()>& mayLeave) {
  questions_.insert(&field, mayLeave);
  field.installEventFilter(this);
}

bool LeaveGuard::eventFilter(QObject* watched, QEvent* event) {
  auto* field = static_cast<QWidget*>(watched);
  if (asking_) return false;
  if (movesFocus(*event)) {
    // Asked before the focus moves, so that what is typed next never lands in the wrong field.
    if (!ask(field)) return true;
    answered_ = field;
  } else if (event->type() == QEvent::FocusOut && leavesForAnotherField(static_cast<QFocusEvent&>(*event))) {
    if (std::exchange(answered_, nullptr) != field) askAfterwards(field);
  } else if (event->type() == QEvent::FocusIn) {
    answered_ = nullptr;
  }
  return false;
}

bool LeaveGuard::ask(QWidget* field) {
  const QScopedValueRollback asking(asking_, true);
  return questions_.value(field)();
}

/// The focus is gone already; the question waits until the click that took it has been dealt with.
void LeaveGuard::askAfterwards(QWidget* field) {
  const auto question = [this, field = QPointer<QWidget>(field)] {
    if (!field || !window_.isVisible() || asking_ || field->hasFocus() || ask(field)) return;
    const QScopedValueRollback asking(asking_, true);
    field->setFocus(Qt::OtherFocusReason);
  };
  QMetaObject::invokeMethod(this, question, Qt::QueuedConnection);
}

}  // namespace pendra
