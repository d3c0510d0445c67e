#include "platform/NaturalDate.h"

#include <gtest/gtest.h>

#include "support/ManualClock.h"

namespace pendra {
namespace {

const Calendar kBerlin{QTimeZone("Europe/Berlin")};

/// A Tuesday, a quarter past nine in the evening, and a fraction.
const Instant kNow = instantOf("2026-11-24T20:15:30.250Z");

TEST(NaturalDate, IsReadFromAnyTextThatADayIsSaidWith) {
  const std::pair<const char*, const char*> rows[] = {
      {"9:30AM11/14/26", "2026-11-14 09:30:00"},
      {"12:05AM11/14/26", "2026-11-14 00:05:00"},
      {"9:5AM1/2/26", "2026-01-02 09:05:00"},
      {"13:30PM11/14/26", "2026-11-14 13:30:00"},
      {"9AM11/14/2026", "2026-11-14 09:00:00"},
      {"9:30AM11/14/75", "1975-11-14 09:30:00"},
      {"11/14/26 9:30:15 pm", "2026-11-14 21:30:15"},
      {"11/14/26", "2026-11-14 12:00:00"},
      {"13:30PM", "2026-11-24 13:30:00"},
      {"9", "2026-11-24 09:00:00"},
      {"2026-11-03", "2026-11-03 12:00:00"},
      {"2026-11-03T07:08:09", "2026-11-03 07:08:09"},
      {"now", "2026-11-24 21:15:30"},
      {"Today", "2026-11-24 12:00:00"},
      {" yesterday ", "2026-11-23 12:00:00"},
      {"tomorrow at noon", "2026-11-25 12:00:00"},
      {"8pm yesterday", "2026-11-23 20:00:00"},
      {"last Tuesday", "2026-11-17 12:00:00"},
      {"next tue", "2026-12-01 12:00:00"},
      {"next sunday, 9:30", "2026-11-29 09:30:00"},
      {"3 weeks ago", "2026-11-03 12:00:00"},
      {"9 months ago", "2026-02-24 12:00:00"},
      {"last week", "2026-11-17 12:00:00"},
      {"november 3rd, 2025 10:15", "2025-11-03 10:15:00"},
      {"3 Sept. 2025", "2025-09-03 12:00:00"},
      {"may 5 10:30", "2026-05-05 10:30:00"},
      {"2:30AM03/29/26", "2026-03-29 03:30:00"},
      {"2:30AM10/25/26", "2026-10-25 02:30:00"},
  };
  for (const auto& [text, local] : rows) {
    const auto instant = readNaturalDate(QString::fromUtf8(text), kNow, kBerlin);
    ASSERT_TRUE(instant) << text;
    EXPECT_EQ(kBerlin.local(*instant).toString(u"yyyy-MM-dd HH:mm:ss"), local) << text;
  }
  EXPECT_EQ(readNaturalDate(u"2:30AM10/25/26", kNow, kBerlin), instantOf("2026-10-25T00:30:00Z"))
      << "the first of two equal times";
  EXPECT_EQ(readNaturalDate(u"now", kNow, kBerlin), kNow) << "to the fraction";
}

TEST(NaturalDate, IsNotGuessed) {
  for (const char* text : {"9:30pmAM11/14/26",
                           "AM11/14/26",
                           "9:3011/14/26",
                           "25:00PM11/14/26",
                           "9:75AM11/14/26",
                           "",
                           "   ",
                           "soonish",
                           "today or so",
                           "2/30",
                           "2/30/26",
                           "feb 30",
                           "2026-02-30",
                           "today 11/14/26",
                           "9:30 10:30",
                           "now 9:30",
                           "2026",
                           "3 weeks",
                           "today,",
                           "-3 days ago",
                           "99999999999999999999",
                           "todays",
                           "11/14/26x"})
    EXPECT_EQ(readNaturalDate(QString::fromUtf8(text), kNow, kBerlin), std::nullopt) << text;
}

}  // namespace
}  // namespace pendra
