#include "ui/RowTableView.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include "ui/Theme.h"
#include "ui_core/RowTable.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

struct Row {
  quint64 id;
  QString name;
  bool running = false;
};

class Table : public testing::Test {
 protected:
  Table() {
    rows.setRows({{1, u"c"_s}, {2, u"a"_s, true}, {3, u"b"_s}});
    view.setTable(rows);
    view.resize(500, 300);
    view.show();
    std::ignore = QTest::qWaitForWindowExposed(&view);
  }
  QPoint middleOf(int row, int column) const {
    return view.visualRect(view.model()->index(row, column)).center();
  }
  void click(int row, int column) {
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, middleOf(row, column));
  }
  void clickHead(int column) {
    auto* heads = view.horizontalHeader();
    const QPoint place(heads->sectionViewportPosition(column) + 8, heads->height() / 2);
    QTest::mouseClick(heads->viewport(), Qt::LeftButton, Qt::NoModifier, place);
  }

  RowTable<Row> rows{
      {{.head = {.identifier = u"startstop"_s, .kind = CellKind::StartStop, .sortable = false}},
       {.head = {.identifier = u"name"_s, .title = u"Name"_s, .weight = 1},
        .text = [](const Row& row) { return row.name; },
        .editable = [](const Row&) { return true; }},
       {.head = {.identifier = u"edit"_s, .kind = CellKind::Link, .sortable = false, .widest = {u"Edit"_s}},
        .text = [](const Row&) { return u"Edit"_s; }}},
      {.identity = [](const Row& row) { return row.id; },
       .running = [](const Row& row) { return row.running; }}};
  RowTableView view;
};

TEST_F(Table, KeepsManySelectedRowsOverASort) {
  view.setSelectionMode(QAbstractItemView::ExtendedSelection);
  view.selectRows({0, 1});
  clickHead(1);
  EXPECT_THAT(view.selectedRows(), ElementsAre(0, 2));
  clickHead(1);
  EXPECT_EQ(rows.sortOrder(), (SortOrder{u"name"_s, false}));
  EXPECT_THAT(view.selectedRows(), ElementsAre(0, 2));
}

TEST_F(Table, AHeadThatCannotSortReportsItsClickOnly) {
  QSignalSpy clicks(&view, &RowTableView::headClicked);
  clickHead(0);
  ASSERT_EQ(clicks.count(), 1);
  EXPECT_EQ(clicks[0][0].toString(), u"startstop"_s);
  EXPECT_TRUE(rows.sortOrder().key.isEmpty());
}

TEST_F(Table, OnePressActsAndSelectsItsRow) {
  QSignalSpy presses(&view, &RowTableView::cellPressed);
  QTest::mousePress(view.viewport(), Qt::LeftButton, Qt::NoModifier, middleOf(0, 0));
  QTest::mouseRelease(view.viewport(), Qt::LeftButton, Qt::NoModifier, middleOf(1, 0));
  EXPECT_EQ(presses.count(), 0) << "it ended elsewhere";
  click(1, 0);
  click(2, 2);
  ASSERT_EQ(presses.count(), 2);
  EXPECT_EQ(presses[0], (QList<QVariant>{1, u"startstop"_s}));
  EXPECT_EQ(presses[1], (QList<QVariant>{2, u"edit"_s}));
  EXPECT_THAT(view.selectedRows(), ElementsAre(2));
}

TEST_F(Table, TheKeyboardPressesAndActivates) {
  QSignalSpy presses(&view, &RowTableView::cellPressed);
  QSignalSpy activations(&view, &RowTableView::rowActivated);
  view.setCurrentIndex(view.model()->index(1, 2));
  QTest::keyClick(&view, Qt::Key_Space);
  QTest::keyClick(&view, Qt::Key_Return);
  EXPECT_EQ(presses.count(), 2);
  EXPECT_EQ(activations.count(), 0);
  view.setCurrentIndex(view.model()->index(1, 1));
  QTest::keyClick(&view, Qt::Key_Return);
  QTest::keyClick(&view, Qt::Key_Space);
  EXPECT_EQ(presses.count(), 2);
  EXPECT_EQ(activations.count(), 1);
}

TEST_F(Table, TheFirstKeyTakesTheFirstRowAndNothingMore) {
  QSignalSpy activated(&view, &RowTableView::rowActivated);
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Return}) {
    view.clearSelection();
    view.setCurrentIndex({});
    view.clearFocus();
    view.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&view, key);
    EXPECT_THAT(view.selectedRows(), ElementsAre(0));
  }
  EXPECT_EQ(activated.count(), 0);
  QTest::keyClick(&view, Qt::Key_Down);
  EXPECT_THAT(view.selectedRows(), ElementsAre(1));
  for (const auto& [key, row] : {std::pair(Qt::Key_Home, 0), std::pair(Qt::Key_End, 2)}) {
    view.setCurrentIndex(view.model()->index(row, 0));
    view.clearSelection();
    QTest::keyClick(&view, key);
    EXPECT_THAT(view.selectedRows(), ElementsAre(row)) << "where the keyboard is already";
  }
  view.setSelectionMode(QAbstractItemView::ExtendedSelection);
  view.selectRow(0);
  QTest::keyClick(&view, Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_THAT(view.selectedRows(), ElementsAre(0, 1)) << "from the row that is selected";
  view.selectRow(1);
  view.setCurrentIndex(view.model()->index(1, 0));
  QTest::keyClick(&view, Qt::Key_B);
  EXPECT_THAT(view.selectedRows(), ElementsAre(2)) << "letters look for the names, wherever one is";
  const auto edge = [&] { return view.viewport()->grab().toImage().pixelColor(0, 200); };
  const QColor ring = Theme::colours(view.palette()).link;
  EXPECT_NE(edge(), ring);
  view.clearSelection();
  EXPECT_EQ(edge(), ring) << "no row shows where the keyboard is";
}

TEST_F(Table, APressOnNothingDeselects) {
  view.selectRow(0);
  QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, {200, 250});
  EXPECT_THAT(view.selectedRows(), IsEmpty());
}

TEST_F(Table, AssistiveTechnologyPressesCellsAndHeads) {
  QSignalSpy presses(&view, &RowTableView::cellPressed);
  QSignalSpy heads(&view, &RowTableView::headClicked);
  QAccessibleInterface* table = QAccessible::queryAccessibleInterface(&view);
  ASSERT_NE(table->tableInterface(), nullptr);
  QAccessibleInterface* stop = table->tableInterface()->cellAt(1, 0);
  EXPECT_EQ(stop->text(QAccessible::Name), u"Stop"_s);
  EXPECT_EQ(table->child(table->indexOfChild(stop)), stop);
  stop->actionInterface()->doAction(stop->actionInterface()->actionNames().front());
  EXPECT_EQ(presses.count(), 0) << "whoever asks must not wait for a sheet";
  QCoreApplication::processEvents();
  ASSERT_EQ(presses.count(), 1);
  EXPECT_EQ(presses[0], (QList<QVariant>{1, u"startstop"_s}));
  EXPECT_THAT(view.selectedRows(), ElementsAre(1));

  QAccessibleInterface* name = table->child(2);
  EXPECT_EQ(name->role(), QAccessible::ColumnHeader);
  name->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  QCoreApplication::processEvents();
  EXPECT_EQ(heads.count(), 1);
  EXPECT_EQ(table->tableInterface()->cellAt(0, 1)->text(QAccessible::Name), u"a"_s);
}

TEST_F(Table, WhatIsSeenStaysWhereItIsWhileOthersComeAndGoAboveIt) {
  std::vector<Row> many;
  for (quint64 id = 1; id <= 100; ++id) many.push_back({id, u"%1"_s.arg(id, 3, 10, QChar(u'0'))});
  rows.sortBy({u"name"_s, true});
  rows.setRows(many);
  const auto top = [this] { return rows.row(view.rowAt(0))->id; };
  rows.insertSorted({200, u"000"_s});
  EXPECT_EQ(top(), 200u) << "at the top what is new is seen";
  QCoreApplication::processEvents();
  view.verticalScrollBar()->setValue(50);
  EXPECT_EQ(top(), 50u);
  rows.insertSorted({201, u"0005"_s});
  EXPECT_EQ(top(), 50u);
  rows.review(
      2, [](const Row& row) { return row.id == 200 || row.id == 3; },
      [](const Row&, bool) { return RowFate::Goes; });
  EXPECT_EQ(top(), 50u);
  many.erase(many.begin(), many.begin() + 20);
  rows.setRows(many);
  EXPECT_EQ(top(), 50u);
}

TEST_F(Table, FillsItsWidthWithItsColumns) {
  for (const int width : {300, 777}) {
    view.resize(width, 300);
    EXPECT_EQ(view.horizontalHeader()->length(), view.viewport()->width());
  }
}

}  // namespace
}  // namespace pendra
