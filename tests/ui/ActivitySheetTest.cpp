#include <gtest/gtest.h>

#include "Desk.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

const QString kActivities = u"Activities"_s;

class ActivitySheetAtTheDesk : public testing::Test {
 protected:
  ActivitySheetAtTheDesk() {
    acme = &desk.addCustomer(u"Acme"_s);
    roof = &desk.addJob(*acme, u"Roof"_s);
    desk.addCustomer(u"Zenith"_s);
    design = &desk.addService(u"Design"_s);
    plans = &desk.addActivity(acme, design, roof, u"Plans"_s);
    entry = &desk.addPeriod(*plans, "2026-11-23T12:00:30Z", 3659);
    desk.sitDown();
  }

  Desk desk;
  Customer* acme = nullptr;
  Job* roof = nullptr;
  Service* design = nullptr;
  Activity* plans = nullptr;
  TimeEntry* entry = nullptr;
};

TEST_F(ActivitySheetAtTheDesk, IsFilledFromTheActivityAndCancelLeavesIt) {
  desk.pressCell(kActivities, 0, u"Edit"_s, [&] {
    EXPECT_EQ(desk.front().windowTitle(), "Edit Activity");
    EXPECT_EQ(desk.text(u"Customer"_s), "Acme");
    EXPECT_EQ(desk.text(u"Job"_s), "Roof");
    EXPECT_EQ(desk.text(u"Service"_s), "Design");
    EXPECT_EQ(desk.text(u"Activity notes"_s), "Plans");
    EXPECT_EQ(desk.focus(), "Activity notes");
    EXPECT_EQ(desk.row(u"Time entries"_s, 0), "11/23/2026 13:00 01:00:59 Double-click to edit...");
    desk.typeInto(u"Customer"_s, u"Zenith"_s);
    desk.press(Qt::Key_Escape);
  });
  EXPECT_EQ(desk.row(kActivities, 0),
            "Start Acme Roof Design Plans 00:00:00 01:00:59 Edit Activity Complete");
}

}  // namespace
}  // namespace pendra
