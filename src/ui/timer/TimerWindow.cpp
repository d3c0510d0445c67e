#include "TimerWindow.h"

#include <QCloseEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/Buttons.h"
#include "ui/ChromeViews.h"
#include "ui/GradientDividerSplitView.h"
#include "ui/NoticeLine.h"
#include "ui/RowTableView.h"
#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr QSize kFirstSize{1120, 800};
constexpr int kFooterGap = 24;

/// A label of the window that exposes its text to assistive technology as its description. Where it lacks
/// room it is cut with an ellipsis, and never makes the window wider.
class ShownText final : public QLabel {
 public:
  ShownText(const QString& objectName, const QString& accessibleName, const QFont& font) {
    setObjectName(objectName);
    setAccessibleName(accessibleName);
    setFont(font);
    setTextFormat(Qt::PlainText);
  }

  [[nodiscard]] QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const QRect room = contentsRect();
    style()->drawItemText(&painter, room, static_cast<int>(alignment()), palette(), isEnabled(),
                          fontMetrics().elidedText(text(), Qt::ElideRight, room.width()), foregroundRole());
  }
};

/// An empty column into which one widget is put later.
QVBoxLayout* place(QWidget* widget) {
  auto* layout = new QVBoxLayout(widget);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  return layout;
}

}  // namespace

TimerWindow::TimerWindow(Notices& notices, std::function<bool()> shouldClose, std::function<void()> closed)
    : shouldClose_(std::move(shouldClose)), closed_(std::move(closed)) {
  setObjectName(QStringLiteral("timerWindow"));
  resize(kFirstSize);
  setMinimumWidth(kFirstSize.width() * 2 / 3);

  activityTable = new RowTableView;
  activityTable->setObjectName(QStringLiteral("activityTable"));
  activityTable->setAccessibleName(tr("Activities"));
  activityTable->setEmptyState(tr("Add an activity to start timing"), tr("Add Activity…"),
                               tr("Read How It Works"));

  splitView = new GradientDividerSplitView;
  splitView->setObjectName(QStringLiteral("splitView"));
  splitView->addWidget(activityTable);
  splitView->addWidget(makeFooter());
  splitView->setChildrenCollapsible(false);
  splitView->setSizes({kFirstSize.height() * 3 / 8, kFirstSize.height() * 5 / 8});

  auto* content = new QWidget;
  QVBoxLayout* column = place(content);
  column->addWidget(makeHeader());
  column->addWidget(new NoticeLine(notices, NoticeLine::In::TimerWindow));
  column->addWidget(splitView, 1);
  setCentralWidget(content);
}

QWidget* TimerWindow::makeHeader() {
  startStopButton = new BigButton;
  startStopButton->setObjectName(QStringLiteral("startStopButton"));
  startStopButton->setAccessibleName(tr("Start or stop timer"));
  elapsedTimeDisplay =
      new ShownText(QStringLiteral("elapsedTimeDisplay"), tr("Elapsed time"), Theme::timeFont());
  customerJobLabel =
      new ShownText(QStringLiteral("customerJobLabel"), tr("Selected activity"), Theme::controlFont());
  customerJobLabel->setForegroundRole(QPalette::PlaceholderText);
  runningCount = new QLabel;
  runningCount->setObjectName(QStringLiteral("runningCount"));
  runningCount->setAccessibleName(tr("Running timers"));
  runningCount->setFont(Theme::quietFont());
  runningCount->hide();
  addActivityButton = new QPushButton(tr("Add Activity…"));
  addActivityButton->setObjectName(QStringLiteral("addActivityButton"));
  addActivityButton->setAccessibleName(tr("Add activity"));
  submitTimeButton = new QPushButton(tr("Send Time…"));
  submitTimeButton->setObjectName(QStringLiteral("submitTimeButton"));
  submitTimeButton->setAccessibleName(tr("Send time"));
  makePrimary(*submitTimeButton);

  auto* texts = new QVBoxLayout;
  texts->setSpacing(0);
  texts->addStretch();
  texts->addWidget(elapsedTimeDisplay);
  texts->addWidget(customerJobLabel);
  texts->addStretch();

  auto* container = new QWidget;
  container->setFixedHeight(qRound(kTopViewHeight));
  auto* row = new QHBoxLayout(new PendraTopView(container));
  // The button's own room for its ring lies within the margin.
  row->setContentsMargins(metrics::kSide - metrics::kGrid / 2, 0, metrics::kSide, 0);
  row->setSpacing(metrics::kSide - metrics::kGrid / 2);
  row->addWidget(startStopButton);
  row->addLayout(texts, 1);
  row->addWidget(runningCount);
  row->addWidget(addActivityButton);
  row->addWidget(submitTimeButton);
  return container;
}

/// The log with the line below it.
QWidget* TimerWindow::makeFooter() {
  auto* container = new QWidget;
  container->setMinimumHeight(qRound(kBottomViewHeight));
  QVBoxLayout* column = place(new PendraBottomView(container));
  auto* logPlace = new QWidget;
  log_ = place(logPlace);
  column->addWidget(logPlace, 1);
  column->addWidget(makeStatusLine());
  return container;
}

QWidget* TimerWindow::makeStatusLine() {
  documentState = new ShownText(QStringLiteral("documentState"), tr("Document state"), Theme::quietFont());
  documentState->setForegroundRole(QPalette::PlaceholderText);
  documentState->setMinimumWidth(documentState->fontMetrics().horizontalAdvance(tr("Saved 00:00")) + 2);
  auto* line = new QWidget;
  line->setFixedHeight(metrics::kFooter);
  auto* row = new QHBoxLayout(line);
  row->setContentsMargins(metrics::kSide, 0, metrics::kSide, 0);
  auto* summaryPlace = new QWidget;
  summary_ = place(summaryPlace);
  row->addWidget(summaryPlace);
  row->addStretch();
  auto* glancePlace = new QWidget;
  glance_ = place(glancePlace);
  row->addWidget(glancePlace);
  row->addSpacing(kFooterGap);
  row->addWidget(documentState);
  return line;
}

void TimerWindow::setLog(QWidget* pane, QWidget* summary, QWidget* glance) {
  log_->addWidget(pane);
  setMinimumWidth(std::max(minimumWidth(), pane->minimumSizeHint().width()));
  summary_->addWidget(summary);
  glance_->addWidget(glance);
}

void TimerWindow::closeEvent(QCloseEvent* event) {
  if (!shouldClose_()) {
    event->ignore();
    return;
  }
  event->accept();
  closed_();
}

}  // namespace pendra
