#include "NameEdit.h"

#include <QKeyEvent>

#include "ui/NameComboBox.h"

namespace pendra {

namespace {

/// Whether the focus goes to another field, and not to a list, a menu or another window.
bool endsEditing(Qt::FocusReason reason) {
  return reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason &&
         reason != Qt::MenuBarFocusReason;
}

}  // namespace

NameEdit::NameEdit(NameComboBox& box) : QLineEdit(&box), box_(box) {}

void NameEdit::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if ((key == Qt::Key_Return || key == Qt::Key_Enter) && !box_.mayLeave()) return event->accept();
  if (key == Qt::Key_Backspace && text().size() == 1) box_.closeList();
  box_.deleting_ = key == Qt::Key_Backspace || key == Qt::Key_Delete;
  QLineEdit::keyPressEvent(event);
}

void NameEdit::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  if (box_.lettingGo_ || !endsEditing(event->reason()) || !isVisible() || !isEnabled()) return;
  // The focus has gone already; asking may open an alert, so it waits until the event is through.
  QMetaObject::invokeMethod(
      &box_, [this] { box_.leave(); }, Qt::QueuedConnection);
}

}  // namespace pendra
