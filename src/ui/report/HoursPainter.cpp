#include "HoursPainter.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>

#include "HoursLabels.h"

namespace pendra {

namespace {

constexpr double kAxisWidth = 56;
constexpr double kLabelLines = 2.3;  // heights of the font below the bars
constexpr double kTopAir = 0.1;      // of the plot, over the top line
constexpr double kBarPart = 0.62;    // of a column
constexpr double kThin = 6;
constexpr double kWidestBar = 44;
constexpr double kHatchGap = 5;
constexpr double kSeam = 1;  // between two parts of a bar
constexpr int kMostLines = 5;

/// Hours between two lines so that a few of them reach over the longest bar.
double stepFor(double hours) {
  for (double decade = 0.1; decade < 1e6; decade *= 10) {
    for (const double step : {decade, 2 * decade, 5 * decade}) {
      const double readable = step < 0.5 ? step * 2.5 : step;  // quarters and halves rather than fifths
      if (hours <= readable * (kMostLines - 0.5)) return readable;
    }
  }
  return hours;
}

QRectF snapped(const QRectF& rect) {
  const double left = std::round(rect.left());
  const double top = std::round(rect.top());
  return {left, top, std::max(1.0, std::round(rect.right()) - left), std::round(rect.bottom()) - top};
}

}  // namespace

QColor colourOfGroup(const Colours& colours, std::size_t place) {
  return colours.report[std::min(place, colours.report.size() - 1)];
}

void drawShare(QPainter& painter, const QRectF& rect, const QColor& colour, bool hatched) {
  if (rect.width() <= 0 || rect.height() <= 0) return;
  if (!hatched) return painter.fillRect(rect, colour);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setClipRect(rect, Qt::IntersectClip);
  painter.setPen(QPen(colour, 1.6));
  // The lines hang on the page, not on the bar, so that those of neighbours run on.
  const double first = std::floor((rect.left() + rect.top()) / kHatchGap) * kHatchGap;
  for (double sum = first; sum < rect.right() + rect.bottom() + kHatchGap; sum += kHatchGap) {
    painter.drawLine(QPointF(sum - rect.top() + 1, rect.top() - 1),
                     QPointF(sum - rect.bottom() - 1, rect.bottom() + 1));
  }
  painter.setPen(QPen(colour, 1));
  painter.drawRect(rect.adjusted(0.5, 0.5, -0.5, -0.5));
  painter.restore();
}

void drawShares(QPainter& painter, const QRectF& rect, const Shares& shares, double scale,
                const QColor& colour) {
  const double sent = std::round(shares.sent * scale);
  const double notSent = std::round(shares.notSent * scale);
  drawShare(painter, {rect.left(), rect.top(), sent, rect.height()}, colour, false);
  drawShare(painter, {rect.left() + sent, rect.top(), notSent, rect.height()}, colour, true);
}

HoursPainter::HoursPainter(const Report& report, HoursLook look, const QRectF& place)
    : report_(report), look_(std::move(look)) {
  const double labels = QFontMetricsF(look_.font).height() * kLabelLines;
  plot_ = place.adjusted(kAxisWidth, place.height() * kTopAir, -metrics::kSide, -labels);
  double longest = 0;
  for (const ReportBar& bar : report.bars) longest = std::max(longest, secondsOf(bar.total()) / 3600);
  if (longest <= 0) return;
  step_ = stepFor(longest);
  top_ = std::max(step_, std::ceil(longest / step_ - 0.5) * step_);
  top_ = std::max(top_, longest);
}

double HoursPainter::heightOf(Length length) const {
  return std::max(0.0, secondsOf(length) / 3600 / top_ * plot_.height());
}

QRectF HoursPainter::columnOf(int bar) const {
  if (bar < 0 || report_.bars.empty()) return {};
  const double width = plot_.width() / static_cast<double>(report_.bars.size());
  const double top = plot_.top() - plot_.height() * kTopAir / 2;
  return {plot_.left() + bar * width, top, width, plot_.bottom() - top};
}

int HoursPainter::barAt(const QPointF& point) const {
  if (point.x() < plot_.left() || point.x() >= plot_.right() || report_.bars.empty()) return -1;
  const double width = plot_.width() / static_cast<double>(report_.bars.size());
  return std::min(static_cast<int>((point.x() - plot_.left()) / width),
                  static_cast<int>(report_.bars.size()) - 1);
}

void HoursPainter::paint(QPainter& painter) const {
  painter.save();
  painter.setFont(look_.font);
  if (look_.marked >= 0) painter.fillRect(columnOf(look_.marked), look_.colours->hover);
  paintAxis(painter);
  for (int bar = 0; bar < static_cast<int>(report_.bars.size()); ++bar) paintBar(painter, bar);
  paintLabels(painter);
  if (look_.focused >= 0) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(look_.colours->link, 2));
    painter.drawRoundedRect(columnOf(look_.focused).adjusted(-1, 1, 1, -1), metrics::kRadius,
                            metrics::kRadius);
  }
  painter.restore();
}

void HoursPainter::paintAxis(QPainter& painter) const {
  const double height = QFontMetricsF(look_.font).height();
  for (double hours = 0; hours <= top_ + step_ / 1000; hours += step_) {
    const double y = std::round(plot_.bottom() - hours / top_ * plot_.height());
    const QColor line =
        hours > 0 ? look_.colours->line : mixed(look_.colours->line, look_.colours->quiet, 0.4);
    painter.fillRect(QRectF(plot_.left(), y, plot_.width(), 1), line);
    painter.setPen(look_.colours->quiet);
    painter.drawText(QRectF(plot_.left() - kAxisWidth, y - height / 2, kAxisWidth - 12, height),
                     Qt::AlignRight | Qt::AlignVCenter, hoursOnAxis(hours, look_.locale));
  }
}

void HoursPainter::paintBar(QPainter& painter, int bar) const {
  const QRectF column = columnOf(bar);
  // Thin bars keep no distance: there is no room to lose.
  const double part = column.width() < kThin ? 1 : kBarPart;
  const double width = std::min(column.width() * part, kWidestBar);
  QRectF rest(column.center().x() - width / 2, 0, width, plot_.bottom());
  for (const BarPart& share : report_.bars[static_cast<std::size_t>(bar)].parts) {
    const QColor colour = colourOfGroup(*look_.colours, share.group);
    for (const auto& [length, notSent] : {std::pair(share.sent, false), std::pair(share.notSent, true)}) {
      const double height = heightOf(length);
      if (height <= 0) continue;
      QRectF piece = snapped({rest.left(), rest.bottom() - height, width, height});
      if (piece.height() > 3 * kSeam && width >= kThin) piece.setTop(piece.top() + kSeam);
      drawShare(painter, piece, colour, notSent && look_.hatches);
      rest.setBottom(rest.bottom() - height);
    }
  }
}

void HoursPainter::paintLabels(QPainter& painter) const {
  const double height = QFontMetricsF(look_.font).height();
  std::array<double, 2> ends{-1e9, -1e9};  // of what stands in each line so far
  const auto draw = [&](std::size_t line, double centre, const QFont& font, const QColor& ink,
                        const QString& words) {
    const double width = QFontMetricsF(font).horizontalAdvance(words) + 2;
    if (words.isEmpty() || centre - width / 2 < ends[line]) return;
    ends[line] = centre + width / 2 + 2;
    const double top = plot_.bottom() + 4 + static_cast<double>(line) * height;
    painter.setFont(font);
    painter.setPen(ink);
    painter.drawText(QRectF(centre - width, top, 2 * width, height), Qt::AlignCenter, words);
  };
  for (const BarLabel& label : labelsOf(report_, look_.today, look_.locale, columnOf(0).width())) {
    QFont font = look_.font;
    if (label.isNow) font.setWeight(QFont::Bold);
    const double centre = columnOf(label.bar).center().x();
    draw(0, centre, font, look_.colours->text, label.first);
    draw(1, centre, look_.font, look_.colours->quiet, label.second);
  }
}

}  // namespace pendra
