#include "LogSummaryView.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "model/DurationText.h"
#include "platform/Translation.h"
#include "ui/Labels.h"
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

QLabel* quietLabel(const QString& text = {}) {
  return makeLabel(text, {.font = Theme::controlFont(), .isQuiet = true});
}

}  // namespace

LogSummaryView::LogSummaryView(LogController& log)
    : log_(log),
      count_(figures()),
      noun_(quietLabel()),
      time_(figures()),
      selected_(quietLabel(tr("selected"))),
      hidden_(quietLabel()),
      showAll_(new QPushButton(tr("Show All"))) {
  setObjectName(QStringLiteral("logSummary"));
  setAccessibleName(tr("Listed time"));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(kWordGap);
  for (QWidget* part : std::initializer_list<QWidget*>{count_, noun_, time_, selected_, hidden_, showAll_}) {
    row->addWidget(part);
  }
  hidden_->setObjectName(QStringLiteral("hiddenBySearch"));
  hidden_->setContentsMargins(2 * metrics::kGrid, 0, 0, 0);
  showAll_->setObjectName(QStringLiteral("showAllEntries"));
  showAll_->setAccessibleName(tr("Show All"));
  showAll_->setFont(Theme::controlFont());
  showAll_->setFlat(true);
  connect(showAll_, &QPushButton::clicked, this, [this] { log_.setSearch({}); });
  contents_ = log.contentsChanges.observe([this] { showSummary(); });
  showSummary();
}

void LogSummaryView::showSummary() {
  const LogSummary summary = log_.summary();
  const QString count = QLocale().toString(summary.entries);
  const QString noun = summary.entries == 1 ? tr("entry,") : tr("entries,");
  const QString time = durationText(summary.seconds);
  count_->setText(count);
  noun_->setText(noun);
  time_->setText(time);
  selected_->setVisible(log_.selectedCount() > 0);
  const int hidden = log_.hiddenBySearch();
  const QString held = counted(hidden, "1 is hidden by the search", "%Ln are hidden by the search");
  hidden_->setText(held);
  hidden_->setVisible(hidden > 0);
  showAll_->setVisible(hidden > 0);
  const QString said = count + u' ' + noun + u' ' + time;
  setAccessibleDescription(hidden > 0 ? said + u", " + held : said);
}

}  // namespace pendra
