#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>

#include "ui/PanelIcon.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr qreal kUnits = 22;  // the usual size of a panel's icons, in which everything is measured
constexpr qreal kMiddle = kUnits / 2;
constexpr std::initializer_list<int> kSizes{16, 22, 24, 32, 48};
constexpr int kSmall = 24;
constexpr int kMostCounted = 9;

/// What the panel's colours may be taken for, and the other way round: nobody says how the panel looks.
struct Inks {
  QColor sign;
  QColor onSign;
  QColor quiet;
  QColor running;
  QColor question;
  QColor halo;  ///< around what would be lost on the other kind of panel
};

Inks inksFor(bool isDark) {
  const Colours& own = isDark ? Theme::dark() : Theme::light();
  const Colours& other = isDark ? Theme::light() : Theme::dark();
  QColor halo = other.text;
  halo.setAlphaF(0.7F);
  return {.sign = own.text,
          .onSign = own.base,
          .quiet = own.quiet,
          .running = own.running,
          .question = isDark ? QColor(0xe0b400) : QColor(0x946d00),
          .halo = halo};
}

class SignPainter {
 public:
  SignPainter(QPixmap& picture, const PanelSign& sign, const Inks& inks)
      : painter_(&picture), sign_(sign), inks_(inks), isSmall_(picture.width() <= kSmall) {
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.scale(picture.width() / kUnits, picture.height() / kUnits);
  }

  void draw() {
    sign_.running > 0 ? drawDisc() : drawRing();
    if (sign_.running > 1) drawCount();
    if (sign_.asks) drawQuestion();
  }

 private:
  /// A shape with its halo below it.
  void fill(const QPainterPath& shape, const QColor& ink) {
    painter_.setBrush(inks_.halo);
    painter_.setPen(QPen(inks_.halo, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter_.setCompositionMode(QPainter::CompositionMode_Source);  // what overlaps is no darker
    painter_.drawPath(shape);
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(ink);
    painter_.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter_.drawPath(shape);
  }

  /// A hole through which the panel is seen.
  void cut(const QPainterPath& shape) {
    painter_.setCompositionMode(QPainter::CompositionMode_Clear);
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(Qt::black);
    painter_.drawPath(shape);
    painter_.setCompositionMode(QPainter::CompositionMode_SourceOver);
  }

  void drawRing() {
    const qreal radius = 8.5;
    QPainterPath arc;
    const QRectF circle(kMiddle - radius, kMiddle - radius, 2 * radius, 2 * radius);
    const qreal begin = sign_.asks ? -5 : 90;  // it is open where the diamond stands
    arc.arcMoveTo(circle, begin);
    arc.arcTo(circle, begin, sign_.asks ? -240 : -290);
    QPainterPathStroker stroker;
    stroker.setWidth(isSmall_ ? 2.4 : 2.0);
    stroker.setCapStyle(Qt::RoundCap);
    QPainterPath shape = stroker.createStroke(arc);
    shape.setFillRule(Qt::WindingFill);
    if (sign_.hasDocument) {
      const qreal half = isSmall_ ? 3.9 : 4.2;
      shape.addPolygon(QPolygonF{
          QPointF(kMiddle - half * 0.7, kMiddle - half), QPointF(kMiddle + half * 1.05, kMiddle),
          QPointF(kMiddle - half * 0.7, kMiddle + half), QPointF(kMiddle - half * 0.7, kMiddle - half)});
    }
    fill(shape, sign_.hasDocument ? inks_.sign : inks_.quiet);
  }

  void drawDisc() {
    QPainterPath disc;
    disc.addEllipse(QPointF(kMiddle, kMiddle), 9.8, 9.8);
    fill(disc, inks_.running);
    QPainterPath bars;
    for (const qreal left : {kMiddle - 4, kMiddle + 1.2}) bars.addRoundedRect({left, 6.5, 2.8, 9}, 0.7, 0.7);
    cut(bars);
  }

  void drawCount() {
    const qreal radius = isSmall_ ? 6.2 : 5.6;
    const QPointF centre(kUnits - radius, kUnits - radius);
    QPainterPath gap;
    gap.addEllipse(centre, radius + 1, radius + 1);
    cut(gap);
    QPainterPath badge;
    badge.addEllipse(centre, radius, radius);
    fill(badge, inks_.sign);
    QFont font = QGuiApplication::font();
    font.setPixelSize(100);  // an outline; it is scaled to the badge
    font.setWeight(QFont::Bold);
    QPainterPath digit;
    digit.addText(0, 0, font, QString::number(std::min(sign_.running, kMostCounted)));
    const QRectF box = digit.boundingRect();
    const qreal scale = radius * 1.3 / box.height();
    painter_.setBrush(inks_.onSign);
    painter_.drawPath(QTransform::fromTranslate(centre.x(), centre.y())
                          .scale(scale, scale)
                          .translate(-box.center().x(), -box.center().y())
                          .map(digit));
  }

  void drawQuestion() {
    const auto diamond = [](qreal half) {
      const QPointF centre(kUnits - 5.5, 5.5);
      QPainterPath path;
      path.addPolygon(QPolygonF{centre - QPointF(0, half), centre + QPointF(half, 0),
                                centre + QPointF(0, half), centre - QPointF(half, 0),
                                centre - QPointF(0, half)});
      return path;
    };
    cut(diamond(7.2));
    fill(diamond(isSmall_ ? 5.2 : 4.8), inks_.question);
  }

  QPainter painter_;
  PanelSign sign_;
  Inks inks_;
  bool isSmall_;
};

}  // namespace

QIcon panelIcon(const PanelSign& sign, bool isDark) {
  QIcon icon;
  for (const int size : kSizes) {
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    SignPainter(picture, sign, inksFor(isDark)).draw();
    icon.addPixmap(picture);
  }
  return icon;
}

}  // namespace pendra
