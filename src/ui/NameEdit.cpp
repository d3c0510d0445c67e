#include "NameEdit.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include "ui/NameComboBox.h"

namespace pendra {

NameEdit::NameEdit(NameComboBox& box) : QLineEdit(&box), box_(box) {}

void NameEdit::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  if (key == Qt::Key_Backspace && text().size() == 1) box_.closeList();
  box_.deleting_ = key == Qt::Key_Backspace || key == Qt::Key_Delete;
  QLineEdit::keyPressEvent(event);
}

/// The open list passes Tab on to this text alone; to the field it is a key like any other.
bool NameEdit::event(QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Tab || key == Qt::Key_Backtab) {
      box_.closeList();
      return QCoreApplication::sendEvent(&box_, event);
    }
  }
  return QLineEdit::event(event);
}

}  // namespace pendra
