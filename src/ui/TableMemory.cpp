#include "ui/TableMemory.h"

#include <QEvent>
#include <QHeaderView>

#include "ui/RowTableView.h"

namespace pendra {

namespace {
constexpr int kPatience = 300;  // milliseconds
}

TableMemory::TableMemory(RowTableView& view, UserDefaults& defaults, QString key)
    : QObject(&view), view_(view), defaults_(defaults), key_(std::move(key)) {
  QHeaderView* heads = view.horizontalHeader();
  heads->setSectionsMovable(true);
  heads->setFirstSectionMovable(false);  // signs stand before what they are signs of
  if (const auto text = defaults.text(key_)) {
    if (const auto before = readArrangement(*text, view.tableModel())) arrange(*before);
  }
  soon_.setSingleShot(true);
  soon_.setInterval(kPatience);
  connect(&soon_, &QTimer::timeout, this, &TableMemory::store);
  const auto storeSoon = [this] { soon_.start(); };
  connect(&view, &RowTableView::sortChanged, this, storeSoon);
  connect(&view, &RowTableView::widthChosen, this, storeSoon);
  connect(heads, &QHeaderView::sectionMoved, this, storeSoon);
  shownColumns_ = view.tableModel().shownColumnsChanges.observe(storeSoon);
  view.installEventFilter(this);
  forgotten_ = defaults.changesOf(key_).observe([this] {
    if (defaults_.text(key_).value_or(QString()).isEmpty()) reset();
  });
}

void TableMemory::reset() {
  TableModel& table = view_.tableModel();
  QHeaderView& heads = *view_.horizontalHeader();
  for (int column = 0; column < heads.count(); ++column) {
    heads.moveSection(heads.visualIndex(column), column);
    if (table.head(column).canHide) table.setHidden(table.head(column).identifier, false);
  }
  view_.chooseWidths({});
}

bool TableMemory::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Hide && soon_.isActive()) store();
  return QObject::eventFilter(watched, event);
}

TableArrangement TableMemory::arrangement() const {
  const TableModel& table = view_.tableModel();
  const QHeaderView& heads = *view_.horizontalHeader();
  TableArrangement now{.sort = table.sortOrder(), .order = {}, .hidden = {}, .widths = view_.chosenWidths()};
  for (int place = 0; place < heads.count(); ++place) {
    const ColumnHead& head = table.head(heads.logicalIndex(place));
    if (heads.sectionsMoved()) now.order << head.identifier;
    if (head.canHide && table.isHidden(head.identifier)) now.hidden << head.identifier;
  }
  return now;
}

void TableMemory::arrange(const TableArrangement& arrangement) {
  TableModel& table = view_.tableModel();
  QHeaderView& heads = *view_.horizontalHeader();
  for (qsizetype place = 0; place < arrangement.order.size(); ++place) {
    const int column = table.columnOf(arrangement.order[place]).value_or(0);
    heads.moveSection(heads.visualIndex(column), static_cast<int>(place));
  }
  for (const QString& column : arrangement.hidden) table.setHidden(column, true);
  view_.chooseWidths(arrangement.widths);
  if (!arrangement.sort.key.isEmpty()) view_.setSortOrder(arrangement.sort);
}

void TableMemory::store() {
  soon_.stop();
  if (const QString text = textOf(arrangement()); defaults_.text(key_).value_or(QString()) != text) {
    defaults_.setText(key_, text);
  }
}

}  // namespace pendra
