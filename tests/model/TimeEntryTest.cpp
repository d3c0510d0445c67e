#include "model/TimeEntry.h"

#include "model/ActivityTimes.h"
#include "model/DurationText.h"
#include "support/TestDocument.h"

namespace pendra {
namespace {

TEST(DurationText, TruncatesEachPart) {
  for (const auto& [seconds, text] :
       {std::pair(0.0, "00:00:00"), std::pair(3599.9, "00:59:59"), std::pair(90061.0, "25:01:01"),
        std::pair(360000.0, "100:00:00"), std::pair(-1800.0, "00:-30:00"), std::pair(-5400.5, "-1:-30:00")})
    EXPECT_EQ(durationText(seconds), text);
}

class Entry : public testing::Test, protected TestDocument {
 protected:
  TimeEntry& entry = context.insert<Activity>().addEntry();
};

TEST_F(Entry, StartsNowWithoutRunningAndStopsByTheClock) {
  EXPECT_EQ(entry.start(), clock.now());
  EXPECT_EQ(entry.running(), false);
  EXPECT_EQ(entry.duration(), std::nullopt);
  clock.advance(10);
  entry.startTimer();
  EXPECT_EQ(entry.start(), clock.now() + -10) << "starting does not move the start";
  clock.advance(5);
  entry.stopTimer();
  EXPECT_EQ(entry.duration(), 15);
  EXPECT_EQ(entry.running(), false);
  clock.advance(100);
  EXPECT_EQ(entry.length(), 15);
  EXPECT_EQ(entry.end(), *entry.start() + 15);
}

TEST_F(Entry, CountsTodayByItsStartButRunsToTodayWhateverItsDay) {
  Activity& activity = *entry.activity();
  const Today today(clock.now(), calendar);
  entry.setStart(instantOf("2026-11-23T23:00:00Z"));
  entry.setDuration(7200);
  activity.addEntry().setDuration(600);
  EXPECT_EQ(timesOf(activity, today).total, 7800);
  EXPECT_EQ(timesOf(activity, today).today, 600) << "yesterday's counts wholly to yesterday";
  TimeEntry& running = activity.startEntry();
  running.setStart(instantOf("2026-11-23T22:00:00Z"));
  clock.set("2026-11-24T00:00:10Z");
  EXPECT_EQ(timeTextsOf(activity, today).today, "02:10:10");
  running.setDuration(50);
  EXPECT_EQ(timeTextsOf(activity, today).total, "04:11:00") << "stored and running both count";
  activity.stop();
  EXPECT_EQ(timeTextsOf(activity, today).today, "00:10:00");
  entry.setStart(instantOf("2026-10-25T22:30:00Z"));
  const Today longDay(instantOf("2026-10-25T08:00:00Z"), Calendar(QTimeZone("Europe/Berlin")));
  EXPECT_EQ(timesOf(activity, longDay).today, 7200) << "in the last hour of a day of 25 hours";
}

TEST_F(Entry, SumsFollowEveryChangeOfWhatTheySum) {
  Activity& activity = *entry.activity();
  Activity& other = context.insert<Activity>();
  const Today today(clock.now(), calendar);
  const auto times = [&](double total, double ofToday) {
    const ActivityTimes now = timesOf(activity, today);
    return now.total == total && now.today == ofToday;
  };
  entry.setStart(clock.now());
  entry.setDuration(100);
  EXPECT_TRUE(times(100, 100));
  entry.setDuration(200);
  EXPECT_TRUE(times(200, 200)) << "a length";
  entry.setStart(clock.now() + -86400);
  EXPECT_TRUE(times(200, 0)) << "a day";
  EXPECT_EQ(timesOf(activity, Today(clock.now() + -86400, calendar)).today, 200) << "another day's today";
  TimeEntry& second = activity.addEntry();
  second.setDuration(50);
  EXPECT_TRUE(times(250, 50)) << "a new entry";
  second.setActivity(&other);
  EXPECT_TRUE(times(200, 0)) << "one that moved away";
  context.deleteObject(entry);
  EXPECT_TRUE(times(0, 0)) << "one that was deleted";
  EXPECT_EQ(timesOf(other, today).total, 50);
}

}  // namespace
}  // namespace pendra
