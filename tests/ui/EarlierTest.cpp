#include <gmock/gmock.h>

#include "Desk.h"
#include "platform/Preferences.h"
#include "store/UndoStack.h"
#include "ui_core/EarlierTimer.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

class Earlier : public testing::Test {
 protected:
  void SetUp() override {
    desk.session.context()->fill([&] {
      acme = &desk.addActivity(&desk.addCustomer(u"Acme"_s), nullptr);
      zed = &desk.addActivity(&desk.addCustomer(u"Zed"_s), nullptr);
    });
  }
  TimeEntry& run(Activity& activity, const char* start) {
    TimeEntry* entry = nullptr;
    std::ignore = desk.session.context()->edit({}, {.undoable = false}, [&] {
      entry = &activity.startEntry();
      entry->setStart(instantOf(start));
    });
    return *entry;
  }
  EarlierTimer::Reading read(Activity& activity, EarlierDeed deed, const QString& typed) {
    return EarlierTimer(desk.session, activity, deed).read(EarlierMoment::Typed, typed);
  }

  Desk desk;
  Activity* acme = nullptr;
  Activity* zed = nullptr;
};

TEST_F(Earlier, SaysWhatATypedTimeWillDo) {
  const struct {
    const char* now;
    const char* typed;
    const char* says;
    const char* at = nullptr;  ///< none: refused
  } cases[] = {
      {"2026-11-24T12:30:00Z", "13:05", "starts 13:05, 25 min ago", "2026-11-24T12:05:00Z"},
      {"2026-11-24T12:30:00Z", "1:05 pm", "starts 13:05, 25 min ago", "2026-11-24T12:05:00Z"},
      {"2026-11-24T12:30:00Z", "yesterday 17:00", "starts 23 Nov 17:00, 20 h 30 min ago",
       "2026-11-23T16:00:00Z"},
      {"2026-11-24T12:30:00Z", "15:00", "15:00 has not come yet"},
      {"2026-11-24T12:30:00Z", "soon", "“soon” is no time"},
      {"2026-11-23T23:10:00Z", "23:50", "starts 23 Nov 23:50, 20 min ago", "2026-11-23T22:50:00Z"},
      // The clock is set back from 03:00 to 02:00, and forward over the hour from 02:00 to 03:00.
      {"2026-10-25T00:40:00Z", "2:30", "starts 02:30, 10 min ago", "2026-10-25T00:30:00Z"},
      {"2026-10-25T01:40:00Z", "2:30", "starts 02:30, 10 min ago", "2026-10-25T01:30:00Z"},
      {"2026-03-29T01:40:00Z", "1:30", "starts 01:30, 1 h 10 min ago", "2026-03-29T00:30:00Z"},
  };
  for (const auto& [now, typed, says, at] : cases) {
    desk.clock.set(now);
    const auto reading = read(*acme, EarlierDeed::Start, QString::fromUtf8(typed));
    EXPECT_EQ(reading.echo.text, QString::fromUtf8(says)) << now << " " << typed;
    EXPECT_EQ(reading.at, at ? std::optional(instantOf(at)) : std::nullopt) << now << " " << typed;
  }
}

TEST_F(Earlier, ShowsOverlapsAndRefusesAStopBeforeItsStart) {
  desk.clock.set("2026-11-24T12:30:00Z");  // 13:30
  desk.session.context()->fill([&] { desk.addEntry(*acme, "2026-11-24T11:40:00Z", 2100); });
  EXPECT_EQ(read(*zed, EarlierDeed::Start, u"13:05"_s).echo.text,
            u"starts 13:05, 25 min ago; overlaps 12:40–13:15 of “Acme”"_s);
  EXPECT_EQ(read(*zed, EarlierDeed::Start, u"13:15"_s).echo.text, u"starts 13:15, 15 min ago"_s);
  run(*acme, "2026-11-24T12:20:00Z");
  EXPECT_EQ(read(*zed, EarlierDeed::Start, u"13:05"_s).echo.text,
            u"starts 13:05, 25 min ago; overlaps 13:20–now of “Acme” and 1 more"_s);
  EXPECT_EQ(read(*acme, EarlierDeed::Stop, u"13:25"_s).echo.text,
            u"stops 13:25, 5 min ago; its length is 0 h 05 min"_s);
  EXPECT_EQ(read(*acme, EarlierDeed::Stop, u"13:10"_s).echo.text,
            u"it was started 13:20 and cannot stop before that, at 13:10"_s);
  desk.defaults.setBoolean(preferences::kOneAtATime.key, true);
  EXPECT_EQ(read(*zed, EarlierDeed::Start, u"13:25"_s).echo.text,
            u"starts 13:25, 5 min ago; stops “Acme” at the same time"_s);
  EXPECT_EQ(read(*zed, EarlierDeed::Start, u"13:16"_s).echo.text,
            u"starts 13:16, 14 min ago; stops “Acme” now; overlaps 13:20–now of “Acme”"_s);
}

TEST_F(Earlier, StartsAndStopsFromTheSheetInOneStepEach) {
  desk.clock.set("2026-11-24T12:30:00Z");
  desk.session.context()->fill([&] { desk.addEntry(*acme, "2026-11-24T11:30:00Z", 1800); });
  desk.defaults.setBoolean(preferences::kOneAtATime.key, true);
  desk.sitDown();
  const TimeEntry& other = run(*zed, "2026-11-24T12:10:00Z");
  const auto entries = [&] { return desk.session.context()->all<TimeEntry>(); };
  desk.select(u"Activities"_s, 0);
  desk.command(Command::StartEarlier, [&] {
    EXPECT_EQ(desk.focus(), u"5 minutes ago"_s);
    EXPECT_EQ(desk.description(u"5 minutes ago"_s),
              u"starts 13:25, 5 min ago; stops “Zed” at the same time"_s);
    desk.press(u"At the end of the last entry"_s);
    EXPECT_EQ(desk.description(u"At the end of the last entry"_s),
              u"starts 13:00, 30 min ago; stops “Zed” now; overlaps 13:10–now of “Zed”"_s);
    desk.typeInto(u"Time"_s, u"14:00"_s);
    EXPECT_TRUE(desk.isChecked(u"At"_s));
    EXPECT_EQ(desk.description(u"Time"_s), u"14:00 has not come yet"_s);
    EXPECT_FALSE(desk.isEnabled(u"Start"_s));
    desk.typeInto(u"Time"_s, u"13:20"_s);
    desk.press(Qt::Key_Return);
  });
  ASSERT_EQ(entries().size(), 3U);
  EXPECT_EQ(entries()[2]->length(), 600);
  EXPECT_EQ(other.duration(), 600) << "one at a time: both at the same instant";

  UndoStack& steps = desk.session.context()->undoStack();
  EXPECT_EQ(steps.undoName(), u"Start Earlier"_s);
  steps.undo();
  EXPECT_EQ(entries().size(), 2U);
  EXPECT_EQ(other.running(), true);
  steps.redo();
  desk.command(Command::StopEarlier, [&] {
    desk.press(u"15 minutes ago"_s);
    EXPECT_FALSE(desk.isEnabled(u"Stop"_s));
    desk.press(u"5 minutes ago"_s);
    desk.press(u"Stop"_s);
  });
  EXPECT_EQ(entries()[2]->duration(), 300);
  desk.onDisk([](const ObjectContext& disk) { EXPECT_EQ(disk.all<TimeEntry>()[2]->duration(), 300); });
}

}  // namespace
}  // namespace pendra
