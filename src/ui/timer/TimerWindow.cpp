#include "TimerWindow.h"

#include <QCloseEvent>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

#include "ActivityPane.h"
#include "ShownText.h"
#include "TimerHeader.h"
#include "ui/FooterView.h"
#include "ui/GradientDividerSplitView.h"
#include "ui/NoticeLine.h"
#include "ui/RowTableView.h"
#include "ui/Theme.h"
#include "ui/WindowPlace.h"

namespace pendra {

namespace {

constexpr QSize kFirstSize{1120, 800};
constexpr int kFooterGap = 24;
constexpr int kLowWindow = 680;

/// An empty column into which one widget is put later.
QVBoxLayout* place(QWidget* widget) {
  auto* layout = new QVBoxLayout(widget);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  return layout;
}

}  // namespace

TimerWindow::TimerWindow(Notices& notices, QWidget* quickEntry, std::function<bool()> shouldClose,
                         std::function<void()> closed)
    : shouldClose_(std::move(shouldClose)), closed_(std::move(closed)) {
  setObjectName(QStringLiteral("timerWindow"));
  const QSize first = firstSize(*this, kFirstSize);
  resize(first);
  setMinimumWidth(kFirstSize.width() * 2 / 3);

  activities = new ActivityPane;
  activityTable = &activities->table();
  splitView = new GradientDividerSplitView;
  splitView->setObjectName(QStringLiteral("splitView"));
  splitView->addWidget(activities);
  splitView->addWidget(makeFooter());
  splitView->setChildrenCollapsible(false);
  splitView->setSizes({first.height() * 3 / 8, first.height() * 5 / 8});

  header = new TimerHeader;
  auto* content = new QWidget;
  QVBoxLayout* column = place(content);
  column->addWidget(header);
  column->addWidget(quickEntry);
  column->addWidget(new NoticeLine(notices, NoticeLine::In::TimerWindow));
  column->addWidget(splitView, 1);
  setCentralWidget(content);
}

void TimerWindow::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  header->setLow(height() < kLowWindow);
}

/// The log with the line below it.
QWidget* TimerWindow::makeFooter() {
  auto* container = new QWidget;
  container->setMinimumHeight(kFooterHeight);
  QVBoxLayout* column = place(new FooterView(container));
  auto* logPlace = new QWidget;
  log_ = place(logPlace);
  column->addWidget(logPlace, 1);
  column->addWidget(makeStatusLine());
  return container;
}

QWidget* TimerWindow::makeStatusLine() {
  documentState = new ShownText(QStringLiteral("documentState"), tr("Document state"), Theme::quietFont());
  documentState->setForegroundRole(QPalette::PlaceholderText);
  documentState->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
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
  setMinimumWidth(std::max(minimumWidth(), firstSize(*this, pane->minimumSizeHint()).width()));
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
