#include "platform/Calendar.h"

#include <gtest/gtest.h>

#include "platform/ZoneFollower.h"
#include "support/Events.h"
#include "support/ManualClock.h"
#include "support/TestPlaces.h"

namespace pendra {
namespace {

TEST(Calendar, GivesEveryLocalTimeAnInstantInTheNightsWhenClocksChangeToo) {
  const struct {
    const char* zone;
    QDate day;
    QTime time;
    const char* universal;
  } rows[] = {{"Europe/Berlin", {2026, 7, 1}, {9, 30}, "2026-07-01T07:30:00Z"},
              {"Europe/Berlin", {2026, 10, 25}, {2, 30}, "2026-10-25T00:30:00Z"},  // twice: the first
              {"Europe/Berlin", {2026, 3, 29}, {2, 30}, "2026-03-29T01:30:00Z"},   // never: moved forward
              {"America/New_York", {2026, 11, 1}, {1, 15}, "2026-11-01T05:15:00Z"},
              {"America/Sao_Paulo", {2018, 11, 4}, {0, 0}, "2018-11-04T03:00:00Z"}};
  for (const auto& row : rows)
    EXPECT_EQ(Calendar(QTimeZone(row.zone)).instant(row.day, row.time), instantOf(row.universal));
}

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
