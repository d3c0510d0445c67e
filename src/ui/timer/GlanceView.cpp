#include "GlanceView.h"

#include <QHBoxLayout>
#include <QPainter>
#include <cmath>

#include "model/DurationText.h"
#include "platform/Translation.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kWordGap = 6;
constexpr int kGapBetweenSums = 24;

}  // namespace

SumLabel::SumLabel(const QString& objectName, const QString& word) {
  setObjectName(objectName);
  setAccessibleName(word);
  setFont(Theme::controlFont());
}

QFont SumLabel::figuresFont() const {
  QFont font = this->font();
  font.setWeight(QFont::DemiBold);
  return font;
}

int SumLabel::wordWidth() const { return fontMetrics().horizontalAdvance(accessibleName()) + kWordGap; }

QSize SumLabel::sizeHint() const {
  const qreal figures = tabularWidth(figuresFont(), text());
  return {wordWidth() + static_cast<int>(std::ceil(figures)), fontMetrics().height()};
}

void SumLabel::show(Length sum, const QString& description) {
  const QString figures = durationText(secondsOf(sum));
  setText(figures);
  setAccessibleDescription(description.isEmpty() ? figures : figures + u", " + description);
}

void SumLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::PlaceholderText));
  drawTabular(painter, contentsRect(), Qt::AlignLeft, accessibleName());
  painter.setPen(palette().color(foregroundRole()));
  painter.setFont(figuresFont());
  drawTabular(painter, contentsRect().adjusted(wordWidth(), 0, 0, 0), Qt::AlignLeft, text());
}

GlanceView::GlanceView(HoursAtAGlance& hours, Session& session)
    : hours_(hours),
      session_(session),
      today_(new SumLabel(QStringLiteral("todaySum"), tr("Today"))),
      week_(new SumLabel(QStringLiteral("weekSum"), tr("This week"))),
      notSent_(new SumLabel(QStringLiteral("notSentSum"), tr("Not sent"))) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(kGapBetweenSums);
  for (SumLabel* sum : {today_, week_, notSent_}) row->addWidget(sum);
  observations_.push_back(hours.changes.observe([this] { showHours(); }));
  for (Notifier* news : {&session.standaloneChanges(), &session.documentChanges()}) {
    observations_.push_back(news->observe([this] { showWhatApplies(); }));
  }
  showWhatApplies();
}

void GlanceView::showHours() {
  const Glance& glance = hours_.glance();
  today_->show(glance.today);
  week_->show(glance.week);
  if (session_.isStandalone()) return;  // nobody hears of what is not shown
  const int unsent = glance.unsentEntries;
  notSent_->show(glance.notSent, counted(unsent, "1 entry", "%Ln entries"));
}

/// What is kept by hand is never sent.
void GlanceView::showWhatApplies() {
  notSent_->setVisible(!session_.isStandalone());
  showHours();
}

}  // namespace pendra
