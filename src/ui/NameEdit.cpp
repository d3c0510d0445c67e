#include "NameEdit.h"

#include <QKeyEvent>

#include "ui/NameComboBox.h"

namespace pendra {

namespace {

bool isTab(const QEvent& event) {
  if (event.type() != QEvent::KeyPress) return false;
  const int key = static_cast<const QKeyEvent&>(event).key();
  return key == Qt::Key_Tab || key == Qt::Key_Backtab;
}

/// Whether the focus goes to another field, and not to a list, a menu or another window.
bool endsEditing(Qt::FocusReason reason) {
  return reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason &&
         reason != Qt::MenuBarFocusReason;
}

}  // namespace

NameEdit::NameEdit(NameComboBox& box) : QLineEdit(&box), box_(box) {}

bool NameEdit::event(QEvent* event) {
  if (!isTab(*event)) return QLineEdit::event(event);
  box_.closeList();
  if (!box_.mayLeave()) return true;
  letGo_ = true;
  const bool done = QLineEdit::event(event);
  letGo_ = false;
  return done;
}

void NameEdit::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if ((key == Qt::Key_Return || key == Qt::Key_Enter) && !box_.mayLeave()) return event->accept();
  if (key == Qt::Key_Backspace && text().size() == 1) box_.closeList();
  box_.deleting_ = key == Qt::Key_Backspace || key == Qt::Key_Delete;
  QLineEdit::keyPressEvent(event);
}

void NameEdit::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  if (letGo_ || !endsEditing(event->reason()) || !isVisible() || !isEnabled()) return;
  // The focus has gone already; asking may open an alert, so it waits until the event is through.
  QMetaObject::invokeMethod(
      &box_, [this] { box_.leave(); }, Qt::QueuedConnection);
}

}  // namespace pendra
