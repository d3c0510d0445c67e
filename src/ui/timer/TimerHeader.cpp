#include "TimerHeader.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPushButton>

#include "MenuButton.h"
#include "RunningPills.h"
#include "ShownText.h"
#include "ui/Buttons.h"
#include "ui/TabularText.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kHeight = 96;
constexpr int kLowHeight = 76;
constexpr int kHintRise = 9;  // from the foot of the time's box to its base line
constexpr int kTextsShare = 3;
constexpr int kPillsShare = 4;  // as long as there are any

QPushButton* titled(const QString& objectName, const QString& title, const QString& accessibleName) {
  auto* button = new QPushButton(title);
  button->setObjectName(objectName);
  button->setAccessibleName(accessibleName);
  return button;
}

}  // namespace

TimerHeader::TimerHeader()
    : startStopButton(new BigButton),
      elapsedTimeDisplay(new TabularLabel),
      lastEntry(new QLabel(tr("last entry"))),
      customerJobLabel(
          new ShownText(QStringLiteral("customerJobLabel"), tr("Selected activity"), Theme::controlFont())),
      latestButton(new MenuButton(QStringLiteral("latestButton"), tr("Latest activities"))),
      pills(new RunningPills),
      addActivityButton(titled(QStringLiteral("addActivityButton"), tr("Add Activity…"), tr("Add activity"))),
      submitTimeButton(titled(QStringLiteral("submitTimeButton"), tr("Send Time…"), tr("Send time"))) {
  startStopButton->setObjectName(QStringLiteral("startStopButton"));
  startStopButton->setAccessibleName(tr("Start or stop timer"));
  elapsedTimeDisplay->setObjectName(QStringLiteral("elapsedTimeDisplay"));
  elapsedTimeDisplay->setAccessibleName(tr("Elapsed time"));
  lastEntry->setObjectName(QStringLiteral("lastEntry"));
  lastEntry->setFont(Theme::quietFont());
  lastEntry->setForegroundRole(QPalette::PlaceholderText);
  lastEntry->setContentsMargins(0, 0, 0, kHintRise);
  lastEntry->hide();  // nothing is selected yet
  customerJobLabel->setForegroundRole(QPalette::PlaceholderText);
  latestButton->setToolTip(tr("Start one of the latest activities (Alt+Down on the button)"));
  makePrimary(*submitTimeButton);

  auto* row = new QHBoxLayout(this);
  // The button's own room for its ring lies within the margin.
  row->setContentsMargins(metrics::kSide - metrics::kGrid / 2, 0, metrics::kSide, 0);
  row->setSpacing(metrics::kSide - metrics::kGrid / 2);
  row->addWidget(startStopButton);
  row->addLayout(makeTexts(), kTextsShare);
  row->addWidget(pills, kPillsShare);
  row->addWidget(addActivityButton);
  row->addWidget(submitTimeButton);
  low_ = true;
  setLow(false);
}

QBoxLayout* TimerHeader::makeTexts() {
  auto* time = new QHBoxLayout;
  time->setSpacing(metrics::kGrid + 2);
  time->addWidget(elapsedTimeDisplay);
  time->addWidget(lastEntry, 0, Qt::AlignBottom);
  time->addStretch(1);
  auto* name = new QHBoxLayout;
  name->setSpacing(0);
  name->addWidget(customerJobLabel);
  name->addWidget(latestButton);
  name->addStretch(1);
  auto* texts = new QVBoxLayout;
  texts->setSpacing(0);
  texts->addStretch();
  texts->addLayout(time);
  texts->addLayout(name);
  texts->addStretch();
  return texts;
}

void TimerHeader::setLow(bool low) {
  if (low == low_) return;
  low_ = low;
  startStopButton->setSmall(low);
  elapsedTimeDisplay->setFont(Theme::timeFont(startStopButton->isRunning(), low));
  fitHeight();
}

/// Larger letters need more of it.
void TimerHeader::fitHeight() {
  const int texts = elapsedTimeDisplay->sizeHint().height() + customerJobLabel->sizeHint().height();
  setFixedHeight(std::max(low_ ? kLowHeight : kHeight, texts));
}

bool TimerHeader::event(QEvent* event) {
  if (event->type() == QEvent::LayoutRequest) fitHeight();
  return QWidget::event(event);
}

void TimerHeader::showRunning(bool running) {
  startStopButton->setRunning(running);
  elapsedTimeDisplay->setFont(Theme::timeFont(running, low_));
}

void TimerHeader::showElapsedTime(const QString& text) { showText(*elapsedTimeDisplay, text); }

void TimerHeader::showIsLastEntry(bool isLastEntry) { lastEntry->setVisible(isLastEntry); }

/// Without a name the arrow would hang in the air: it says itself what it opens.
void TimerHeader::showName(const QString& name) {
  showText(*customerJobLabel, name);
  customerJobLabel->setHidden(name.isEmpty());
  latestButton->setText(name.isEmpty() ? latestButton->accessibleName() : QString());
}

}  // namespace pendra
