#include "document/IdleReminder.h"

#include "DocumentTest.h"
#include "document/RunningTimers.h"
#include "platform/Preferences.h"

namespace pendra {
namespace {

class IdleReminderTest : public DocumentTest {
 protected:
  void SetUp() override {
    openDocument();
    session.context()->fill([&] {
      acme = &addActivity(&addCustomer("Acme"), nullptr);
      zed = &addActivity(&addCustomer("Zed"), nullptr);
    });
  }
  void start(Activity& activity) {
    std::ignore = session.context()->edit({}, [&] { activity.startEntry(); });
  }
  QStringList notices() {
    QStringList texts;
    for (const Notice& notice : session.notices().standing()) texts << notice.text;
    return texts;
  }

  Activity* acme = nullptr;
  Activity* zed = nullptr;
};

TEST_F(IdleReminderTest, IsDueOnAWorkingDayBetweenTwoTimes) {
  defaults.setBoolean(preferences::kReminder.key, true);
  const struct {
    const char* idleSince;
    const char* due;
  } cases[] = {
      {"2026-11-24T09:00:00Z", "2026-11-24T09:15:00Z"},  // Tuesday, 10:00
      {"2026-11-24T06:00:00Z", "2026-11-24T08:15:00Z"},  // before nine
      {"2026-11-24T15:50:00Z", "2026-11-25T08:15:00Z"},  // it would be after five
      {"2026-11-27T17:00:00Z", "2026-11-30T08:15:00Z"},  // Friday evening
      {"2026-11-28T10:00:00Z", "2026-11-30T08:15:00Z"},  // Saturday
      {"2026-10-23T15:30:00Z", "2026-10-26T08:15:00Z"},  // the clock is set back in between
      {"2026-03-27T17:00:00Z", "2026-03-30T07:15:00Z"},  // and forward
  };
  for (const auto& [idleSince, due] : cases) {
    clock.set(idleSince);
    EXPECT_EQ(IdleReminder(session).due(), instantOf(due)) << idleSince;
  }
}

TEST_F(IdleReminderTest, RemindsOnceUntilSomethingRuns) {
  QStringList told;
  IdleReminder reminder(session, [&](const QString& sentence) { told << sentence; });
  EXPECT_FALSE(reminder.isWaiting()) << "off as long as nobody has asked for it";
  defaults.setBoolean(preferences::kReminder.key, true);
  EXPECT_TRUE(reminder.isWaiting());
  for (const double minutes : {14, 1}) {
    EXPECT_TRUE(notices().isEmpty());
    clock.advance(minutes * 60);
    reminder.look();
  }
  EXPECT_EQ(notices(), QStringList("Nothing has run for 15 minutes."));
  EXPECT_EQ(told, notices());
  defaults.setBoolean(preferences::kReminder.key, false);
  EXPECT_TRUE(notices().isEmpty());
  defaults.setBoolean(preferences::kReminder.key, true);
  clock.advance(3600);
  reminder.look();
  EXPECT_EQ(told.size(), 1);
  EXPECT_EQ(reminder.due(), instantOf("2026-11-25T08:15:00Z")) << "the next day is a stretch of its own";

  start(*acme);
  EXPECT_TRUE(notices().isEmpty());
  EXPECT_FALSE(reminder.isWaiting());
  defaults.setText(preferences::kRemindMinutes.key, "1");
  stopAllActivities(session);
  clock.set("2026-11-24T10:31:00Z");
  reminder.look();
  EXPECT_EQ(told.size(), 2);
  session.close();
  EXPECT_FALSE(reminder.isWaiting());
}

TEST_F(IdleReminderTest, OneAtATimeIsOneStep) {
  start(*acme);
  clock.advance(60);
  start(*zed);
  const auto entries = [&] { return session.context()->all<TimeEntry>(); };
  EXPECT_TRUE(acme->isRunning()) << "several run as one likes, unless one wants it otherwise";
  defaults.setBoolean(preferences::kOneAtATime.key, true);
  clock.advance(60);
  Activity* last = nullptr;
  session.context()->fill([&] { last = &addActivity(nullptr, &addService("Design")); });
  start(*last);
  EXPECT_EQ(entries()[0]->duration(), 120);
  EXPECT_EQ(entries()[1]->duration(), 60);
  EXPECT_TRUE(last->isRunning() && !acme->isRunning() && !zed->isRunning());
  session.context()->undoStack().undo();
  EXPECT_EQ(entries().size(), 2U);
  EXPECT_TRUE(acme->isRunning() && zed->isRunning());
  clock.advance(60);
  EXPECT_EQ(entries()[0]->length(), 180);
}

}  // namespace
}  // namespace pendra
