#include "ui/CompletedWindow.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>

#include "platform/Preferences.h"
#include "ui/Buttons.h"
#include "ui/HelpPlace.h"
#include "ui/RowTableView.h"
#include "ui/SearchField.h"
#include "ui/Theme.h"
#include "ui/WindowPlace.h"
#include "ui_core/HelpAnchors.h"

namespace pendra {

namespace {

constexpr QSize kFirstSize(760, 480);
constexpr int kSearchWidth = 240;

}  // namespace

CompletedWindow::CompletedWindow(const WindowFrame& frame)
    : AppWindow(frame, tr("Completed Activities")), completed_(frame.session) {
  setObjectName(QStringLiteral("completedWindow"));
  setHelpAnchor(*this, help::kCompletedActivities);
  setContent(makeContent());
  connectTable();
  resize(kFirstSize);
  new WindowPlace(*this, frame.session.ports().defaults, preferences::kCompletedPlace);
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, [this] {
    if (search_->text().isEmpty()) return void(close());
    search_->clear();
    search_->setFocus();
  });
  showState();
  search_->setFocus();
}

CompletedWindow::~CompletedWindow() {
  table_->dropTable();  // the rows go before the view
}

QWidget* CompletedWindow::makeContent() {
  search_ = new SearchField(tr("Search"));
  search_->setObjectName(QStringLiteral("searchCompleted"));
  search_->setMaximumWidth(kSearchWidth);
  table_ = new RowTableView;
  table_->setObjectName(QStringLiteral("completedTable"));
  table_->setAccessibleName(tr("Completed activities"));
  search_->setTable(table_);
  table_->reportTyping();
  table_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  makeCurrent_ = new QPushButton(tr("Make Current"));
  makeCurrent_->setObjectName(QStringLiteral("makeCurrent"));
  makeCurrent_->setAccessibleName(tr("Make Current"));
  makePrimary(*makeCurrent_);

  auto* top = new QHBoxLayout;
  top->setContentsMargins(metrics::kSide, metrics::kGrid, metrics::kSide, metrics::kGrid);
  top->addWidget(search_, 1);
  top->addStretch();
  top->addWidget(makeCurrent_);
  auto* content = new QWidget;
  auto* column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addLayout(top);
  column->addWidget(table_, 1);
  return content;
}

void CompletedWindow::connectTable() {
  table_->setTable(completed_.table(), completed_.selection());
  const auto makeCurrent = [this] { completed_.makeCurrent(); };
  connect(search_, &QLineEdit::textChanged, this, [this](const QString& typed) {
    completed_.search(typed);
    if (table_->selectedRow() < 0 && completed_.table().rowCount() > 0) table_->selectRow(0);
    showState();
  });
  connect(table_, &RowTableView::lettersTyped, this, [this](const QString& letters) {
    search_->setFocus(Qt::OtherFocusReason);
    search_->insert(letters);
  });
  connect(makeCurrent_, &QPushButton::clicked, this, makeCurrent);
  connect(table_, &RowTableView::rowActivated, this, makeCurrent);
  connect(table_, &RowTableView::selectionChanged, this, &CompletedWindow::showState);
  connect(table_, &RowTableView::emptyButtonClicked, search_, &QLineEdit::clear);
  const QAbstractItemModel* rows = &completed_.table();
  for (const auto change : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved}) {
    connect(rows, change, this, &CompletedWindow::showState);
  }
  connect(rows, &QAbstractItemModel::modelReset, this, &CompletedWindow::showState);
}

void CompletedWindow::showState() {
  makeCurrent_->setEnabled(table_->selectedRow() >= 0);
  if (completed_.hasAny()) {
    table_->setEmptyState(tr("Nothing here contains “%1”.").arg(search_->text()), tr("Show All"));
  } else {
    table_->setEmptyState(tr("No activity is complete. Those that you mark as complete are found here."));
  }
}

}  // namespace pendra
