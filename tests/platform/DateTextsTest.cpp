#include "platform/DateTexts.h"

#include <gtest/gtest.h>

#include "support/ManualClock.h"

namespace pendra {
namespace {

TEST(DateTexts, OfAnInstant) {
  const struct {
    const char* instant;
    const char* zone;
    const char* time;
    const char* day;
  } rows[] = {{"2026-11-24T09:05:59Z", "UTC", "9:05 AM", "11/24/26"},
              {"2026-11-24T00:05:00Z", "UTC", "12:05 AM", "11/24/26"},
              {"2026-11-24T12:00:00Z", "UTC", "12:00 PM", "11/24/26"},
              {"2001-12-31T23:59:59Z", "UTC", "11:59 PM", "12/31/01"},
              {"2026-01-01T02:00:00Z", "America/New_York", "9:00 PM", "12/31/25"},
              {"2026-10-25T01:30:00Z", "Europe/Berlin", "2:30 AM", "10/25/26"}};
  for (const auto& row : rows) {
    const Calendar calendar{QTimeZone(row.zone)};
    const Instant instant = instantOf(row.instant);
    EXPECT_EQ(timeWithMarker(instant, calendar), row.time);
    EXPECT_EQ(timeOfDay(instant, calendar) + u' ' + dayHalf(instant, calendar), QString(row.time));
    EXPECT_EQ(shortDate(instant, calendar), row.day);
  }
}

TEST(DateTexts, OfWholeSecondsInUniversalTime) {
  EXPECT_EQ(universalDateTime(instantOf("2024-05-12T14:30:00.999Z")), "2024-05-12 14:30:00 +0000");
  EXPECT_EQ(universalDateTime(instantOf("2000-12-31T23:59:59.500Z")), "2000-12-31 23:59:59 +0000");
  EXPECT_EQ(dashedDate(instantOf("2026-03-04T09:00:00Z"), Calendar(QTimeZone::utc())), "03-04-2026");
}

TEST(DateTexts, AreReadStrictly) {
  const std::pair<const char*, QDate> days[] = {{"11/24/26", {2026, 11, 24}}, {"1/2/26", {2026, 1, 2}},
                                                {"12/31/49", {2049, 12, 31}}, {"01/01/50", {1950, 1, 1}},
                                                {"5/12/2024", {2024, 5, 12}}, {"5/12/202", {202, 5, 12}},
                                                {"02/29/24", {2024, 2, 29}}};
  for (const auto& [text, day] : days) EXPECT_EQ(readShortDate(QString(text)), day) << text;
  for (const char* text : {"02/29/26", "02/30/26", "13/01/26", "11/24", "11/24/6", "11/24/26 ", "+1/24/26",
                           "11-24-26", "", "1/1/99999999999", "١/٢/٢٦"})
    EXPECT_EQ(readShortDate(QString::fromUtf8(text)), std::nullopt) << text;
  const std::pair<const char*, QTime> times[] = {
      {"10:30", {10, 30}}, {"9:5", {9, 5}}, {"23:59", {23, 59}}, {"0:00", {0, 0}}};
  for (const auto& [text, time] : times) EXPECT_EQ(readTime(QString(text)), time) << text;
  for (const char* text : {"24:00", "9:60", "10:30 PM", "9:30:00", "9", "9:300"})
    EXPECT_EQ(readTime(QString(text)), std::nullopt) << text;
}

}  // namespace
}  // namespace pendra
