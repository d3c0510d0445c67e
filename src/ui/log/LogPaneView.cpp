#include "ui/LogPaneView.h"

#include <QVBoxLayout>

#include "ExportProgressDialog.h"
#include "LogFilterRow.h"
#include "LogSummaryView.h"
#include "platform/Preferences.h"
#include "platform/Text.h"
#include "ui/HelpPlace.h"
#include "ui/RowTableView.h"
#include "ui/SearchField.h"
#include "ui/TableMemory.h"
#include "ui_core/HelpAnchors.h"
#include "ui_core/TimerState.h"

namespace pendra {

LogPaneView::LogPaneView(Session& session, TimerState& window, QWidget* parent)
    : QWidget(parent), session_(session), log_(window.log()), table_(std::make_unique<RowTableView>()) {
  filters_ = std::make_unique<LogFilterRow>(
      log_, session.ports().defaults, [this] { table_->showSelectionOrTop(); }, this);
  setObjectName(QStringLiteral("logView"));
  table_->setObjectName(QStringLiteral("logTableView"));
  table_->setAccessibleName(tr("Time log"));
  table_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  table_->setTable(log_.rows(), log_.selection());
  table_->standOnGrid();
  table_->setSortOrder({QStringLiteral("date"), false});
  new TableMemory(*table_, session.ports().defaults, preferences::kLogColumns);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  setHelpAnchor(*this, help::kTimeLog);
  column->setSpacing(0);
  column->addWidget(filters_.get());
  column->addWidget(table_.get(), 1);
  connect(table_.get(), &RowTableView::cellPressed, this, &LogPaneView::pressCell);
  connect(table_.get(), &RowTableView::rowActivated, this, &LogPaneView::editTimeEntry);
  connect(table_.get(), &RowTableView::emptyButtonClicked, this, [this] { log_.clearFilters(); });
  filters_->search().setTable(table_.get());
  connect(table_.get(), &RowTableView::editRefused, this, [this](const QString& why) { tell(why); });
  connect(table_.get(), &RowTableView::typingLost, this, [this](const QString& text) {
    tell(formatted(tr("“%@” was typed into the time log and has not been stored."), {text}));
  });
  contents_ = log_.contentsChanges.observe([this] { showEmptiness(); });
  log_.start();
  showEmptiness();
}

LogPaneView::~LogPaneView() = default;

void LogPaneView::tell(const QString& sentence) {
  session_.notices().post(
      {.key = QStringLiteral("typing"), .text = sentence, .actions = {}, .onlyInTimerWindow = true});
}

QWidget* LogPaneView::makeSummary() { return new LogSummaryView(log_); }

void LogPaneView::find() { beginSearch(filters_->search()); }

void LogPaneView::exportTimeLog() {
  ExportProgressDialog progress(session_.ports().modals, window());
  pendra::exportTimeLog(log_, progress);
}

void LogPaneView::pressCell(int row, const QString& identifier) {
  if (identifier == u"state") return log_.startOrStop(row);
  if (identifier != u"edit") return;
  table_->selectRow(row);
  Q_EMIT editTimeEntry();
}

void LogPaneView::showEmptiness() {
  switch (log_.emptiness()) {
    case LogEmptiness::HasRows:
      return;
    case LogEmptiness::NoEntries:
      return table_->setEmptyState(tr("No time has been tracked yet"));
    case LogEmptiness::FilteredAway:
      if (!log_.search().isEmpty()) {
        return table_->setEmptyState(formatted(tr("Nothing here contains “%@”."), {log_.search().trimmed()}),
                                     tr("Clear Filters"));
      }
      return table_->setEmptyState(tr("No entry passes the filters"), tr("Clear Filters"));
  }
}

}  // namespace pendra
