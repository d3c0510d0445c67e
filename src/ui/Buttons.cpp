#include "ui/Buttons.h"

#include <QKeyEvent>
#include <QPainter>

#include "ui/Symbols.h"
#include "ui/Theme.h"

namespace pendra {

namespace {
constexpr int kDiameter = 64;
constexpr int kSmallDiameter = 56;
constexpr std::chrono::milliseconds kLongPress{500};
constexpr int kRing = 4;  // room for the focus ring around the disc
constexpr qreal kIdleLine = 2.5;

/// The sign of a timer that stands still: a thin ring, so that a filled disc alone says that time runs.
void drawIdle(QPainter& painter, const QRectF& disc, const QColor& ink) {
  painter.setPen(QPen(ink, kIdleLine));
  painter.setBrush(Qt::NoBrush);
  painter.drawEllipse(disc.adjusted(kIdleLine / 2, kIdleLine / 2, -kIdleLine / 2, -kIdleLine / 2));
  const QPointF middle = disc.center() + QPointF(2.5, 0);
  painter.setPen(QPen(ink, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(ink);
  painter.drawPolygon(
      QPolygonF{middle + QPointF(-8.5, -11), middle + QPointF(9.5, 0), middle + QPointF(-8.5, 11)});
}
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

void drawPlate(QPainter& painter, const QAbstractButton& button) {
  const Colours& colours = Theme::colours(button.palette());
  const QRectF plate = QRectF(button.rect()).adjusted(1, 1, -1, -1);
  painter.setRenderHint(QPainter::Antialiasing);
  if (button.isDown() || button.underMouse()) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(button.isDown() ? colours.selection : colours.line);
    painter.drawRoundedRect(plate, metrics::kRadius, metrics::kRadius);
  }
  painter.setBrush(Qt::NoBrush);
  if (!button.hasFocus()) return;
  painter.setPen(QPen(colours.link, 2));
  painter.drawRoundedRect(plate, metrics::kRadius, metrics::kRadius);
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
  setSmall(false);
  running_ = true;
  setRunning(false);
  longPress_.setSingleShot(true);
  longPress_.setInterval(kLongPress);
  connect(&longPress_, &QTimer::timeout, this, &BigButton::askAfterLongPress);
}

void BigButton::setSmall(bool small) {
  diameter_ = small ? kSmallDiameter : kDiameter;
  updateGeometry();
  update();
}

void BigButton::setRunning(bool running) {
  if (running == running_) return;
  running_ = running;
  setAccessibleDescription(running ? tr("Stop") : tr("Start"));
  setToolTip(running ? tr("Stop the selected activity (Ctrl+T)")
                     : tr("Start the selected activity (Ctrl+T)"));
  update();
}

QSize BigButton::sizeHint() const { return {diameter_ + 2 * kRing, diameter_ + 2 * kRing}; }

void BigButton::paintEvent(QPaintEvent*) {
  const Colours& colours = Theme::colours(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QRectF disc(0, 0, diameter_, diameter_);
  disc.moveCenter(QRectF(rect()).center());
  QColor colour = running_ ? colours.running : colours.text;
  if (!isEnabled()) colour = colours.disabled;
  if (running_ && (isDown() || underMouse())) colour = mixed(colour, colours.text, isDown() ? 0.35 : 0.15);
  if (!running_ && isEnabled() && (isDown() || underMouse())) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(isDown() ? colours.selection : colours.line);
    painter.drawEllipse(disc);
  }
  if (running_) {
    drawSymbol(painter, disc, Symbol::Pause, colour);
  } else {
    drawIdle(painter, disc, colour);
  }
  if (hasFocus()) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(colours.link, 2));
    painter.drawEllipse(disc.adjusted(-2.5, -2.5, 2.5, 2.5));
  }
}

void BigButton::mousePressEvent(QMouseEvent* event) {
  QAbstractButton::mousePressEvent(event);
  if (isDown()) longPress_.start();
}

/// The press has become one for the menu; letting go starts and stops nothing.
void BigButton::askAfterLongPress() {
  if (!isDown()) return;
  setDown(false);
  Q_EMIT menuAsked();
}

void BigButton::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Down && event->modifiers() & Qt::AltModifier) {
    Q_EMIT menuAsked();
    return;
  }
  QAbstractButton::keyPressEvent(event);
}

void BigButton::enterEvent(QEnterEvent*) { update(); }
void BigButton::leaveEvent(QEvent*) { update(); }

bool BigButton::hitButton(const QPoint& position) const {
  const QPointF away = QPointF(position) - QRectF(rect()).center();
  return QPointF::dotProduct(away, away) <= (diameter_ / 2.0) * (diameter_ / 2.0);
}

}  // namespace pendra
