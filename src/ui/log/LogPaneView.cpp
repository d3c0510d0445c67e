#include "ui/LogPaneView.h"

#include <QVBoxLayout>

#include "ExportProgressDialog.h"
#include "LogFilterRow.h"
#include "LogSummaryView.h"
#include "ui/RowTableView.h"

namespace pendra {

LogPaneView::LogPaneView(Session& session, TimerState& window, QWidget* parent)
    : QWidget(parent), session_(session), table_(std::make_unique<RowTableView>(this)) {
  logController_ = std::make_unique<LogController>(session, window, *table_);
  filters_ = std::make_unique<LogFilterRow>(
      *logController_, session.ports().defaults, [this] { table_->showSelectionOrTop(); }, this);
  setObjectName(QStringLiteral("logView"));
  table_->setObjectName(QStringLiteral("logTableView"));
  table_->setAccessibleName(tr("Time log"));
  table_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  table_->setSource(logController_->rows());
  table_->setSortOrder({QStringLiteral("date"), false});
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(filters_.get());
  column->addWidget(table_.get(), 1);
  connect(table_.get(), &RowTableView::selectionChanged, this,
          [this] { logController_->selectionChanged(); });
  connect(table_.get(), &RowTableView::cellPressed, this, &LogPaneView::pressCell);
  connect(table_.get(), &RowTableView::rowActivated, this, &LogPaneView::editTimeEntry);
  connect(table_.get(), &RowTableView::emptyButtonClicked, this, [this] { logController_->clearFilters(); });
  contents_ = logController_->contentsChanges.observe([this] { showEmptiness(); });
  logController_->start();
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
  table_->selectRow(row);
  Q_EMIT editTimeEntry();
}

void LogPaneView::showEmptiness() {
  switch (logController_->emptiness()) {
    case LogEmptiness::HasRows:
      return;
    case LogEmptiness::NoEntries:
      return table_->setEmptyState(tr("No time has been tracked yet"));
    case LogEmptiness::FilteredAway:
      return table_->setEmptyState(tr("No entry passes the filters"), tr("Clear Filters"));
  }
}

}  // namespace pendra
