#include "FilterPopUp.h"

#include <QPainter>

#include "ui/Symbols.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kPadding = 6;
constexpr int kGap = 5;
constexpr int kChevron = 18;
constexpr int kWidestValue = 140;
constexpr int kNarrowestLetters = 12;

}  // namespace

FilterPopUp::FilterPopUp(QString title, Purpose purpose, QWidget* parent)
    : QComboBox(parent), title_(std::move(title)), purpose_(purpose) {
  setFont(Theme::controlFont());
  setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
  setAttribute(Qt::WA_Hover);
  connect(this, &QComboBox::currentIndexChanged, this, [this] { updateGeometry(); });
}

QString FilterPopUp::value() const { return currentIndex() < 0 ? placeholderText() : currentText(); }

QFont FilterPopUp::valueFont() const {
  QFont font = this->font();
  if (limits()) font.setWeight(QFont::DemiBold);
  return font;
}

int FilterPopUp::titleWidth() const {
  return title_.isEmpty() ? 0 : fontMetrics().horizontalAdvance(title_) + kGap;
}

QSize FilterPopUp::sizeFor(int valueWidth) const {
  const int words = titleWidth() + valueWidth + 1;
  return {kPadding + words + kChevron, metrics::kControlHeight};
}

QSize FilterPopUp::sizeHint() const {
  return sizeFor(std::min(kWidestValue, QFontMetrics(valueFont()).horizontalAdvance(value())));
}

QSize FilterPopUp::minimumSizeHint() const {
  const QFontMetrics letters(valueFont());
  return sizeFor(letters.horizontalAdvance(
      value().size() > kNarrowestLetters ? value().first(kNarrowestLetters - 1) + u'…' : value()));
}

void FilterPopUp::paintEvent(QPaintEvent*) {
  const Colours& colours = Theme::colours(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF plate = QRectF(rect()).adjusted(1, 1, -1, -1);
  const bool isHovered = isEnabled() && underMouse();
  const QColor ground = limits() ? colours.selection : isHovered ? colours.line : colours.window;
  painter.setPen(hasFocus() ? QPen(colours.link, 2) : QPen(Qt::NoPen));
  painter.setBrush(ground);
  painter.drawRoundedRect(plate, metrics::kRadius, metrics::kRadius);

  const QColor quiet = Theme::readable(colours.quiet, ground, colours.text);
  QRect words = rect().adjusted(kPadding, 0, -kChevron, 0);
  painter.setPen(isEnabled() ? quiet : colours.disabled);
  painter.drawText(words, Qt::AlignVCenter | Qt::AlignLeft, title_);
  words.setLeft(words.left() + titleWidth());
  painter.setFont(valueFont());
  painter.setPen(isEnabled() ? colours.text : colours.disabled);
  painter.drawText(words, Qt::AlignVCenter | Qt::AlignLeft,
                   painter.fontMetrics().elidedText(value(), Qt::ElideRight, words.width()));
  drawChevron(painter, {rect().right() - kChevron / 2.0, QRectF(rect()).center().y()}, quiet);
}

}  // namespace pendra
