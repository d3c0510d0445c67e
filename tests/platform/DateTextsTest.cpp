#include "platform/DateTexts.h"

#include <gtest/gtest.h>

#include "support/ManualClock.h"
#include "support/Rows.h"

namespace pendra {
namespace {

struct Texts {
  const char* name;
  const char* instant;
  const char* zone;
  const char* clock;
  const char* timeAndMarker;
  const char* monthFirst;
  const char* dayFirst;
};

class DateTexts : public testing::TestWithParam<Texts> {};

TEST_P(DateTexts, OfAnInstant) {
  const auto& row = GetParam();
  const Calendar calendar{QTimeZone(row.zone)};
  const Instant instant = instantOf(row.instant);
  EXPECT_EQ(clockText(instant, calendar), row.clock);
  EXPECT_EQ(timeWithMarker(instant, calendar), row.timeAndMarker);
  EXPECT_EQ(timeOfDay(instant, calendar) + u' ' + dayHalf(instant, calendar), QString(row.timeAndMarker));
  EXPECT_EQ(shortDate(instant, calendar), row.monthFirst);
  EXPECT_EQ(dayFirstDate(instant, calendar), row.dayFirst);
}

INSTANTIATE_TEST_SUITE_P(
    Table, DateTexts,
    testing::Values(
        Texts{"Morning", "2026-11-24T09:05:59Z", "UTC", "09:05AM", "9:05 AM", "11/24/26", "24/11/26"},
        Texts{"Midnight", "2026-11-24T00:05:00Z", "UTC", "12:05AM", "12:05 AM", "11/24/26", "24/11/26"},
        Texts{"Noon", "2026-11-24T12:00:00Z", "UTC", "12:00PM", "12:00 PM", "11/24/26", "24/11/26"},
        Texts{"LastMinute", "2001-12-31T23:59:59Z", "UTC", "11:59PM", "11:59 PM", "12/31/01", "31/12/01"},
        Texts{"AnotherDayThere", "2026-01-01T02:00:00Z", "America/New_York", "09:00PM", "9:00 PM", "12/31/25",
              "31/12/25"},
        Texts{"TheHourThatComesTwice", "2026-10-25T01:30:00Z", "Europe/Berlin", "02:30AM", "2:30 AM",
              "10/25/26", "25/10/26"}),
    RowName());

TEST(DateTexts, OfWholeSecondsInUniversalTime) {
  EXPECT_EQ(universalDateTime(instantOf("2024-05-12T14:30:00.999Z")), "2024-05-12 14:30:00 +0000");
  EXPECT_EQ(universalDateTime(instantOf("2000-12-31T23:59:59.500Z")), "2000-12-31 23:59:59 +0000");
  EXPECT_EQ(dashedDate(instantOf("2026-03-04T09:00:00Z"), Calendar(QTimeZone::utc())), "03-04-2026");
}

struct ShortDate {
  const char* name;
  QString text;
  std::optional<QDate> date;
};

class ReadShortDate : public testing::TestWithParam<ShortDate> {};

TEST_P(ReadShortDate, IsStrict) { EXPECT_EQ(readShortDate(GetParam().text), GetParam().date); }

INSTANTIATE_TEST_SUITE_P(Table, ReadShortDate,
                         testing::Values(ShortDate{"TwoDigits", "11/24/26", QDate(2026, 11, 24)},
                                         ShortDate{"OneDigit", "1/2/26", QDate(2026, 1, 2)},
                                         ShortDate{"EndOfTheCentury", "12/31/49", QDate(2049, 12, 31)},
                                         ShortDate{"BeginOfTheCentury", "01/01/50", QDate(1950, 1, 1)},
                                         ShortDate{"FullYear", "5/12/2024", QDate(2024, 5, 12)},
                                         ShortDate{"LongYear", "5/12/202", QDate(202, 5, 12)},
                                         ShortDate{"LeapDay", "02/29/24", QDate(2024, 2, 29)},
                                         ShortDate{"NoLeapDay", "02/29/26", std::nullopt},
                                         ShortDate{"NoSuchDay", "02/30/26", std::nullopt},
                                         ShortDate{"NoSuchMonth", "13/01/26", std::nullopt},
                                         ShortDate{"NoYear", "11/24", std::nullopt},
                                         ShortDate{"YearOfOneDigit", "11/24/6", std::nullopt},
                                         ShortDate{"Blank", "11/24/26 ", std::nullopt},
                                         ShortDate{"Sign", "+1/24/26", std::nullopt},
                                         ShortDate{"Dashes", "11-24-26", std::nullopt},
                                         ShortDate{"Empty", "", std::nullopt},
                                         ShortDate{"HugeYear", "1/1/99999999999", std::nullopt},
                                         ShortDate{"OtherDigits", QString::fromUtf8("١/٢/٢٦"), std::nullopt}),
                         RowName());

struct TimeText {
  const char* name;
  QString text;
  std::optional<QTime> time;
};

class ReadTime : public testing::TestWithParam<TimeText> {};

TEST_P(ReadTime, IsStrict) { EXPECT_EQ(readTime(GetParam().text), GetParam().time); }

INSTANTIATE_TEST_SUITE_P(
    Table, ReadTime,
    testing::Values(TimeText{"Plain", "10:30", QTime(10, 30)}, TimeText{"OneDigit", "9:5", QTime(9, 5)},
                    TimeText{"Evening", "23:59", QTime(23, 59)}, TimeText{"Midnight", "0:00", QTime(0, 0)},
                    TimeText{"NoSuchHour", "24:00", std::nullopt},
                    TimeText{"NoSuchMinute", "9:60", std::nullopt},
                    TimeText{"Marker", "10:30 PM", std::nullopt},
                    TimeText{"Seconds", "9:30:00", std::nullopt}, TimeText{"HourOnly", "9", std::nullopt},
                    TimeText{"ThreeDigits", "9:300", std::nullopt}),
    RowName());

}  // namespace
}  // namespace pendra
