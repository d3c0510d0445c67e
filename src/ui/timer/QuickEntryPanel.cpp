#include "QuickEntryPanel.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include "CompletionList.h"
#include "QuickReadingLabel.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kWidest = 560;
constexpr int kEdge = 5;
constexpr int kShadow = 6;  // around the panel, for its shadow
constexpr int kUnder = 4;   // below the field
constexpr int kWordsAt = 38;
constexpr double kRadius = 8;
constexpr int kDarkestShadow = 14;

}  // namespace

QuickEntryPanel::QuickEntryPanel(QWidget* window)
    : QFrame(window),
      reading_(new QuickReadingLabel),
      line_(new QWidget),
      hint_(new QLabel(tr("Or choose with ↓"))),
      completions_(new CompletionList) {
  setObjectName(QStringLiteral("quickEntryPanel"));
  setFocusPolicy(Qt::NoFocus);
  line_->setFixedHeight(1);
  hint_->setFont(Theme::quietFont());
  hint_->setForegroundRole(QPalette::PlaceholderText);
  hint_->setContentsMargins(kWordsAt, metrics::kGrid, 0, kUnder);
  auto* column = new QVBoxLayout(this);
  const int margin = kShadow + kEdge;
  column->setContentsMargins(margin, margin, margin, margin);
  column->setSpacing(0);
  column->addWidget(reading_);
  column->addSpacing(kEdge);
  column->addWidget(line_);
  column->addWidget(hint_);
  column->addWidget(completions_);
  connect(completions_, &QListWidget::currentRowChanged, this, [this](int row) {
    reading_->setChosen(row < 0);
    Q_EMIT chosenChanged();
  });
  connect(completions_, &QListWidget::itemClicked, this, &QuickEntryPanel::picked);
  hide();
}

void QuickEntryPanel::say(const QuickReadingTexts& texts, std::vector<QuickCompletion> completions) {
  completions_->offer(std::move(completions));
  const bool hasCompletions = completions_->count() > 0;
  line_->setVisible(hasCompletions);
  hint_->setVisible(hasCompletions);
  completions_->setVisible(hasCompletions);
  reading_->setChosen(true);
  sayReading(texts);
}

void QuickEntryPanel::sayReading(const QuickReadingTexts& texts) {
  reading_->say(texts);
  reading_->setVisible(!texts.deed.isEmpty());
}

void QuickEntryPanel::placeUnder(const QRect& field) {
  const int width = std::min(kWidest, field.width()) + 2 * kShadow;
  const QPoint corner = field.bottomLeft() + QPoint(-kShadow, 1 + kUnder - kShadow);
  const int height = std::min(layout()->totalHeightForWidth(width), parentWidget()->height() - corner.y());
  setGeometry(QRect(corner, QSize(width, height)));
  show();
  raise();
}

void QuickEntryPanel::paintEvent(QPaintEvent*) {
  const Colours& colours = Theme::colours(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF plate = QRectF(rect()).adjusted(kShadow, kShadow, -kShadow, -kShadow);
  painter.setPen(Qt::NoPen);
  for (int out = kShadow; out > 0; --out) {
    painter.setBrush(QColor(0, 0, 0, kDarkestShadow / (out + 1) + 2));
    painter.drawRoundedRect(plate.adjusted(-out, -out + 2, out, out), kRadius + out, kRadius + out);
  }
  painter.setPen(QPen(colours.dayLine, 1));
  painter.setBrush(colours.base);
  painter.drawRoundedRect(plate.adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
  if (line_->isVisible()) painter.fillRect(line_->geometry(), colours.line);
}

}  // namespace pendra
