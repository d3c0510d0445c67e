#include "ReadOut.h"

#include <QPainter>

#include "platform/Translation.h"
#include "ui/TabularText.h"
#include "ui_core/ReportTexts.h"

namespace pendra {

namespace {

constexpr double kSwatch = 11;
constexpr double kSwatchGap = 9;
constexpr double kFiguresGap = 7;
constexpr double kPartGap = 20;
constexpr double kHeadGap = 8;
constexpr double kWidestName = 400;
constexpr double kNarrowestName = 80;
constexpr double kNameStep = 20;

QFont fontOf(const ReadOutPart& part, QFont font) {
  if (part.isHead) font.setWeight(QFont::DemiBold);
  return font;
}

double widthOf(const ReadOutPart& part, const QFont& plain) {
  const QFont font = fontOf(part, plain);
  double width = QFontMetricsF(font).horizontalAdvance(part.words);
  if (part.group) width += kSwatch + kSwatchGap;
  if (!part.figures.isEmpty()) width += tabularWidth(font, part.figures);
  if (!part.figures.isEmpty() && !part.words.isEmpty()) width += kFiguresGap;
  return width;
}

void drawPart(QPainter& painter, QRectF rect, const ReadOutPart& part, const Colours& colours) {
  if (part.group) {
    QRectF swatch(rect.left(), 0, kSwatch, kSwatch);
    swatch.moveTop(std::round(rect.center().y() - kSwatch / 2));
    drawShare(painter, swatch, colourOfGroup(colours, *part.group), part.hatched);
    rect.setLeft(rect.left() + kSwatch + kSwatchGap);
  }
  painter.setFont(fontOf(part, painter.font()));
  painter.setPen(part.isQuiet ? colours.quiet : colours.text);
  painter.drawText(rect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, part.words);
  const double words = QFontMetricsF(painter.font()).horizontalAdvance(part.words);
  drawTabular(painter, rect.adjusted(part.words.isEmpty() ? 0 : words + kFiguresGap, 0, 0, 0), Qt::AlignLeft,
              part.figures);
}

double widthOfAll(const ReadOutParts& parts, const QFont& plain) {
  double width = 0;
  for (const ReadOutPart& part : parts) width += widthOf(part, plain) + (part.isHead ? kHeadGap : kPartGap);
  return width - kPartGap;
}

/// With the longest names cut, where that makes room for all of them.
ReadOutParts fitted(const ReadOutParts& parts, const QFont& plain, double room) {
  if (widthOfAll(parts, plain) <= room) return parts;
  for (double widest = kWidestName; widest >= kNarrowestName; widest -= kNameStep) {
    ReadOutParts cut = parts;
    for (ReadOutPart& part : cut) {
      if (part.group) part.words = QFontMetricsF(plain).elidedText(part.words, Qt::ElideRight, widest);
    }
    if (widthOfAll(cut, plain) <= room) return cut;
  }
  return parts;
}

/// What of a bar was not sent, when anything was not.
std::optional<ReadOutPart> unsentOf(const ReportBar& bar) {
  if (bar.notSent == Length()) return std::nullopt;
  const bool isAll = bar.sent == Length();
  return ReadOutPart{.words = isAll ? tr("not sent") : tr("%1 not sent").arg(lengthText(bar.notSent)),
                     .isQuiet = true};
}

}  // namespace

ReadOutParts readOutOf(const Report& report, int at, const QLocale& locale, bool hatches) {
  const ReportBar& bar = report.bars.at(static_cast<std::size_t>(at));
  ReadOutParts parts{{.words = titleOf(bar, locale), .figures = lengthText(bar.total()), .isHead = true}};
  if (const auto unsent = unsentOf(bar); unsent && hatches) parts.push_back(*unsent);
  for (const BarPart& share : bar.parts) {
    parts.push_back({.words = titleOf(report.groups[share.group]),
                     .figures = lengthText(share.sent + share.notSent),
                     .group = share.group,
                     .hatched = hatches && share.sent == Length()});
  }
  return parts;
}

ReadOutParts legendOf(const Report& report) {
  const std::size_t named = std::tuple_size_v<decltype(Colours::report)> - 1;
  ReadOutParts parts;
  for (std::size_t place = 0; place < std::min(named, report.groups.size()); ++place) {
    parts.push_back({.words = titleOf(report.groups[place]), .group = place});
  }
  if (report.groups.size() == named + 1)
    parts.push_back({.words = titleOf(report.groups[named]), .group = named});
  if (report.groups.size() > named + 1) {
    parts.push_back(
        {.words = counted(static_cast<qint64>(report.groups.size() - named), "1 other", "%Ln others"),
         .group = named});
  }
  return parts;
}

QString textOf(const ReadOutParts& parts) {
  QStringList texts;
  for (const ReadOutPart& part : parts) texts << QString(part.words + u' ' + part.figures).trimmed();
  return texts.join(QStringLiteral(", "));
}

void drawReadOut(QPainter& painter, const QRectF& rect, const ReadOutParts& whole, const Colours& colours) {
  const QFont plain = painter.font();
  const ReadOutParts parts = fitted(whole, plain, rect.width());
  double x = rect.left();
  for (std::size_t at = 0; at < parts.size(); ++at) {
    const ReadOutPart& part = parts[at];
    const ReadOutPart rest{
        .words = counted(static_cast<qint64>(parts.size() - at), "and 1 more", "and %Ln more"),
        .isQuiet = true};
    const bool isLast = at + 1 == parts.size();
    const double needed = x + widthOf(part, plain) + (isLast ? 0 : kPartGap + widthOf(rest, plain));
    const bool fits = needed <= rect.right() || at == 0;
    painter.setFont(plain);
    drawPart(painter, {x, rect.top(), rect.right() - x, rect.height()}, fits ? part : rest, colours);
    if (!fits) break;
    x += widthOf(part, plain) + (part.isHead ? kHeadGap : kPartGap);
  }
  painter.setFont(plain);
}

ReadOut::ReadOut(QWidget* parent) : QLabel(parent) { setFont(Theme::controlFont()); }

void ReadOut::show(ReadOutParts parts) {
  parts_ = std::move(parts);
  setText(textOf(parts_));
  setAccessibleDescription(text());
  update();
}

QSize ReadOut::sizeHint() const { return {200, fontMetrics().height() + metrics::kGrid}; }

void ReadOut::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setFont(font());
  drawReadOut(painter, contentsRect(), parts_, Theme::colours(palette()));
}

}  // namespace pendra
