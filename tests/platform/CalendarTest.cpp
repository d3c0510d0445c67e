#include "platform/Calendar.h"

#include <gtest/gtest.h>

#include "platform/ZoneFollower.h"
#include "support/Events.h"
#include "support/Rows.h"
#include "support/TestPlaces.h"

namespace pendra {
namespace {

struct LocalTime {
  const char* name;
  const char* zone;
  QDate day;
  QTime time;
  const char* universal;
};

class CalendarInstant : public testing::TestWithParam<LocalTime> {};

TEST_P(CalendarInstant, OfALocalTime) {
  const auto& row = GetParam();
  const Calendar calendar{QTimeZone(row.zone)};
  const Instant instant = calendar.instant(row.day, row.time);
  const QDateTime universal = Calendar(QTimeZone::utc()).local(instant);
  EXPECT_EQ(universal.toString(Qt::ISODate).toStdString(), row.universal);
}

INSTANTIATE_TEST_SUITE_P(
    Nights, CalendarInstant,
    testing::Values(
        LocalTime{"Plain", "Europe/Berlin", {2026, 7, 1}, {9, 30}, "2026-07-01T07:30:00+00:00"},
        LocalTime{"TwiceIsTheFirst", "Europe/Berlin", {2026, 10, 25}, {2, 30}, "2026-10-25T00:30:00+00:00"},
        LocalTime{
            "NeverIsMovedForward", "Europe/Berlin", {2026, 3, 29}, {2, 30}, "2026-03-29T01:30:00+00:00"},
        LocalTime{"AmericanAutumn", "America/New_York", {2026, 11, 1}, {1, 15}, "2026-11-01T05:15:00+00:00"},
        LocalTime{"MidnightThatDoesNotExist",
                  "America/Sao_Paulo",
                  {2018, 11, 4},
                  {0, 0},
                  "2018-11-04T03:00:00+00:00"}),
    RowName());

TEST(Calendar, ADayBeginsAfterAMidnightThatDoesNotExist) {
  const Calendar calendar{QTimeZone("America/Sao_Paulo")};
  const Instant start = calendar.startOfDay({2018, 11, 4});
  EXPECT_EQ(calendar.local(start).time(), QTime(1, 0));
  EXPECT_EQ(calendar.day(start), QDate(2018, 11, 4));
  EXPECT_EQ(calendar.day(start + -0.001), QDate(2018, 11, 3));
}

TEST(Calendar, FollowsTheMachineIntoAnotherZone) {
  int argc = 0;
  const QCoreApplication application(argc, nullptr);
  const TestPlaces places;
  Calendar calendar{QTimeZone("Europe/Berlin")};
  const ZoneFollower follower(calendar, places.config, [] { return Calendar{QTimeZone("Asia/Tokyo")}; });
  ASSERT_TRUE(writeFile(places.path("localtime"), "Tokyo"));
  EXPECT_EQ(calendar.zone().id(), "Europe/Berlin");
  ASSERT_EQ(::rename(qPrintable(places.path("localtime")), qPrintable(places.config + "/localtime")), 0);
  EXPECT_TRUE(eventually([&] { return calendar.zone().id() == "Asia/Tokyo"; }));
}

}  // namespace
}  // namespace pendra
