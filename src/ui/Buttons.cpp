#include "ui/Buttons.h"

#include <QPainter>

#include "ui/Symbols.h"
#include "ui/Theme.h"

namespace pendra {

namespace {
constexpr int kDiameter = 64;
constexpr int kRing = 4;  // room for the focus ring around the disc
}  // namespace

void makePrimary(QPushButton& button) {
  button.setProperty(kPrimaryProperty, true);
  button.updateGeometry();
  button.update();
}

void makeQuiet(QPushButton& button) {
  button.setFlat(true);
  button.setCursor(Qt::PointingHandCursor);
}

void makeSheetButton(QAbstractButton& button) { button.setFocusPolicy(Qt::TabFocus); }

QPushButton* makeSheetButton(const QString& title, QWidget* parent) {
  auto* button = new QPushButton(title, parent);
  button->setAccessibleName(title);
  makeSheetButton(*button);
  return button;
}

BigButton::BigButton(QWidget* parent) : QAbstractButton(parent) {
  setAccessibleName(tr("Start or stop timer"));
  setFocusPolicy(Qt::TabFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  running_ = true;
  setRunning(false);
}

void BigButton::setRunning(bool running) {
  if (running == running_) return;
  running_ = running;
  setAccessibleDescription(running ? tr("Stop") : tr("Start"));
  setToolTip(running ? tr("Stop the selected activity (Ctrl+T)")
                     : tr("Start the selected activity (Ctrl+T)"));
  update();
}

QSize BigButton::sizeHint() const { return {kDiameter + 2 * kRing, kDiameter + 2 * kRing}; }

void BigButton::paintEvent(QPaintEvent*) {
  const Colours& colours = Theme::colours(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QRectF disc(0, 0, kDiameter, kDiameter);
  disc.moveCenter(QRectF(rect()).center());
  QColor colour = running_ ? colours.running : mixed(colours.text, colours.quiet, 0.5);
  if (!isEnabled()) colour = mixed(colours.quiet, colours.window, 0.5);
  if (isDown() || underMouse()) colour = mixed(colour, colours.text, isDown() ? 0.35 : 0.15);
  drawSymbol(painter, disc, running_ ? Symbol::Pause : Symbol::Play, colour);
  if (hasFocus()) {
    painter.setPen(QPen(colours.link, 2));
    painter.drawEllipse(disc.adjusted(-2.5, -2.5, 2.5, 2.5));
  }
}

void BigButton::enterEvent(QEnterEvent*) { update(); }
void BigButton::leaveEvent(QEvent*) { update(); }

bool BigButton::hitButton(const QPoint& position) const {
  const QPointF away = QPointF(position) - QRectF(rect()).center();
  return QPointF::dotProduct(away, away) <= (kDiameter / 2.0) * (kDiameter / 2.0);
}

}  // namespace pendra
