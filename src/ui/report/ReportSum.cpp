#include "ReportSum.h"

#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>

#include "HoursPainter.h"
#include "ui/Buttons.h"
#include "ui/Symbols.h"
#include "ui/Theme.h"
#include "ui_core/ReportTexts.h"

namespace pendra {

namespace {

constexpr int kSignGap = 8;
constexpr int kSign = 11;
constexpr int kGapAfterSum = 36;
constexpr int kSegmentPadding = 13;
constexpr qreal kStepScale = 1.35;

}  // namespace

ReportSum::ReportSum(const QString& objectName, const QString& word, const QFont& font, Sign sign)
    : word_(word), sign_(sign), figures_(new TabularLabel) {
  setFont(Theme::quietFont());
  figures_->setObjectName(objectName);
  figures_->setAccessibleName(word);
  figures_->setFont(font);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, fontMetrics().height() + 2, kGapAfterSum, 0);
  column->addWidget(figures_, 0, Qt::AlignBottom);
  column->addStrut(fontMetrics().horizontalAdvance(word) + kSignGap + kSign + 2);
}

void ReportSum::alignBaseLines(std::initializer_list<ReportSum*> sums) {
  int deepest = 0;
  for (const ReportSum* sum : sums) deepest = std::max(deepest, sum->figures_->fontMetrics().descent());
  for (const ReportSum* sum : sums) {
    QMargins margins = sum->layout()->contentsMargins();
    margins.setBottom(deepest - sum->figures_->fontMetrics().descent());
    sum->layout()->setContentsMargins(margins);
  }
}

void ReportSum::show(Length sum) { showText(*figures_, lengthText(sum)); }

void ReportSum::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Colours& colours = Theme::colours(palette());
  painter.setPen(colours.quiet);
  const QRect line(0, 0, width(), fontMetrics().height());
  painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, word_);
  if (sign_ == Sign::None) return;
  const QRect sign(fontMetrics().horizontalAdvance(word_) + kSignGap, line.center().y() - kSign / 2, kSign,
                   kSign);
  drawShare(painter, sign, colourOfGroup(colours, 0), sign_ == Sign::Hatched);
}

SegmentButton::SegmentButton(const QString& text, Place place) : QRadioButton(text), place_(place) {
  setAccessibleName(text);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize SegmentButton::sizeHint() const {
  QFont heavy = font();
  heavy.setWeight(QFont::DemiBold);
  const int words = QFontMetrics(heavy).size(Qt::TextShowMnemonic, text()).width();
  return {words + 2 * kSegmentPadding, metrics::kControlHeight};
}

void SegmentButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Colours& colours = Theme::colours(palette());
  // The frame's rounded ends lie outside of the parts that have none.
  const int left = place_ == Place::First ? 0 : 2 * metrics::kRadius;
  const int right = place_ == Place::Last ? 0 : 2 * metrics::kRadius;
  const QRectF frame = QRectF(rect()).adjusted(0.5 - left, 0.5, right - 0.5, -0.5);
  const QColor line = mixed(colours.line, colours.quiet, 0.6);
  const QColor face = isChecked() ? colours.selection : underMouse() ? colours.line : colours.base;
  painter.setPen(QPen(line, 1));
  painter.setBrush(face);
  painter.drawRoundedRect(frame, metrics::kRadius, metrics::kRadius);
  if (place_ != Place::First) painter.fillRect(QRectF(0, 1, 1, height() - 2), colours.line);
  QFont font = this->font();
  if (isChecked()) font.setWeight(QFont::DemiBold);
  painter.setFont(font);
  painter.setPen(isChecked() ? Theme::readable(colours.link, face, colours.text) : colours.text);
  painter.drawText(rect(), static_cast<int>(Qt::AlignCenter) | Qt::TextShowMnemonic, text());
  if (!hasFocus()) return;
  painter.setPen(QPen(colours.link, 2));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(QRectF(rect()).adjusted(2, 2, -2, -2), metrics::kRadius - 2, metrics::kRadius - 2);
}

StepButton::StepButton(Qt::ArrowType towards) : towards_(towards) {
  setFlat(true);
  setAttribute(Qt::WA_Hover);
  setFixedSize(metrics::kButtonHeight, metrics::kButtonHeight);
}

void StepButton::paintEvent(QPaintEvent*) {
  const Colours& colours = Theme::colours(palette());
  QPainter painter(this);
  drawPlate(painter, *this);
  painter.save();
  painter.translate(QRectF(rect()).center());
  painter.rotate(towards_ == Qt::LeftArrow ? 90 : -90);
  painter.scale(kStepScale, kStepScale);
  drawChevron(painter, {}, isEnabled() ? colours.text : colours.disabled);
  painter.restore();
}

}  // namespace pendra
