#include "QuickEntryField.h"

#include <QKeyEvent>
#include <QPainter>

#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kSign = 10;
constexpr int kSignAt = 16;  // the middle of the sign
constexpr int kWordsAt = 24;
constexpr int kHintMargin = 10;

}  // namespace

QuickEntryField::QuickEntryField(const QString& keyHint, QWidget* parent)
    : QLineEdit(parent), keyHint_(keyHint) {
  setFont(Theme::controlFont());
  setFixedHeight(metrics::kButtonHeight);
  setTextMargins(kWordsAt, 0, 0, 0);
}

/// Before the focus moves on.
bool QuickEntryField::event(QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const auto& key = static_cast<const QKeyEvent&>(*event);
    bool taken = false;
    if (key.key() == Qt::Key_Tab && key.modifiers() == Qt::NoModifier) Q_EMIT tabbed(taken);
    if (taken) return true;
  }
  return QLineEdit::event(event);
}

void QuickEntryField::keyPressEvent(QKeyEvent* event) {
  bool closed = false;
  switch (event->key()) {
    case Qt::Key_Down:
      return Q_EMIT moved(1);
    case Qt::Key_Up:
      return Q_EMIT moved(-1);
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return Q_EMIT entered();
    case Qt::Key_Escape:
      Q_EMIT escaped(closed);
      if (closed) return;
      return event->ignore();
    default:
      return QLineEdit::keyPressEvent(event);
  }
}

void QuickEntryField::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  Q_EMIT focusChanged(true);
}

/// The field's own menu takes the focus for a moment.
void QuickEntryField::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  if (event->reason() != Qt::PopupFocusReason) Q_EMIT focusChanged(false);
}

void QuickEntryField::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  const Colours& colours = Theme::colours(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(colours.quiet, 1.5, Qt::SolidLine, Qt::RoundCap));
  const QPointF centre(kSignAt, height() / 2.0);
  painter.drawLine(centre - QPointF(kSign / 2.0, 0), centre + QPointF(kSign / 2.0, 0));
  painter.drawLine(centre - QPointF(0, kSign / 2.0), centre + QPointF(0, kSign / 2.0));
  if (!text().isEmpty()) return;
  painter.setFont(Theme::quietFont());
  painter.setPen(colours.quiet);
  painter.drawText(rect().adjusted(0, 0, -kHintMargin, 0), Qt::AlignRight | Qt::AlignVCenter, keyHint_);
}

}  // namespace pendra
