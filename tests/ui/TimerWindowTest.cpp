#include <gtest/gtest.h>

#include <QLabel>
#include <QScreen>
#include <QScrollBar>

#include "Desk.h"
#include "store/UndoStack.h"
#include "support/Events.h"
#include "ui/DisplayTick.h"
#include "ui/RowTableView.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

class TimerWindowAtTheDesk : public testing::Test {
 protected:
  TimerWindowAtTheDesk() {
    Service& design = desk.addService(u"Design"_s);
    for (const char* name : {"Acme", "Zenith"}) {
      Activity& activity = desk.addActivity(&desk.addCustomer(QString::fromUtf8(name)), &design);
      desk.addEntry(activity, "2026-11-23T12:00:00Z", 3600);
    }
    desk.sitDown();
    desk.select(u"Activities"_s, 0);
  }

  Desk desk;
};

TEST_F(TimerWindowAtTheDesk, AStartedTimerIsSeenEverywhereAndOnTheDiskAtOnce) {
  EXPECT_EQ(desk.row(u"Activities"_s, 0),
            "Start Favourite Acme Design Edit Activity Complete 00:00:00 01:00:00");
  desk.press(u"Start or stop timer"_s);
  EXPECT_EQ(desk.cell(u"Activities"_s, 0, u"Start/Stop"_s), "Stop");
  EXPECT_EQ(desk.description(u"Start or stop timer"_s), "Stop");
  EXPECT_EQ(desk.rows(u"Time log"_s), 3);
  desk.onDisk([](const ObjectContext& file) {
    ASSERT_EQ(file.all<TimeEntry>().size(), 3U);
    EXPECT_EQ(file.all<TimeEntry>()[2]->running(), true);
  });
  desk.wait(61);
  EXPECT_EQ(desk.text(u"Elapsed time"_s), "00:01:01");
  EXPECT_EQ(desk.cell(u"Activities"_s, 0, u"Total"_s), "01:01:01");
  EXPECT_EQ(desk.cell(u"Time log"_s, 0, u"Duration"_s), "00:01:01");
  EXPECT_EQ(desk.selectedRow(u"Activities"_s), 0) << "no row loses its selection to a tick";
  EXPECT_EQ(desk.description(u"Today"_s), "00:01:01");
  EXPECT_EQ(desk.description(u"This week"_s), "02:01:01");
  EXPECT_FALSE(desk.sees(u"Not sent"_s)) << "what is kept by hand is never sent";
}

TEST(ATickOfTheDisplay, ComesWhileTimeRunsAndAtMidnightAndWakesNobodyElse) {
  Desk desk;
  Activity& activity = desk.addActivity(nullptr, nullptr);
  desk.sitDown();
  QWidget window;
  int told = 0;
  const DisplayTick tick(desk.session, window, [&] { ++told; });
  const auto isTold = [&](int patience) {
    return eventually([&told, before = told] { return told > before; }, patience);
  };
  window.show();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&window) && told > 0) << "what comes to the front shows what is";
  EXPECT_FALSE(isTold(1200));
  std::ignore = desk.session.context()->edit({}, [&] { activity.startEntry(); });
  EXPECT_TRUE(isTold(10000));
  std::ignore = desk.session.context()->edit({}, [&] { activity.stop(); });
  EXPECT_FALSE(isTold(1200));
  desk.clock.set("2026-11-24T22:59:59Z");
  desk.clock.advance(0.9);
  window.hide();
  window.show();
  EXPECT_TRUE(isTold(10000) && isTold(10000)) << "the day ends";
  window.hide();
  EXPECT_FALSE(isTold(200));
}

TEST(ALinkedDesk, SaysWhatIsNotSent) {
  Desk desk(false);
  desk.addEntry(desk.addActivity(nullptr, nullptr), "2026-11-23T12:00:00Z", 3660);
  desk.sitDown();
  EXPECT_EQ(desk.description(u"Not sent"_s), "01:01:00, 1 entry");
}

TEST_F(TimerWindowAtTheDesk, FitsASmallScreenAndIsWalkedAsItIsRead) {
  QWidget& window = desk.front();
  EXPECT_LT(window.height(), window.screen()->availableSize().height());
  for (const QSize size : {QSize(1024, 570), QSize(1280, 770)}) {
    window.resize(size);
    desk.settle();
    EXPECT_EQ(window.size(), size);
    const auto& footer = desk.named(u"This week"_s);
    EXPECT_LE(footer.mapTo(&window, footer.rect().bottomRight()).y(), size.height());
    for (const QString& table : {u"Activities"_s, u"Time log"_s}) {
      EXPECT_GT(desk.named<RowTableView>(table).viewport()->height(), 60) << table.toStdString();
    }
  }
  QStringList walked;
  for (int step = 0; step < 18; ++step, desk.press(Qt::Key_Tab)) walked << desk.focus();
  EXPECT_EQ(walked.join(u"/"_s),
            "Activities/Customer filter/Job filter/Service filter/Range/From date/To date/Find in the log/"
            "Time log/Start or stop timer/Latest activities/Add activity/Quick entry/Find an activity/"
            "Preferences…/OK/Dismiss/Activities");
}

TEST_F(TimerWindowAtTheDesk, TheActivityTableIsWorkedByKeys) {
  const QString table = u"Activities"_s;
  auto& view = desk.named<RowTableView>(table);
  desk.press(Qt::Key_Left);
  desk.press(Qt::Key_Left);
  for (int column = 0; column < view.model()->columnCount(); ++column) {
    EXPECT_EQ(view.currentIndex().column(), column);
    desk.press(Qt::Key_Space);
    EXPECT_EQ(desk.cell(table, 0, u"Start/Stop"_s), column % 2 == 0 ? "Stop" : "Start");
    desk.press(Qt::Key_Right);
  }
  const auto go = [&](int row, const char* column) {
    view.setCurrentIndex(view.model()->index(row, *view.tableModel().columnOf(QString::fromLatin1(column))));
  };
  const auto isFavourite = [&](int row) {
    return bool(view.model()->index(row, 1).data(Qt::CheckStateRole).toInt());
  };
  go(1, "favourite");
  desk.press(Qt::Key_Return);
  EXPECT_EQ(desk.cell(table, 0, u"Customer"_s), "Zenith");
  EXPECT_TRUE(isFavourite(0) && !isFavourite(1));
  desk.pressCell(table, 1, u"Favourite"_s);
  EXPECT_EQ(desk.cell(table, 0, u"Customer"_s), "Acme");
  desk.pressCell(table, 0, u"Favourite"_s);
  EXPECT_EQ(desk.cell(table, 1, u"Customer"_s), "Acme");
  EXPECT_EQ(desk.session.context()->undoStack().undoName(), "No Favourite");
  go(1, "complete");
  desk.press(Qt::Key_Return);
  EXPECT_EQ(desk.rows(table), 1);
}

TEST_F(TimerWindowAtTheDesk, LettersThatAreTypedInTheTableSearchIt) {
  const QString table = u"Activities"_s;
  const auto rest = [&] { return desk.front().findChild<QLabel*>(u"activitiesLeftOut"_s)->text(); };
  desk.type(u"zen"_s);
  EXPECT_EQ(desk.focus(), "Find an activity");
  EXPECT_EQ(desk.rows(table), 1);
  EXPECT_EQ(rest(), "1 more is not shown.");
  EXPECT_EQ(desk.text(u"Selected activity"_s), "Zenith - Design") << "the first that was found";
  desk.press(Qt::Key_Return);
  EXPECT_EQ(desk.focus(), table);
  desk.press(Qt::Key_Space);
  desk.press(u"Show All"_s);
  EXPECT_EQ(desk.rows(table), 2);
  EXPECT_EQ(desk.selectedRow(table), 1);
  EXPECT_EQ(desk.cell(table, 1, u"Start/Stop"_s), "Stop");
  EXPECT_EQ(desk.focus(), table);
  desk.type(u"nothing"_s);
  EXPECT_EQ(desk.rows(table), 0);
  desk.wait(5);
  EXPECT_EQ(desk.description(u"Today"_s), "00:00:05") << "what is left out runs on";
  EXPECT_EQ(desk.description(u"Zenith - Design"_s), "Stop") << "and stands in the header";
  desk.press(u"Show All"_s);
  EXPECT_EQ(desk.text(u"Find an activity"_s), "");
  desk.type(u"acm"_s);
  desk.press(Qt::Key_Escape);
  EXPECT_EQ(desk.rows(table), 2);
  desk.press(Qt::Key_Escape);
  EXPECT_EQ(desk.focus(), table);
  desk.select(u"Time log"_s, 0);
  desk.command(Command::Find);
  EXPECT_EQ(desk.focus(), "Find in the log");
}

TEST_F(TimerWindowAtTheDesk, AQuestionIsAboutWhatWasSelectedWhenItWasAsked) {
  desk.alerts.holdSheets();
  desk.command(Command::Delete);
  desk.select(u"Activities"_s, 1);
  desk.alerts.answerSheet(u"Delete"_s);
  EXPECT_EQ(desk.rows(u"Activities"_s), 1);
  EXPECT_EQ(desk.cell(u"Activities"_s, 0, u"Customer"_s), "Zenith");
  EXPECT_EQ(desk.rows(u"Time log"_s), 1);
  desk.onDisk([](const ObjectContext& file) { EXPECT_EQ(file.all<TimeEntry>().size(), 1U); });
}

TEST_F(TimerWindowAtTheDesk, NewsLeavesSelectionPlaceAndKeyboardWhereTheyAre) {
  ObjectContext& context = *desk.session.context();
  const auto elsewhere = [&](const auto& work) { std::ignore = context.edit(u"Elsewhere"_s, work); };
  const auto complete = [&](std::size_t first, std::size_t last, std::size_t step) {
    elsewhere([&] {
      for (std::size_t at = first; at < last; at += step) context.all<Activity>()[at]->setCompleted(true);
    });
  };
  elsewhere([&] {
    for (int n = 0; n < 300; ++n) desk.addActivity(nullptr, nullptr, nullptr, QString::number(n));
  });
  auto& table = desk.named<RowTableView>(u"Activities"_s);
  Desk::settle();
  table.verticalScrollBar()->setValue(100);
  desk.select(u"Activities"_s, 102);
  const int place = table.rowViewportPosition(102);
  const auto stands = [&](int row) {
    EXPECT_EQ(desk.selectedRow(u"Activities"_s), row);
    EXPECT_EQ(table.currentIndex().row(), row);
    EXPECT_EQ(desk.cell(u"Activities"_s, row, u"Notes"_s), "100");
    EXPECT_EQ(table.rowViewportPosition(row), place) << "what is looked at stays under the eye";
    EXPECT_EQ(desk.focus(), "Activities");
  };
  stands(102);
  complete(1, 2, 1);
  stands(101);
  complete(104, 300, 2);  // in more pieces than are told one by one
  stands(101);
  context.undoStack().undo();
  context.undoStack().undo();
  stands(102);
}

TEST_F(TimerWindowAtTheDesk, AKeyInTheLogIsAboutTheLog) {
  desk.select(u"Time log"_s, 1);
  desk.alerts.willAnswer({u"Delete"_s});
  desk.command(Command::Delete);
  EXPECT_EQ(desk.rows(u"Activities"_s), 2);
  EXPECT_EQ(desk.rows(u"Time log"_s), 1);
  EXPECT_EQ(desk.alerts.last().message, "Are you sure you want to delete the selected time entry?");
}

}  // namespace
}  // namespace pendra
