#include "LogSummaryView.h"

#include <QHBoxLayout>
#include <QLabel>

#include "model/DurationText.h"
#include "ui/TabularText.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kWordGap = 5;

TabularLabel* figures() {
  auto* label = new TabularLabel;
  QFont font = Theme::controlFont();
  font.setWeight(QFont::DemiBold);
  label->setFont(font);
  return label;
}

QLabel* words(const QString& text = {}) {
  auto* label = new QLabel(text);
  label->setFont(Theme::controlFont());
  label->setForegroundRole(QPalette::PlaceholderText);
  return label;
}

}  // namespace

LogSummaryView::LogSummaryView(LogController& log)
    : log_(log), count_(figures()), noun_(words()), time_(figures()), selected_(words(tr("selected"))) {
  setObjectName(QStringLiteral("logSummary"));
  setAccessibleName(tr("Listed time"));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(kWordGap);
  for (QWidget* part : {static_cast<QWidget*>(count_), static_cast<QWidget*>(noun_),
                        static_cast<QWidget*>(time_), static_cast<QWidget*>(selected_)}) {
    row->addWidget(part);
  }
  contents_ = log.contentsChanges.observe([this] { showSummary(); });
  showSummary();
}

void LogSummaryView::showSummary() {
  const LogSummary summary = log_.summary();
  const QString count = QString::number(summary.entries);
  const QString noun = summary.entries == 1 ? tr("entry,") : tr("entries,");
  const QString time = durationText(summary.seconds);
  count_->setText(count);
  noun_->setText(noun);
  time_->setText(time);
  selected_->setVisible(log_.numberOfSelectedRows() > 0);
  setAccessibleDescription(count + u' ' + noun + u' ' + time);
}

}  // namespace pendra
