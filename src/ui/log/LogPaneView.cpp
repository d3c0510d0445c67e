#include "ui/LogPaneView.h"

#include <QVBoxLayout>

#include "ExportProgressDialog.h"
#include "LogFilterRow.h"
#include "LogSummaryView.h"
#include "ui/RowTableView.h"

namespace pendra {

LogPaneView::LogPaneView(Session& session, TimerState& window, QWidget* parent)
    : QWidget(parent), session_(session), myTableView_(std::make_unique<RowTableView>(this)) {
  logController_ = std::make_unique<LogController>(session, window, *myTableView_);
  filters_ = std::make_unique<LogFilterRow>(
      *logController_, session.ports().defaults, [this] { myTableView_->showSelectionOrTop(); }, this);
  setObjectName(QStringLiteral("logView"));
  myTableView_->setObjectName(QStringLiteral("logTableView"));
  myTableView_->setAccessibleName(tr("Time log"));
  myTableView_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  myTableView_->setSource(logController_->tableDataArray());
  myTableView_->setSortDescriptor({QStringLiteral("date"), false});
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(filters_.get());
  column->addWidget(myTableView_.get(), 1);
  connect(myTableView_.get(), &RowTableView::selectionDidChange, this,
          [this] { logController_->tableViewSelectionDidChange(); });
  connect(myTableView_.get(), &RowTableView::cellPressed, this, &LogPaneView::pressCell);
  connect(myTableView_.get(), &RowTableView::rowActivated, this, &LogPaneView::editTimePeriod);
  connect(myTableView_.get(), &RowTableView::emptyButtonClicked, this,
          [this] { logController_->clearFilters(); });
  contents_ = logController_->contentsChanges.observe([this] { showEmptiness(); });
  logController_->awakeFromNib();
  showEmptiness();
}

LogPaneView::~LogPaneView() = default;

QWidget* LogPaneView::makeSummary() { return new LogSummaryView(*logController_); }

void LogPaneView::exportTimeLog() {
  ExportProgressDialog progress(session_.ports().modals, window());
  pendra::exportTimeLog(*logController_, progress);
}

void LogPaneView::pressCell(int row, const QString& identifier) {
  if (identifier != u"edit") return;
  myTableView_->selectRow(row);
  Q_EMIT editTimePeriod();
}

void LogPaneView::showEmptiness() {
  switch (logController_->emptiness()) {
    case LogEmptiness::HasRows:
      return;
    case LogEmptiness::NoEntries:
      return myTableView_->setEmptyState(tr("No time has been tracked yet"));
    case LogEmptiness::FilteredAway:
      return myTableView_->setEmptyState(tr("No entry passes the filters"), tr("Clear Filters"));
  }
}

}  // namespace pendra
