#include "SignButton.h"

#include <QPainter>

#include "ui/Theme.h"

namespace pendra {

namespace {
constexpr int kSign = 14;

QRect inMiddle(const QRect& of) {
  QRect sign(0, 0, kSign, kSign);
  sign.moveCenter(of.center());
  return sign;
}
}  // namespace

SignButton::SignButton(Symbol symbol, QWidget* parent) : QAbstractButton(parent), symbol_(symbol) {
  setFocusPolicy(Qt::TabFocus);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize SignButton::sizeHint() const { return {metrics::kControlHeight, metrics::kControlHeight}; }

void SignButton::paintEvent(QPaintEvent*) {
  const Colours& colours = Theme::colours(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(hasFocus() ? QPen(colours.link, 2) : QPen(Qt::NoPen));
  if (isDown()) {
    painter.setBrush(colours.selection);
  } else if (underMouse()) {
    painter.setBrush(colours.line);
  }
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), metrics::kRadius, metrics::kRadius);
  drawSymbol(painter, inMiddle(rect()), symbol_, colours.quiet);
}

SignLabel::SignLabel(Symbol symbol, QWidget* parent) : QWidget(parent), symbol_(symbol) {
  setFixedSize(kSign, kSign);
}

void SignLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  drawSymbol(painter, inMiddle(rect()), symbol_, Theme::colours(palette()).warning);
}

}  // namespace pendra
