#include "ActivityPane.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>

#include "platform/Text.h"
#include "platform/Translation.h"
#include "ui/Buttons.h"
#include "ui/Grid.h"
#include "ui/RowTableView.h"
#include "ui/SearchField.h"
#include "ui/Theme.h"
#include "ui_core/TimerState.h"

namespace pendra {

namespace {
constexpr int kSearchWidth = 176;
}

ActivityPane::ActivityPane()
    : table_(new RowTableView),
      search_(new SearchField(tr("Find an activity"))),
      leftOut_(new QLabel),
      showAll_(new QPushButton(tr("Show All"))),
      rest_(makeRest()) {
  table_->setObjectName(QStringLiteral("activityTable"));
  table_->setAccessibleName(tr("Activities"));
  table_->reportTyping();
  search_->setObjectName(QStringLiteral("activitySearch"));
  search_->setTable(table_);
  search_->setFixedWidth(Theme::wide(kSearchWidth));
  search_->setFixedHeight(metrics::kButtonHeight);
  setBackgroundRole(QPalette::Base);
  setAutoFillBackground(true);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(table_, 1);
  column->addWidget(rest_);
  column->addStretch();
}

QWidget* ActivityPane::makeRest() {
  auto* rest = new QWidget;
  leftOut_->setObjectName(QStringLiteral("activitiesLeftOut"));
  leftOut_->setForegroundRole(QPalette::PlaceholderText);
  showAll_->setObjectName(QStringLiteral("showAllActivities"));
  showAll_->setAccessibleName(tr("Show All"));
  makeQuiet(*showAll_);
  connect(showAll_, &QPushButton::clicked, this, &ActivityPane::showAll);
  auto* row = new QHBoxLayout(rest);
  row->setContentsMargins(grid::startOf(grid::Place::Customer, 0), metrics::kGrid / 2, metrics::kSide,
                          metrics::kGrid / 2);
  row->setSpacing(0);
  row->addWidget(leftOut_);
  row->addWidget(showAll_);
  row->addStretch();
  rest->hide();
  return rest;
}

void ActivityPane::follow(TimerState& state) {
  state_ = &state;
  connect(search_, &QLineEdit::textChanged, this,
          [this](const QString& typed) { state_->searchActivities(typed); });
  connect(table_, &RowTableView::lettersTyped, this, [this](const QString& letters) {
    search_->setFocus(Qt::OtherFocusReason);
    search_->insert(letters);
  });
  connect(table_, &RowTableView::emptyButtonClicked, this, [this] {
    if (state_->isSearching()) return showAll();
    Q_EMIT addAsked();
  });
  listedChanges_ = state.listedChanges.observe([this] { showListed(); });
  showListed();
}

void ActivityPane::showListed() {
  const bool searches = state_->isSearching();
  if (!searches) {
    table_->setEmptyState(tr("Add an activity to start timing"), tr("Add Activity…"),
                          tr("Read How It Works"));
    if (!search_->text().trimmed().isEmpty()) search_->clear();  // it was given up elsewhere
  } else {
    table_->setEmptyState(tr("Nothing here contains “%1”.").arg(search_->text()), tr("Show All"));
  }
  const int rows = table_->tableModel().rowCount();
  const int leftOut = state_->leftOut();
  leftOut_->setText(counted(leftOut, "1 more is not shown.", "%Ln more are not shown."));
  const bool saysRest = searches && leftOut > 0 && rows > 0;
  rest_->setVisible(saysRest);
  // What was found is as high as its rows, so that the line stands right below them.
  const int found =
      table_->horizontalHeader()->sizeHint().height() + rows * table_->verticalHeader()->defaultSectionSize();
  table_->setMaximumHeight(saysRest ? found : QWIDGETSIZE_MAX);
}

void ActivityPane::showAll() {
  search_->clear();
  table_->setFocus(Qt::OtherFocusReason);
}

}  // namespace pendra
