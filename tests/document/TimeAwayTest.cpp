#include "document/TimeAway.h"

#include "DocumentTest.h"
#include "document/AwayWatch.h"
#include "platform/Preferences.h"
#include "support/Events.h"
#include "support/ScriptedPresence.h"

namespace pendra {
namespace {

/// A desk at which the test says who is there. It looks whenever the test lets time pass.
class AwayTest : public DocumentTest {
 protected:
  void SetUp() override {
    openDocument();
    watch_.emplace(session, idle_, sleep_);
  }
  template <class Work>
  void edit(Work work) {
    ASSERT_TRUE(session.context()->edit({}, work));
  }
  Activity& add(const char* name) {
    Activity* activity = nullptr;
    edit([&] { activity = &addActivity(&addCustomer(name), nullptr); });
    return *activity;
  }
  /// Starts an activity with a touch.
  TimeEntry& start(Activity& activity) {
    idle_.idle = 0;
    TimeEntry* entry = nullptr;
    edit([&] { entry = &activity.startEntry(); });
    watch_->look();
    return *entry;
  }
  void pass(double seconds) {
    clock.advance(seconds);
    sleep_.time.awake += seconds;
    if (idle_.idle) *idle_.idle += seconds;
    watch_->look();
  }
  void sleep(double seconds) {
    sleep_.changes().changed();
    clock.advance(seconds);
    sleep_.time.asleep += seconds;
    sleep_.changes().changed();
  }
  /// Somebody is back and works for some seconds.
  void work(double seconds) {
    clock.advance(1);
    sleep_.time.awake += 1;
    if (idle_.idle) idle_.idle = 0.999;
    watch_->look();
    clock.advance(seconds);
    sleep_.time.awake += seconds;
    watch_->look();
  }
  /// "activity start-end from-to", in seconds after the beginning of the test.
  QStringList entries() {
    QStringList all;
    for (const TimeEntry* entry : session.context()->all<TimeEntry>()) {
      const auto at = [&](Instant instant) { return QString::number(qRound(instant - began_)); };
      QString text = queries::nameOf(entry->activity()->customer()) + u' ' + at(*entry->start()) + u'-';
      if (entry->running() == false) text += at(*entry->start() + entry->storedDuration());
      if (const auto away = unansweredAway(*entry)) text += u' ' + at(away->from) + u'-' + at(away->to);
      all << text;
    }
    return all;
  }
  AwayEntries asked() {
    const auto away = timeAway(*session.context());
    return {away.entries.begin(), away.entries.end()};
  }

  ScriptedIdle idle_;
  ScriptedSleep sleep_;
  std::optional<AwayWatch> watch_;
  Instant began_ = clock.now();
};

TEST_F(AwayTest, FindsWhenNobodyWasThere) {
  const struct {
    const char* why;
    std::function<void()> happens;
    QStringList entries;
  } cases[] = {
      {"nine minutes are no absence",
       [&] {
         pass(540);
         work(60);
       },
       {"A 0-"}},
      {"longer than ten",
       [&] {
         pass(300);
         pass(900);
         work(60);
       },
       {"A 0- 0-1200"}},
      {"after some work",
       [&] {
         work(300);
         idle_.idle = 0;
         pass(700);
         work(60);
       },
       {"A 0- 301-1001"}},
      {"a lid that is closed and opened",
       [&] {
         pass(240);
         sleep(2220);
         work(60);
       },
       {"A 0- 240-2460"}},
      {"gone before the machine slept",
       [&] {
         pass(700);
         sleep(2220);
         pass(30);
         work(60);
       },
       {"A 0- 0-2950"}},
      {"nobody knows of touches: the sleep alone",
       [&] {
         idle_.idle.reset();
         pass(1000);
         sleep(500);
         work(60);
       },
       {"A 0- 1000-1500"}},
      {"nobody tells of the sleep",
       [&] {
         clock.advance(500);
         sleep_.time.asleep += 490;
         sleep_.time.awake += 10;
         idle_.idle = 2;
         watch_->look();
       },
       {"A 0- 10-500"}},
      {"the clock is set back an hour meanwhile: not before the entry began",
       [&] {
         work(3400);
         idle_.idle = 0;
         pass(700);
         clock.advance(-3600);
         pass(100);
         work(60);
       },
       {"A 0- 0-601"}},
      {"the clock is set forward meanwhile: not longer than it was",
       [&] {
         pass(700);
         clock.advance(7200);
         pass(100);
         work(60);
       },
       {"A 0- 7200-8000"}},
      {"the clock is set back an hour while the machine sleeps: as long as it slept",
       [&] {
         work(7199);
         clock.advance(-3600);
         sleep(600);
         work(60);
       },
       {"A 0- 3600-4200"}},
      {"stopped as soon as somebody is back",
       [&] {
         pass(700);
         clock.advance(2);
         sleep_.time.awake += 2;
         idle_.idle = 1;
         edit([&] { session.context()->all<Activity>()[0]->stop(); });
         EXPECT_TRUE(eventually([&] { return !watch_->isWatching(); }));
       },
       {"A 0-702 0-701"}},
      {"another one was started by nobody at the desk",
       [&] {
         pass(700);
         edit([&] { session.context()->all<Activity>()[1]->startEntry(); });
         pass(700);
         work(60);
       },
       {"A 0- 0-1400", "B 700-"}},
      {"sent meanwhile",
       [&] {
         pass(700);
         edit([&] { session.context()->all<TimeEntry>()[0]->setDateSubmitted(clock.now()); });
         work(60);
       },
       {"A 0-"}},
      {"again within a minute: one absence",
       [&] {
         pass(700);
         work(20);
         idle_.idle = 0;
         pass(700);
         work(60);
       },
       {"A 0- 0-1421"}},
      {"again later: each for itself",
       [&] {
         pass(700);
         work(299);
         idle_.idle = 0;
         pass(700);
         work(60);
       },
       {"A 0-700 0-700", "A 700- 1000-1700"}},
  };
  for (const auto& one : cases) {
    const Instant now = clock.now();
    watch_.emplace(session, idle_, sleep_);
    start(add("A"));
    add("B");
    began_ = now;
    one.happens();
    EXPECT_EQ(entries(), one.entries) << one.why;
    EXPECT_FALSE(session.context()->hasChanges()) << one.why;
    edit([&] {
      for (Activity* activity : session.context()->fetch<Activity>())
        session.context()->deleteObject(*activity);
    });
    EXPECT_TRUE(eventually([&] { return !watch_->isWatching(); })) << one.why;
  }
}

TEST_F(AwayTest, DoesNotWakeWhileNothingRunsOrNobodyWantsToBeAsked) {
  EXPECT_FALSE(watch_->isWatching());
  Activity& activity = add("A");
  start(activity);
  EXPECT_TRUE(watch_->isWatching());
  preferences::kAwayMinutes.set(defaults, 0);
  EXPECT_FALSE(watch_->isWatching());
  pass(5000);
  sleep(5000);
  work(60);
  EXPECT_EQ(entries(), QStringList("A 0-"));
  preferences::kAwayMinutes.set(defaults, 1);
  EXPECT_TRUE(watch_->isWatching());
  session.close();
  EXPECT_FALSE(watch_->isWatching());
  const int asked = idle_.asked;
  sleep_.changes().changed();
  EXPECT_EQ(idle_.asked, asked);
}

TEST_F(AwayTest, IsAnsweredOnceAndInventsNoTime) {
  Activity& a = add("A");
  Activity& b = add("B");
  Activity& other = add("Other");
  start(a);
  work(99);
  TimeEntry& second = start(b);
  work(299);
  idle_.idle = 0;
  pass(1200);
  work(99);
  const QStringList marked{"A 0- 400-1600", "B 100- 400-1600"};
  ASSERT_EQ(entries(), marked);
  UndoStack& steps = session.context()->undoStack();
  const auto undone = [&] {
    steps.undo();
    EXPECT_EQ(entries(), marked);
  };
  const auto all = asked();
  keepAway(*session.context(), all);
  EXPECT_EQ(entries(), QStringList({"A 0-", "B 100-"}));
  takeAwayOff(*session.context(), all);
  EXPECT_EQ(entries(), QStringList({"A 0-", "B 100-"})) << "it has been answered";
  undone();
  takeAwayOff(*session.context(), all);
  EXPECT_EQ(entries(), QStringList({"A 0-400", "B 100-400", "A 1600-", "B 1600-"}));
  EXPECT_NEAR(a.runningEntry()->length(), 100, 0.01);
  undone();
  bookAway(*session.context(), all, other);
  EXPECT_EQ(entries(), QStringList({"A 0-400", "B 100-400", "A 1600-", "B 1600-", "Other 400-1600"}));
  undone();

  edit([&] { second.setSendingSince(clock.now()); });
  bookAway(*session.context(), asked(), other);
  EXPECT_EQ(entries(), QStringList({"A 0-400", "B 100-", "A 1600-", "Other 400-1600"})) << "in doubt";
  steps.undo();
  edit([&] {
    second.setSendingSince({});
    a.stop();
    b.stop();
    second.setStart(began_ + 500);
  });
  EXPECT_EQ(entries().at(1), "B 500-2100") << "corrected: the absence lies outside";
  takeAwayOff(*session.context(), asked());
  EXPECT_EQ(entries(), QStringList({"A 0-400", "B 500-2100", "A 1600-1700"}));
}

TEST_F(AwayTest, OvernightAndAcrossTheEndOfSummerTimeItIsAsLongAsItWas) {
  for (const char* evening : {"2026-10-24T21:50:00Z", "2026-03-28T22:50:00Z"}) {
    clock.set(evening);
    began_ = clock.now();
    TimeEntry& entry = start(add("A"));
    sleep(36000);
    work(59);
    const auto away = unansweredAway(entry);
    ASSERT_TRUE(away);
    EXPECT_NEAR(away->length(), 36000, 0.01);
    takeAwayOff(*session.context(), asked());
    const TimeEntry& rest = *entry.activity()->runningEntry();
    EXPECT_EQ(&rest, &entry) << "nothing was done before: it begins now";
    EXPECT_NEAR(rest.length(), 60, 0.01);
    EXPECT_EQ(calendar.day(*rest.start()), calendar.day(began_).addDays(1));
    edit([&] { entry.activity()->stop(); });
  }
}

}  // namespace
}  // namespace pendra
