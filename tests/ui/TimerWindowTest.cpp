#include <gtest/gtest.h>

#include "Desk.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

class TimerWindowAtTheDesk : public testing::Test {
 protected:
  TimerWindowAtTheDesk() {
    Service& design = desk.addService(u"Design"_s);
    for (const char* name : {"Acme", "Zenith"}) {
      Activity& activity = desk.addActivity(&desk.addCustomer(QString::fromUtf8(name)), &design);
      desk.addPeriod(activity, "2026-11-23T12:00:00Z", 3600);
    }
    desk.sitDown();
    desk.select(u"Activities"_s, 0);
  }

  Desk desk;
};

TEST_F(TimerWindowAtTheDesk, AStartedTimerIsSeenEverywhereAndOnTheDiskAtOnce) {
  EXPECT_EQ(desk.row(u"Activities"_s, 0), "Start Acme Design Edit Activity Complete 00:00:00 01:00:00");
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
