#include "model/TimeEntry.h"

#include "model/ActivityTimes.h"
#include "model/DurationText.h"
#include "support/Rows.h"
#include "support/TestDocument.h"

namespace pendra {
namespace {

struct Length {
  const char* name;
  double seconds;
  const char* text;
};

class DurationText : public testing::TestWithParam<Length> {};

TEST_P(DurationText, TruncatesEachPart) { EXPECT_EQ(durationText(GetParam().seconds), GetParam().text); }

INSTANTIATE_TEST_SUITE_P(Lengths, DurationText,
                         testing::Values(Length{"Nothing", 0, "00:00:00"},
                                         Length{"NeverRoundsUp", 3599.9, "00:59:59"},
                                         Length{"MoreThanADay", 90061, "25:01:01"},
                                         Length{"ThreeDigitsOfHours", 360000, "100:00:00"},
                                         Length{"SignsStandInTheParts", -1800, "00:-30:00"},
                                         Length{"NegativeHours", -5400.5, "-1:-30:00"}),
                         RowName());

class Entry : public testing::Test, protected TestDocument {
 protected:
  TimeEntry& period = context.insert<Activity>().addEntry();
};

TEST_F(Entry, StartsNowWithoutRunningAndStopsByTheClock) {
  EXPECT_EQ(period.start(), clock.now());
  EXPECT_EQ(period.running(), false);
  EXPECT_EQ(period.duration(), std::nullopt);
  clock.advance(10);
  period.startTimer();
  EXPECT_EQ(period.start(), clock.now() + -10) << "starting does not move the start";
  clock.advance(5);
  period.stopTimer();
  EXPECT_EQ(period.duration(), 15);
  EXPECT_EQ(period.running(), false);
  clock.advance(100);
  EXPECT_EQ(period.elapsed(), 115) << "whether it runs is not asked, only whether that is known";
  period.setRunning(std::nullopt);
  EXPECT_EQ(period.elapsed(), 15);
}

struct Sending {
  const char* name;
  std::optional<Instant> date;
  bool submitted;
};

class EntrySent : public testing::TestWithParam<Sending>, protected TestDocument {};

TEST_P(EntrySent, NeedsMoreThanASecond) {
  auto& period = context.insert<TimeEntry>();
  EXPECT_FALSE(period.wasSent());
  period.setDateSubmitted(GetParam().date);
  EXPECT_EQ(period.wasSent(), GetParam().submitted);
}

INSTANTIATE_TEST_SUITE_P(Dates, EntrySent,
                         testing::Values(Sending{"Absent", std::nullopt, false},
                                         Sending{"Reference", kReferenceInstant, false},
                                         Sending{"OneSecond", Instant{1.0}, false},
                                         Sending{"JustMore", Instant{1.001}, true}),
                         RowName());

struct Bounds {
  const char* name;
  const char* start;
  const char* from;
  const char* to;
  bool between;
};

class EntryBetween : public testing::TestWithParam<Bounds>, protected TestDocument {};

TEST_P(EntryBetween, CountsWholeDays) {
  const auto& row = GetParam();
  const auto bound = [](const char* text) { return text ? std::optional(instantOf(text)) : std::nullopt; };
  auto& period = context.insert<TimeEntry>();
  period.setStart(instantOf(row.start));
  EXPECT_EQ(period.isBetweenDates(bound(row.from), bound(row.to)), row.between);
}

INSTANTIATE_TEST_SUITE_P(
    Days, EntryBetween,
    testing::Values(
        Bounds{"NoBounds", "2026-11-24T12:00:00Z", nullptr, nullptr, true},
        Bounds{"LastMinuteOfTheLastDay", "2026-11-24T23:59:00Z", nullptr, "2026-11-24T08:00:00Z", true},
        Bounds{"FirstMinuteAfterIt", "2026-11-25T00:01:00Z", nullptr, "2026-11-24T08:00:00Z", false},
        Bounds{"EarlierOnTheFirstDay", "2026-11-24T00:00:00Z", "2026-11-24T18:00:00Z", nullptr, true},
        Bounds{"TheDayBefore", "2026-11-23T23:59:59Z", "2026-11-24T18:00:00Z", nullptr, false},
        Bounds{"BothTheSameDay", "2026-11-24T12:00:00Z", "2026-11-24T18:00:00Z", "2026-11-24T01:00:00Z",
               true},
        Bounds{"CrossedBounds", "2026-11-24T12:00:00Z", "2026-11-24T00:00:00Z", "2026-11-23T00:00:00Z",
               false}),
    RowName());

TEST(EntryDay, BeginsLateWhereMidnightDoesNotExist) {
  const Calendar calendar{QTimeZone("America/Sao_Paulo")};
  EXPECT_EQ(TimeEntry::stripTime(instantOf("2018-11-04T15:00:00Z"), calendar),
            instantOf("2018-11-04T03:00:00Z"));
  EXPECT_EQ(TimeEntry::stripTime(std::nullopt, calendar), std::nullopt);
}

TEST_F(Entry, ComparesByItsStart) {
  auto& later = context.insert<TimeEntry>();
  later.setStart(*period.start() + 1);
  EXPECT_LT(period.compare(later), 0);
  EXPECT_GT(later.compare(period), 0);
  later.setStart(period.start());
  EXPECT_EQ(period.compare(later), 0);
}

TEST_F(Entry, CountsTodayByItsStartButRunsToTodayWhateverItsDay) {
  Activity& activity = *period.activity();
  const Today today(clock.now(), calendar);
  period.setStart(instantOf("2026-11-23T23:00:00Z"));
  period.setDuration(7200);
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
  period.setStart(instantOf("2026-10-25T22:30:00Z"));
  const Today longDay(instantOf("2026-10-25T08:00:00Z"), Calendar(QTimeZone("Europe/Berlin")));
  EXPECT_EQ(timesOf(activity, longDay).today, 7200) << "in the last hour of a day of 25 hours";
}

TEST_F(Entry, SumsFollowEveryChangeOfWhatTheySum) {
  Activity& activity = *period.activity();
  Activity& other = context.insert<Activity>();
  const Today today(clock.now(), calendar);
  const auto times = [&](double total, double ofToday) {
    const ActivityTimes now = timesOf(activity, today);
    return now.total == total && now.today == ofToday;
  };
  period.setStart(clock.now());
  period.setDuration(100);
  EXPECT_TRUE(times(100, 100));
  period.setDuration(200);
  EXPECT_TRUE(times(200, 200)) << "a length";
  period.setStart(clock.now() + -86400);
  EXPECT_TRUE(times(200, 0)) << "a day";
  EXPECT_EQ(timesOf(activity, Today(clock.now() + -86400, calendar)).today, 200) << "another day's today";
  TimeEntry& second = activity.addEntry();
  second.setDuration(50);
  EXPECT_TRUE(times(250, 50)) << "a new entry";
  second.setActivity(&other);
  EXPECT_TRUE(times(200, 0)) << "one that moved away";
  context.deleteObject(period);
  EXPECT_TRUE(times(0, 0)) << "one that was deleted";
  EXPECT_EQ(timesOf(other, today).total, 50);
}

}  // namespace
}  // namespace pendra
