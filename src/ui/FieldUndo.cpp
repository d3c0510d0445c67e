#include "ui/FieldUndo.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace pendra {

namespace {

/// Calls `line` or `text` with the field that has the focus; false when that is no field.
template <class OfLine, class OfText>
bool inField(const OfLine& ofLine, const OfText& ofText) {
  QWidget* focus = QApplication::focusWidget();
  if (auto* box = qobject_cast<QComboBox*>(focus); box && box->isEditable()) focus = box->lineEdit();
  if (auto* line = qobject_cast<QLineEdit*>(focus)) return ofLine(*line);
  if (auto* text = qobject_cast<QTextEdit*>(focus)) return ofText(*text);
  if (auto* text = qobject_cast<QPlainTextEdit*>(focus)) return ofText(*text);
  return false;
}

}  // namespace

bool canUndoInField(UndoWay way) {
  const bool undoes = way == UndoWay::Undo;
  return inField(
      [undoes](const QLineEdit& line) { return undoes ? line.isUndoAvailable() : line.isRedoAvailable(); },
      [undoes](const auto& text) {
        return undoes ? text.document()->isUndoAvailable() : text.document()->isRedoAvailable();
      });
}

void undoInField(UndoWay way) {
  const auto undo = [way](auto& field) {
    way == UndoWay::Undo ? field.undo() : field.redo();
    return true;
  };
  inField(undo, undo);
}

bool belongsToMenu(const QEvent& event) {
  if (event.type() != QEvent::ShortcutOverride) return false;
  const auto& key = static_cast<const QKeyEvent&>(event);
  if (key.matches(QKeySequence::Undo)) return !canUndoInField(UndoWay::Undo);
  if (key.matches(QKeySequence::Redo)) return !canUndoInField(UndoWay::Redo);
  return false;
}

}  // namespace pendra
