#include "QuickReadingLabel.h"

#include <QPainter>

#include "ui/Symbols.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kWordsAt = 38;
constexpr int kSignAt = 20;  // the middle of the signs
constexpr int kSign = 16;
constexpr int kEdge = 10;  // between the plate's edges and its words
constexpr int kGap = 3;

}  // namespace

void drawReturnKey(QPainter& painter, const QPointF& centre, const QColor& colour) {
  painter.setPen(QPen(colour, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPolyline(
      QPolygonF{centre + QPointF(5, -4), centre + QPointF(5, 1.5), centre + QPointF(-5, 1.5)});
  painter.drawPolyline(
      QPolygonF{centre + QPointF(-2, -1.5), centre + QPointF(-5, 1.5), centre + QPointF(-2, 4.5)});
}

/// A text that may need several lines.
struct QuickReadingLabel::Line {
  enum class Kind { Deed, Remark, Warning };

  QString text;
  Kind kind;

  [[nodiscard]] QFont font() const {
    QFont font = Theme::controlFont();
    if (kind == Kind::Deed) font.setWeight(QFont::DemiBold);
    return font;
  }
  [[nodiscard]] int height(int width) const {
    return QFontMetrics(font()).boundingRect(QRect(0, 0, width, 1000), Qt::TextWordWrap, text).height();
  }
};

QuickReadingLabel::QuickReadingLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setObjectName(QStringLiteral("quickEntryReading"));
  setAccessibleName(tr("Quick entry reading"));
  // Its lines wrap. A layout that had to give it the width of the longest would reckon with too few of them.
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void QuickReadingLabel::say(const QuickReadingTexts& texts) {
  texts_ = texts;
  setText(texts.joined());
  setAccessibleDescription(text());
  updateGeometry();
  update();
}

void QuickReadingLabel::setChosen(bool chosen) {
  if (std::exchange(chosen_, chosen) != chosen) update();
}

std::vector<QuickReadingLabel::Line> QuickReadingLabel::lines() const {
  std::vector<Line> lines{{texts_.deed, Line::Kind::Deed}};
  if (!texts_.subject.isEmpty()) lines.push_back({texts_.subject, Line::Kind::Remark});
  for (const QString& remark : texts_.remarks) lines.push_back({remark, Line::Kind::Remark});
  for (const QString& warning : texts_.warnings) lines.push_back({warning, Line::Kind::Warning});
  return lines;
}

int QuickReadingLabel::plateHeight(int width) const {
  int height = 2 * kEdge - kGap;
  for (const Line& line : lines()) {
    if (line.kind != Line::Kind::Warning) height += line.height(width - kWordsAt - kEdge) + kGap;
  }
  return height;
}

int QuickReadingLabel::heightForWidth(int width) const {
  int height = plateHeight(width);
  for (const Line& line : lines()) {
    if (line.kind == Line::Kind::Warning) height += line.height(width - kWordsAt - kEdge) + kEdge;
  }
  return height;
}

void QuickReadingLabel::paintEvent(QPaintEvent*) {
  const Colours& colours = Theme::colours(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const int plate = plateHeight(width());
  const bool hasPlate = chosen_ && !texts_.isRefused;
  if (hasPlate) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(colours.selection);
    painter.drawRoundedRect(QRectF(0, 0, width(), plate), metrics::kRadius, metrics::kRadius);
  }
  QRect words(kWordsAt, kEdge, width() - kWordsAt - kEdge, 0);
  for (const Line& line : lines()) {
    const bool warns = line.kind == Line::Kind::Warning || texts_.isRefused;
    if (line.kind == Line::Kind::Warning) words.moveTop(std::max(words.top(), plate) + (kEdge - kGap) / 2);
    words.setHeight(line.height(words.width()));
    painter.setFont(line.font());
    const double middle = words.top() + QFontMetrics(line.font()).height() / 2.0;
    if (warns) {
      drawSymbol(painter, QRectF(kSignAt - kSign / 2.0, middle - kSign / 2.0, kSign, kSign), Symbol::Warning,
                 colours.warning);
    } else if (line.kind == Line::Kind::Deed && chosen_) {
      drawReturnKey(painter, QPointF(kSignAt, middle), colours.text);
    }
    painter.setPen(warns ? colours.warning : colours.text);
    painter.drawText(words, Qt::TextWordWrap, line.text);
    words.moveTop(words.bottom() + 1 + kGap);
  }
}

}  // namespace pendra
