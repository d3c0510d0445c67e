#include <gtest/gtest.h>

#include "Desk.h"
#include "store/UndoStack.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

const QString kLog = u"Time log"_s;

/// Two entries of one activity, the later one first in the log.
class TimeEntrySheetAtTheDesk : public testing::Test {
 protected:
  TimeEntrySheetAtTheDesk() {
    Customer& acme = desk.addCustomer(u"Acme"_s);
    plans = &desk.addActivity(&acme, &desk.addService(u"Design"_s), &desk.addJob(acme, u"Roof"_s));
    desk.addEntry(*plans, "2026-11-22T12:00:00Z", 60);
    entry = &desk.addEntry(*plans, "2026-11-23T12:00:30Z", 3659);
    desk.sitDown();
    desk.select(kLog, 0);
  }
  /// Opens the sheet for the selected entry.
  void edit(Desk::Steps inSheet) { desk.command(Command::EditSelected, std::move(inSheet)); }
  [[nodiscard]] QString shown() const { return desk.row(kLog, 0); }

  Desk desk;
  Activity* plans = nullptr;
  TimeEntry* entry = nullptr;
};

TEST_F(TimeEntrySheetAtTheDesk, SaysWhatIsStoredAndStoresItInOneStep) {
  edit([&] {
    EXPECT_EQ(desk.front().windowTitle(), "Edit Time Entry");
    EXPECT_EQ(desk.focus(), "Duration") << "what is wrong with an entry is most often its length";
    EXPECT_EQ(desk.text(u"Customer"_s), "Acme");
    EXPECT_EQ(desk.description(u"Start time"_s), "starts 13:00:00, 30 s dropped");
    EXPECT_EQ(desk.description(u"Duration"_s), "stored as 1 h 00 min, 59 s dropped");
    const int lowest = desk.front().height();
    desk.typeInto(u"Duration"_s, u"90"_s);
    EXPECT_EQ(desk.description(u"Duration"_s),
              "stored as 90 h 00 min. Ends Fri 27 Nov, 7:00. For 90 minutes type 1:30.");
    EXPECT_GT(desk.front().height(), lowest);
    desk.typeInto(u"Duration"_s, u"1h30"_s);
    EXPECT_EQ(desk.description(u"Duration"_s), "stored as 1 h 30 min");
    EXPECT_EQ(desk.front().height(), lowest) << "an echo leaves no gap behind";
    desk.typeInto(u"Entry notes"_s, u"Call"_s);
    EXPECT_EQ(desk.description(u"Service"_s), "");
    desk.press(Qt::Key_Return);
  });
  EXPECT_EQ(shown(), "Start Again Acme Roof Design Call Edit Mon 23 Nov 2026 13:00:00 14:30:00 01:30:00 -");
  EXPECT_EQ(entry->notes(), "Call");
  EXPECT_EQ(desk.selectedRow(kLog), 0);
  desk.onDisk([](const ObjectContext& file) { EXPECT_EQ(file.all<TimeEntry>()[1]->duration(), 5400); });
  desk.session.context()->undoStack().undo();
  EXPECT_EQ(shown(), "Start Again Acme Roof Design Edit Mon 23 Nov 2026 13:00:30 14:01:29 01:00:59 -");
}

TEST_F(TimeEntrySheetAtTheDesk, SaysAtTheFieldWhyAJobHoldsItAndHowFarANameGoes) {
  const QString before = shown();
  edit([&] {
    desk.typeInto(u"Job"_s, u"Attic"_s);
    EXPECT_EQ(desk.description(u"Job"_s),
              "No job of Acme has this name. Changes all 2 entries of this activity");
    desk.press(Qt::Key_Tab);
    EXPECT_EQ(desk.focus(), "Job");
    desk.go(u"Service"_s);
    desk.press(u"OK"_s);
    EXPECT_EQ(desk.focus(), "Job") << "a click on OK asks as leaving does";
    EXPECT_EQ(desk.description(u"Customer"_s), "Changes all 2 entries of this activity");
    desk.press(Qt::Key_Escape);
  });
  EXPECT_EQ(shown(), before);
  EXPECT_FALSE(desk.session.context()->undoStack().canUndo());
  EXPECT_TRUE(desk.alerts.shown().empty());
}

TEST_F(TimeEntrySheetAtTheDesk, OffersNoLengthWhileTheEntryRuns) {
  desk.select(u"Activities"_s, 0);
  desk.press(u"Start or stop timer"_s);
  desk.wait(90);
  desk.select(kLog, 0);
  edit([&] {
    EXPECT_EQ(desk.focus(), "Entry notes");
    desk.typeInto(u"Duration"_s, u"5"_s);
    EXPECT_EQ(desk.text(u"Duration"_s), "00:01:30");
    EXPECT_EQ(desk.description(u"Duration"_s), "runs for 0 h 01 min. Stop it to correct its length.");
    desk.typeInto(u"Start time"_s, u"9:30"_s);
    EXPECT_EQ(desk.text(u"Duration"_s), "00:31:30");
    desk.press(u"OK"_s);
  });
  EXPECT_EQ(desk.text(u"Elapsed time"_s), "00:31:30");
}

TEST_F(TimeEntrySheetAtTheDesk, TheLengthThatANoticeAsksForIsTypedIntoTheEntryOfTheNotice) {
  Activity* cutOff = nullptr;
  std::ignore = desk.session.context()->edit(QString(), [&] {
    cutOff = &desk.addActivity(&desk.addCustomer(u"Zenith"_s), plans->service());
    TimeEntry& halted = desk.addEntry(*cutOff, "2026-11-21T08:00:00Z", 0);
    halted.setDuration(std::nullopt);
    halted.setHaltedAt(instantOf("2026-11-21T09:00:00Z"));
  });
  desk.typeInto(u"From date"_s, u"11/22/26"_s);
  desk.press(Qt::Key_Return);
  ASSERT_EQ(desk.rows(kLog), 2) << "the log does not show it";
  desk.select(kLog, 1);
  const QString question = desk.notices().last();
  desk.press(u"Type its length…"_s, [&] {
    EXPECT_EQ(desk.text(u"Customer"_s), "Zenith");
    EXPECT_EQ(desk.text(u"Start date"_s), "11/21/26");
    desk.typeInto(u"Duration"_s, u"45 min"_s);
    desk.press(Qt::Key_Return);
  });
  EXPECT_EQ(cutOff->entries()[0]->duration(), 2700);
  EXPECT_FALSE(desk.notices().contains(question)) << "it is answered";
}

}  // namespace
}  // namespace pendra
