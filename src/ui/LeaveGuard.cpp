#include "ui/LeaveGuard.h"

#include <QComboBox>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPointer>
#include <QScopedValueRollback>
#include <utility>

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

void LeaveGuard::watch(QWidget& field, const Rule& rule) {
  rules_.insert(&field, rule);
  fields_.push_back(&field);
  field.installEventFilter(this);
}

bool LeaveGuard::mayFinish() {
  if (asking_) return false;
  for (QWidget* field : fields_) {
    const auto& isTyped = rules_[field].isTyped;
    if (!isTyped || !isTyped() || ask(*field)) continue;
    takeBack(*field);
    return false;
  }
  return true;
}

bool LeaveGuard::eventFilter(QObject* watched, QEvent* event) {
  auto& field = static_cast<QWidget&>(*watched);
  if (movesFocus(*event)) {
    // Asked before the focus moves: the answer may enable the very field that comes next, and what is typed
    // next never lands in the wrong one.
    if (asking_ || !ask(field)) return true;
    answered_ = &field;
  } else if (event->type() == QEvent::FocusOut && leavesForAnotherField(static_cast<QFocusEvent&>(*event))) {
    if (std::exchange(answered_, nullptr) != &field && !asking_) askAfterwards(field);
  } else if (event->type() == QEvent::FocusIn) {
    answered_ = nullptr;
  }
  return false;
}

bool LeaveGuard::ask(QWidget& field) {
  const QScopedValueRollback asking(asking_, true);
  return rules_[&field].mayLeave();
}

/// The focus is gone already; the question waits until the click that took it has been dealt with.
void LeaveGuard::askAfterwards(QWidget& field) {
  const auto question = [this, left = QPointer<QWidget>(&field)] {
    if (!left || !left->isVisible() || !left->isEnabled() || left->hasFocus()) return;
    if (!window_.isVisible() || asking_ || ask(*left)) return;
    takeBack(*left);
  };
  QMetaObject::invokeMethod(this, question, Qt::QueuedConnection);
}

void LeaveGuard::takeBack(QWidget& field) {
  field.setFocus(Qt::OtherFocusReason);
  if (auto* box = qobject_cast<QComboBox*>(&field)) box->lineEdit()->selectAll();
}

}  // namespace pendra
