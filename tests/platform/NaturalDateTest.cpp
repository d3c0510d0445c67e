#include "platform/NaturalDate.h"

#include <gtest/gtest.h>

#include "support/ManualClock.h"
#include "support/Rows.h"

namespace pendra {
namespace {

const Calendar kBerlin{QTimeZone("Europe/Berlin")};

/// A Tuesday, a quarter past nine in the evening, and a fraction.
const Instant kNow = instantOf("2026-11-24T20:15:30.250Z");

struct Text {
  const char* name;
  const char* text;
  const char* local;  ///< empty when the text cannot be read
};

class NaturalDate : public testing::TestWithParam<Text> {};

TEST_P(NaturalDate, OfAText) {
  const auto instant = dateWithNaturalLanguageString(QString::fromUtf8(GetParam().text), kNow, kBerlin);
  const QString local = instant ? kBerlin.local(*instant).toString(u"yyyy-MM-dd HH:mm:ss") : QString();
  EXPECT_EQ(local, GetParam().local);
}

INSTANTIATE_TEST_SUITE_P(
    TimeMarkerAndDate, NaturalDate,
    testing::Values(Text{"RunTogether", "9:30AM11/14/26", "2026-11-14 09:30:00"},
                    Text{"Evening", "10:30PM05/12/24", "2024-05-12 22:30:00"},
                    Text{"AfterMidnight", "12:05AM11/14/26", "2026-11-14 00:05:00"},
                    Text{"AfterNoon", "12:05pm11/14/26", "2026-11-14 12:05:00"},
                    Text{"OneDigitMinute", "9:5AM1/2/26", "2026-01-02 09:05:00"},
                    Text{"FullClockWithMarker", "13:30PM11/14/26", "2026-11-14 13:30:00"},
                    Text{"FullClockWithOddMarker", "13:30AM11/14/26", "2026-11-14 13:30:00"},
                    Text{"WholeYear", "9AM11/14/2026", "2026-11-14 09:00:00"},
                    Text{"OtherCentury", "9:30AM11/14/75", "1975-11-14 09:30:00"},
                    Text{"Spaced", "9:30 AM 11/14/26", "2026-11-14 09:30:00"},
                    Text{"DateFirst", "11/14/26 9:30:15 pm", "2026-11-14 21:30:15"},
                    Text{"TwoMarkers", "9:30pmAM11/14/26", ""}, Text{"MarkerWithoutTime", "AM11/14/26", ""},
                    Text{"TimeAgainstDate", "9:3011/14/26", ""}, Text{"NoSuchHour", "25:00PM11/14/26", ""},
                    Text{"NoSuchMinute", "9:75AM11/14/26", ""}),
    RowName());

INSTANTIATE_TEST_SUITE_P(MissingParts, NaturalDate,
                         testing::Values(Text{"DateAlone", "11/14/26", "2026-11-14 12:00:00"},
                                         Text{"TimeAlone", "13:30PM", "2026-11-24 13:30:00"},
                                         Text{"HourAlone", "9 pm", "2026-11-24 21:00:00"},
                                         Text{"BareHour", "9", "2026-11-24 09:00:00"},
                                         Text{"IsoDate", "2026-11-03", "2026-11-03 12:00:00"},
                                         Text{"IsoDateAndTime", "2026-11-03T07:08:09",
                                              "2026-11-03 07:08:09"}),
                         RowName());

INSTANTIATE_TEST_SUITE_P(
    Words, NaturalDate,
    testing::Values(Text{"Now", "now", "2026-11-24 21:15:30"}, Text{"Today", "Today", "2026-11-24 12:00:00"},
                    Text{"Yesterday", " yesterday ", "2026-11-23 12:00:00"},
                    Text{"TomorrowAtNoon", "tomorrow at noon", "2026-11-25 12:00:00"},
                    Text{"Midnight", "midnight", "2026-11-24 00:00:00"},
                    Text{"YesterdayEvening", "8pm yesterday", "2026-11-23 20:00:00"},
                    Text{"LastMonday", "last monday", "2026-11-23 12:00:00"},
                    Text{"LastTuesday", "last Tuesday", "2026-11-17 12:00:00"},
                    Text{"NextTuesday", "next tue", "2026-12-01 12:00:00"},
                    Text{"NextSunday", "next sunday, 9:30", "2026-11-29 09:30:00"},
                    Text{"WeeksAgo", "3 weeks ago", "2026-11-03 12:00:00"},
                    Text{"ADayAgo", "1 day ago", "2026-11-23 12:00:00"},
                    Text{"MonthsAgo", "9 months ago", "2026-02-24 12:00:00"},
                    Text{"LastWeek", "last week", "2026-11-17 12:00:00"},
                    Text{"NextMonth", "next month", "2026-12-24 12:00:00"},
                    Text{"MonthDay", "Nov 3", "2026-11-03 12:00:00"},
                    Text{"MonthDayYear", "november 3rd, 2025 10:15", "2025-11-03 10:15:00"},
                    Text{"DayMonthYear", "3 Sept. 2025", "2025-09-03 12:00:00"},
                    Text{"MonthDayTime", "may 5 10:30", "2026-05-05 10:30:00"}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    Nights, NaturalDate,
    testing::Values(Text{"TheHourThatIsSkipped", "2:30AM03/29/26", "2026-03-29 03:30:00"},
                    Text{"TheHourThatComesTwice", "2:30AM10/25/26", "2026-10-25 02:30:00"},
                    Text{"AfterTheSkippedHour", "3:00AM03/29/26", "2026-03-29 03:00:00"}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    Unreadable, NaturalDate,
    testing::Values(Text{"Empty", "", ""}, Text{"Blanks", "   ", ""}, Text{"Garbage", "soonish", ""},
                    Text{"Tail", "today or so", ""}, Text{"NoSuchDay", "2/30", ""},
                    Text{"NoSuchDayOfYear", "2/30/26", ""}, Text{"NoSuchDayOfMonth", "feb 30", ""},
                    Text{"NoSuchIsoDay", "2026-02-30", ""}, Text{"TwoDates", "today 11/14/26", ""},
                    Text{"TwoTimes", "9:30 10:30", ""}, Text{"NowAndATime", "now 9:30", ""},
                    Text{"YearAlone", "2026", ""}, Text{"Count", "3 weeks", ""}, Text{"Comma", "today,", ""},
                    Text{"Minus", "-3 days ago", ""}, Text{"Long", "99999999999999999999", ""},
                    Text{"Todays", "todays", ""}, Text{"LetterNextToADate", "11/14/26x", ""}),
    RowName());

TEST(NaturalDateNights, TakesTheFirstOfTwoEqualTimes) {
  EXPECT_EQ(dateWithNaturalLanguageString(u"2:30AM10/25/26", kNow, kBerlin),
            instantOf("2026-10-25T00:30:00Z"));
}

TEST(NaturalDateNow, IsNowToTheFraction) {
  EXPECT_EQ(dateWithNaturalLanguageString(u"now", kNow, kBerlin), kNow);
}

}  // namespace
}  // namespace pendra
