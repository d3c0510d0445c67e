#include "ShownText.h"

#include <QPainter>
#include <QStyle>

namespace pendra {

ShownText::ShownText(const QString& objectName, const QString& accessibleName, const QFont& font) {
  setObjectName(objectName);
  setAccessibleName(accessibleName);
  setFont(font);
  setTextFormat(Qt::PlainText);
}

QSize ShownText::minimumSizeHint() const { return {0, QLabel::minimumSizeHint().height()}; }

void ShownText::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRect room = contentsRect();
  style()->drawItemText(&painter, room, static_cast<int>(alignment()), palette(), isEnabled(),
                        fontMetrics().elidedText(text(), Qt::ElideRight, room.width()), foregroundRole());
}

}  // namespace pendra
