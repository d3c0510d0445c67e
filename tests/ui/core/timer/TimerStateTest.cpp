#include "ui_core/TimerState.h"

#include "store/UndoStack.h"
#include "support/CellText.h"
#include "support/TestSession.h"
#include "ui_core/RunningTimers.h"

namespace pendra {
namespace {

class DisplayOfTest final : public TimerDisplay {
 public:
  void showElapsedTime(const QString& text) override { elapsed = text; }
  void showCustomerJobLabel(const QString& text) override { label = text; }
  void showMainButton(bool running) override { button = running ? "pause" : "play"; }
  void hideSendTime() override { sendTimeHidden = true; }
  void showActivitySheet(bool forNew) override { sheets << forNew; }

  QString elapsed;
  QString label;
  QString button;
  bool sendTimeHidden = false;
  QList<bool> sheets;
};

class TimerWindow : public testing::Test {
 protected:
  TimerWindow() {
    test.openDocument();
    acme = &test.addCustomer("Acme");
    design = &test.addService("Design");
    roof = &test.addJob(*acme, "Roof");
  }
  QString cell(const char* identifier, int row) {
    return cellText(state.rows(), QString::fromLatin1(identifier), row);
  }
  void select(const Activity& activity) {
    const auto row = state.rows().indexOf([&](const ActivityRow& one) { return one.activity == &activity; });
    state.selection().selectRow(row.value());
  }

  TestSession test;
  DisplayOfTest display;
  TimerState state{test.session, display, QLocale::c()};
  Customer* acme = nullptr;
  Service* design = nullptr;
  Job* roof = nullptr;
};

TEST_F(TimerWindow, WhatRunsOverMidnightCountsToTodayUntilItIsStopped) {
  test.clock.set("2026-11-24T22:50:00Z");  // 23:50 in Berlin
  Activity& activity = test.addActivity(acme, design);
  activity.startEntry();
  test.clock.set("2026-11-24T23:20:00Z");
  state.rebuild();
  EXPECT_EQ(cell("today", 0), "00:30:00");
  activity.stop();
  state.rebuild();
  EXPECT_EQ(cell("today", 0), "00:00:00");
  EXPECT_EQ(cell("total", 0), "00:30:00");
}

TEST_F(TimerWindow, SeveralTimersRunAndTheDisplayFollowsTheSelectedOne) {
  Activity& first = test.addActivity(acme, design);
  Activity& second = test.addActivity(acme, design, roof);
  state.rebuild();
  select(first);
  state.toggleTimer();
  test.clock.advance(60);
  select(second);
  state.toggleTimer();
  test.clock.advance(5);
  state.updateTimeDisplay();
  EXPECT_TRUE(first.isRunning());
  EXPECT_EQ(display.elapsed, "00:00:05");
  EXPECT_EQ(display.label, "Acme - Roof - Design");
  EXPECT_EQ(display.button, "pause");
  EXPECT_EQ(cell("total", 0), "00:01:05");
  EXPECT_EQ(cell("total", 1), "00:00:05");
  test.clock.advance(-60);  // the user sets the clock back
  state.updateTimeDisplay();
  EXPECT_EQ(display.elapsed, "00:00:05");
}

TEST_F(TimerWindow, NamesWhatRunsAndWhatRanLast) {
  const auto latest = [this] {
    QStringList names;
    for (const Activity* activity : latestActivities(*test.session.context())) names << *activity->notes();
    return names.join(u' ');
  };
  const auto title = [this] { return runningTitle(runningTimers(*test.session.context())); };
  EXPECT_EQ(latest(), "");
  for (const char* name : {"0", "1", "2", "3", "4", "5", "6", "never"}) {
    Activity& activity = test.addActivity(name[0] == '5' ? nullptr : acme, nullptr, roof, name);
    if (name[0] == 'n') break;
    test.addEntry(activity, "2026-11-23T08:00:00Z", 60)
        .setStart(test.clock.now() + -static_cast<double>(name[0]));
    test.addEntry(activity, "2026-11-22T08:00:00Z", 60);
  }
  const Objects<Activity> all = test.session.context()->all<Activity>();
  EXPECT_EQ(latest(), "0 1 2 3 4");
  all[1]->setCompleted(true);
  all[3]->startEntry();
  EXPECT_EQ(latest(), "0 2 4 5 6") << "neither what is complete nor what runs";
  test.clock.advance(3632);
  EXPECT_EQ(title(), "01:00:32 Acme");
  all[5]->startEntry().setStart(test.clock.now() + -7200.0);
  EXPECT_EQ(title(), "02:00:00 and 1 more") << "the longest, which has no customer";
  EXPECT_EQ(shortTitle(*all[3]), "Acme - Roof");
  EXPECT_EQ(shortTitle(*all[5]), "Roof");
}

TEST_F(TimerWindow, ASearchListsAndChangesNothing) {
  Activity& website = test.addActivity(acme, design, roof, "Menu");
  Activity& hall = test.addActivity(&test.addCustomer("Old Hall"), design, nullptr, "Sketches");
  Activity& nameless = test.addActivity(nullptr, nullptr, nullptr, "a roof without a name");
  test.addEntry(website, "2026-11-24T07:00:00Z", 60);
  state.rebuild();
  select(website);
  state.toggleTimer();
  select(hall);
  test.clock.advance(30);
  const auto listed = [this](const char* typed) {
    state.searchActivities(QString::fromLatin1(typed));
    QStringList rows;
    for (int row = 0; row < state.rows().rowCount(); ++row) rows << cell("notes", row);
    return rows.join(u'/');
  };
  EXPECT_EQ(listed("ROOF"), "Menu/a roof without a name");
  EXPECT_EQ(state.leftOut(), 1);
  EXPECT_EQ(state.selectedActivity(), &website) << "the first that was found";
  EXPECT_EQ(listed("roof name"), "a roof without a name") << "every word";
  EXPECT_TRUE(website.isRunning());
  state.updateTimeDisplay();
  EXPECT_EQ(state.hours().glance().today, lengthOf(30));
  EXPECT_EQ(listed("nothing"), "");
  EXPECT_EQ(state.selectedActivity(), nullptr);
  std::ignore = test.session.context()->edit("Elsewhere", [&] { nameless.setNotes("nothing at all"); });
  EXPECT_EQ(listed("nothing"), "nothing at all") << "an edit is followed";
  EXPECT_EQ(listed("  "), "Menu/Sketches/nothing at all");
  EXPECT_EQ(cell("total", 0), "00:01:30") << "as long as it has run meanwhile";
  EXPECT_EQ(state.selectedActivity(), &hall) << "as before the search";
  EXPECT_EQ(listed("menu"), "Menu");
  state.toggleTimer();
  EXPECT_EQ(listed(""), "Menu/Sketches/nothing at all");
  EXPECT_EQ(state.selectedActivity(), &website) << "what was found and used is meant";
  listed("menu");
  state.selectActivity(hall);
  EXPECT_FALSE(state.isSearching());
  EXPECT_EQ(state.selectedActivity(), &hall);
}

TEST_F(TimerWindow, FavouritesStandAboveTheOthersInEveryOrder) {
  for (const char* notes : {"b", "d", "a", "c"}) test.addActivity(acme, nullptr, nullptr, notes);
  state.rebuild();
  const auto order = [this] {
    QString all;
    for (int row = 0; row < state.rows().rowCount(); ++row) {
      const bool begins = state.rows().groupPlace(row) == InGroup::First;
      all += (begins && row > 0 ? u"|" : u"") + cell("notes", row);
    }
    return all;
  };
  for (const int row : {1, 3}) {
    state.selection().selectRow(row);
    state.toggleFavourite();
  }
  EXPECT_EQ(order(), "dc|ba");
  EXPECT_EQ(state.selection().row(), 1) << "the selection follows";
  state.rows().sortBy({"notes", true});
  EXPECT_EQ(order(), "cd|ab");
  state.rows().sortBy({"notes", false});
  EXPECT_EQ(order(), "dc|ba");
  test.session.context()->undoStack().undo();
  EXPECT_EQ(order(), "d|cba");
}

TEST_F(TimerWindow, StartingWithoutASelectionAsksForANewActivity) {
  state.rebuild();
  state.toggleTimer();
  EXPECT_EQ(display.sheets, QList<bool>{true});
  EXPECT_TRUE(display.sendTimeHidden) << "standalone";
}

TEST_F(TimerWindow, SelectingClearsTheLogAndNewsDoesNot) {
  Activity& first = test.addActivity(acme, design);
  Activity& activity = test.addActivity(acme, design);
  TimeEntry& entry = test.addEntry(activity, "2026-11-24T08:00:00Z", 60);
  state.rebuild();
  state.log().rebuild();
  EXPECT_FALSE(state.editable());
  select(activity);
  state.log().selectEntry(&entry);
  EXPECT_EQ(state.currentEntry(), &entry);
  std::ignore = test.session.context()->edit("Elsewhere", [&] {
    first.setCompleted(true);
    first.addEntry();
    acme->setName("Moon");
  });
  EXPECT_EQ(state.selectedActivity(), &activity);
  EXPECT_EQ(state.currentActivity(), &activity);
  EXPECT_EQ(state.log().selectedEntries(), std::vector{Ref<TimeEntry>(&entry)});
  EXPECT_EQ(state.currentEntry(), &entry);
  select(activity);
  EXPECT_EQ(state.log().selectedCount(), 0);
  EXPECT_EQ(state.currentEntry(), nullptr);
}

TEST_F(TimerWindow, NamesWhatIsSelected) {
  Activity& whole = test.addActivity(acme, design, roof);
  state.rebuild();
  const auto label = [this, &whole] {
    select(whole);
    return display.label;
  };
  EXPECT_EQ(label(), "Acme - Roof - Design");
  whole.setJob(nullptr);
  EXPECT_EQ(label(), "Acme - Design");
  whole.setService(nullptr);
  whole.setJob(roof);
  EXPECT_EQ(label(), "Acme");
  whole.setCustomer(nullptr);
  EXPECT_EQ(label(), "Acme") << "without a customer it keeps the one before";
}

TEST_F(TimerWindow, DeletingARunningActivityLeavesNothingThatPointsToIt) {
  Activity& activity = test.addActivity(acme, design);
  TimeEntry& stopped = test.addEntry(activity, "2026-11-24T08:00:00Z", 60);
  state.rebuild();
  select(activity);
  state.deleteEntries({&stopped, &activity.startEntry()});
  EXPECT_FALSE(activity.isRunning());
  EXPECT_TRUE(activity.entries().empty());
  activity.startEntry();
  state.deleteActivity(activity);
  EXPECT_EQ(state.currentActivity(), nullptr);
  EXPECT_EQ(display.button, "play");
  EXPECT_EQ(display.elapsed, "00:00:00");
  EXPECT_EQ(display.label, "");
  EXPECT_TRUE(test.session.context()->all<TimeEntry>().empty());
  state.updateTimeDisplay();
}

TEST_F(TimerWindow, CompletingStopsAndLeavesTheTableUntilMadeCurrentAgain) {
  Activity& activity = test.addActivity(acme, design);
  TimeEntry& entry = activity.startEntry();
  test.clock.advance(90);
  state.rebuild();
  select(activity);
  state.markSelectedCompleted();
  EXPECT_EQ(entry.duration(), 90);
  EXPECT_EQ(state.rows().rowCount(), 0);
  state.setCurrentEntry(&entry);
  state.makeCurrent();
  EXPECT_EQ(state.rows().rowCount(), 1);
}

TEST_F(TimerWindow, TheLastEntryIsTheLatestStartedInWholeSeconds) {
  Activity& activity = test.addActivity(acme, design);
  EXPECT_EQ(TimerState::lastEntryLength(&activity), "00:00:00");
  test.addEntry(activity, "2026-11-24T08:00:00Z", 3725.9);
  test.addEntry(activity, "2026-11-24T08:00:00Z", 10);
  test.addEntry(activity, "2026-11-23T08:00:00Z", 20);
  EXPECT_EQ(TimerState::lastEntryLength(&activity), "01:02:05");
}

}  // namespace
}  // namespace pendra
