#include "AwayStrip.h"

#include <QPainter>
#include <QPainterPath>

#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kHeight = 66;
constexpr int kBarHeight = 16;
constexpr int kSideOfBar = 24;
constexpr int kBetweenTimes = 8;
constexpr int kHatch = 6;

void paintHatched(QPainter& painter, const QRectF& gap, const Colours& colours) {
  painter.save();
  painter.setClipRect(gap);
  painter.fillRect(gap, colours.base);
  painter.setPen(QPen(colours.quiet, 1.5));
  for (qreal x = gap.left() - gap.height(); x < gap.right(); x += kHatch) {
    painter.drawLine(QPointF(x, gap.bottom()), QPointF(x + gap.height(), gap.top()));
  }
  painter.restore();
}

}  // namespace

AwayStrip::AwayStrip(const Calendar& calendar) : calendar_(calendar) {
  setObjectName(QStringLiteral("awayStrip"));
  setFixedHeight(kHeight);
}

void AwayStrip::show(const AwayShape& shape, AwayChoice choice) {
  shape_ = shape;
  choice_ = choice;
  update();
}

qreal AwayStrip::place(const QRectF& bar, Instant instant) const {
  const double whole = std::max(1.0, shape_.end - shape_.start);
  return bar.left() + bar.width() * std::clamp((instant - shape_.start) / whole, 0.0, 1.0);
}

void AwayStrip::paintEvent(QPaintEvent*) {
  const Colours& colours = Theme::colours(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(colours.line);
  painter.setBrush(colours.base);
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), metrics::kRadius, metrics::kRadius);
  const QRectF bar(kSideOfBar, 14, width() - 2 * kSideOfBar, kBarHeight);
  const QRectF gap(QPointF(place(bar, shape_.absence.from), bar.top()),
                   QPointF(place(bar, shape_.absence.to), bar.bottom()));
  QPainterPath rounded;
  rounded.addRoundedRect(bar, 3, 3);
  painter.setClipPath(rounded);
  painter.fillRect(bar, shape_.runs ? colours.running : colours.quiet);
  if (choice_ == AwayChoice::Book) painter.fillRect(gap, colours.link);
  if (choice_ == AwayChoice::TakeOff) paintHatched(painter, gap, colours);
  painter.setClipping(false);
  painter.setPen(colours.frame);
  painter.drawLine(QPointF(bar.left(), bar.bottom() + 7), QPointF(bar.right(), bar.bottom() + 7));
  paintTimes(painter, bar);
}

/// The absence goes first where there is no room for all.
void AwayStrip::paintTimes(QPainter& painter, const QRectF& bar) {
  painter.setFont(Theme::quietFont());
  painter.setPen(Theme::colours(palette()).quiet);
  std::vector<QRectF> taken;
  for (const Instant instant : {shape_.absence.from, shape_.absence.to, shape_.start, shape_.end}) {
    const bool isNow = shape_.runs && instant == shape_.end;
    const QString text = isNow ? tr("now") : calendar_.local(instant).toString(QStringLiteral("HH:mm"));
    const qreal wide = painter.fontMetrics().horizontalAdvance(text);
    const qreal left = std::clamp(place(bar, instant) - wide / 2, bar.left() - 12, bar.right() + 12 - wide);
    const QRectF words(left, bar.bottom() + 9, wide, 20);
    const QRectF room = words.adjusted(-kBetweenTimes, 0, kBetweenTimes, 0);
    if (std::any_of(taken.begin(), taken.end(), [&](const QRectF& one) { return one.intersects(room); }))
      continue;
    taken.push_back(words);
    painter.drawText(words, Qt::AlignCenter, text);
  }
}

}  // namespace pendra
