#include "ui/TabularText.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>

namespace pendra {

namespace {

bool isFigure(QChar c) { return c >= u'0' && c <= u'9'; }

qreal figureWidth(const QFontMetricsF& metrics) {
  qreal widest = 0;
  for (char16_t digit = u'0'; digit <= u'9'; ++digit) {
    widest = std::max(widest, metrics.horizontalAdvance(QChar(digit)));
  }
  return widest;
}

qreal advance(const QFontMetricsF& metrics, qreal figure, QChar c) {
  return isFigure(c) ? figure : metrics.horizontalAdvance(c);
}

}  // namespace

qreal tabularWidth(const QFont& font, const QString& text) {
  const QFontMetricsF metrics(font);
  const qreal figure = figureWidth(metrics);
  qreal width = 0;
  for (const QChar c : text) width += advance(metrics, figure, c);
  return width;
}

void drawTabular(QPainter& painter, const QRectF& rect, Qt::Alignment alignment, const QString& text) {
  const QFontMetricsF metrics(painter.font());
  const qreal figure = figureWidth(metrics);
  qreal x = rect.left();
  if (alignment & (Qt::AlignRight | Qt::AlignHCenter)) {
    const qreal free = rect.width() - tabularWidth(painter.font(), text);
    x += alignment & Qt::AlignRight ? free : free / 2;
  }
  const qreal baseline = std::round(rect.center().y() + (metrics.ascent() - metrics.descent()) / 2);
  for (const QChar c : text) {
    const qreal width = advance(metrics, figure, c);
    painter.drawText(QPointF(x + (width - metrics.horizontalAdvance(c)) / 2, baseline), QString(c));
    x += width;
  }
}

TabularLabel::TabularLabel(QWidget* parent) : QLabel(parent) {}

QSize TabularLabel::sizeHint() const {
  return {static_cast<int>(std::ceil(tabularWidth(font(), text()))), fontMetrics().height()};
}

void TabularLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(palette().color(foregroundRole()));
  drawTabular(painter, contentsRect(), alignment(), text());
}

void showText(QLabel& label, const QString& text) {
  if (label.text() == text) return;
  label.setText(text);
  label.setAccessibleDescription(text);
}

}  // namespace pendra
