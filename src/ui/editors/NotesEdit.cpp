#include "ui/NotesEdit.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QScopedValueRollback>
#include <cmath>

#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kLines = 3;

}  // namespace

NotesEdit::NotesEdit(QWidget* parent) : QPlainTextEdit(parent) {
  setTabChangesFocus(true);
  setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  connect(this, &QPlainTextEdit::textChanged, this, [this] {
    if (!setting_) Q_EMIT noteEdited();
  });
}

QString NotesEdit::note() const {
  if (!document()->isModified()) return set_;
  // The raw text keeps hard blanks, which the plain text does not.
  return document()
      ->toRawText()
      .replace(QChar::ParagraphSeparator, u'\n')
      .replace(QChar::LineSeparator, u'\n');
}

void NotesEdit::setNote(const QString& note) {
  const QScopedValueRollback setting(setting_, true);
  set_ = note;
  setPlainText(note);
  moveCursor(QTextCursor::End);
  document()->setModified(false);
}

QSize NotesEdit::sizeHint() const {
  const int edges = 2 * frameWidth() + static_cast<int>(std::ceil(2 * document()->documentMargin()));
  return {40 * fontMetrics().averageCharWidth(), kLines * fontMetrics().lineSpacing() + edges};
}

void NotesEdit::keyPressEvent(QKeyEvent* event) {
  const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (isReturn && !(event->modifiers() & (Qt::ShiftModifier | Qt::AltModifier))) {
    Q_EMIT returnPressed();
    return;
  }
  QPlainTextEdit::keyPressEvent(event);
}

/// What is pasted or dropped without words brings nothing; Qt's own field would end the program over it.
void NotesEdit::insertFromMimeData(const QMimeData* source) {
  if (source && !source->text().isEmpty()) QPlainTextEdit::insertFromMimeData(source);
}

NotesLengthLabel::NotesLengthLabel(QWidget* parent) : QLabel(parent) {
  setAccessibleName(tr("Notes length"));
  setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  setToolTip(tr("Vantor takes 99 characters; longer notes are kept whole in Pendra."));
}

void NotesLengthLabel::showLength(const QString& text, bool tooLong) {
  count_ = text;
  tooLong_ = tooLong;
  setText(text);
  setAccessibleDescription(text);
  paintCount();
}

void NotesLengthLabel::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) paintCount();
}

void NotesLengthLabel::paintCount() {
  const Colours& colours = Theme::colours(parentWidget()->palette());
  QPalette own = palette();
  const QColor colour = tooLong_ ? colours.warning : colours.text;
  if (own.color(QPalette::WindowText) == colour) return;
  own.setColor(QPalette::WindowText, colour);
  setPalette(own);
}

}  // namespace pendra
