#include "LogFixture.h"

namespace pendra {
namespace {

TEST_F(TimeLog, SortsDatesByTimeAndEverythingElseByCodeUnit) {
  Activity& activity = activityOf("Acme");
  test.addEntry(activity, "2026-11-09T08:00:00Z", 100 * 3600)
      .setDateSubmitted(instantOf("2025-12-31T08:00:00Z"));
  test.addEntry(activity, "2026-02-10T08:00:00Z", 99 * 3600)
      .setDateSubmitted(instantOf("2026-02-11T08:00:00Z"));
  test.addEntry(activity, "2026-10-01T08:00:00Z", 60);
  auto& rows = log.rows();
  log.rebuild();
  rows.sortBy({"date", false});
  EXPECT_EQ(column("duration"), (QStringList{"100:00:00", "00:01:00", "99:00:00"}));
  rows.sortBy({"duration", true});
  EXPECT_EQ(column("duration"), (QStringList{"00:01:00", "100:00:00", "99:00:00"}));
  rows.sortBy({"submitted", true});
  EXPECT_EQ(column("submitted"), (QStringList{"-", "02/11/26", "12/31/25"}));
}

TEST_F(TimeLog, SaysInItsColumnsWhatThereIsToKnowOfAnEntry) {
  TimeEntry& away = test.addEntry(activityOf("Away"), "2026-11-24T08:00:00Z", 3600);
  away.setAwayFrom(instantOf("2026-11-24T08:10:00Z"));
  away.setAwayTo(instantOf("2026-11-24T08:47:00Z"));
  away.setNotes("sketches");
  test.addEntry(activityOf("Lost"), "2026-11-23T22:30:00Z", 5400).setSendingSince(test.clock.now());
  Activity& plain = activityOf("Plain");
  test.addEntry(plain, "2026-11-23T21:00:00Z", 60);
  test.addEntry(activityOf("Endless"), "2026-11-22T21:00:00Z", 90000);
  TimeEntry& cutOff = test.addEntry(activityOf("Cut"), "2026-11-22T20:00:00Z", 0);
  cutOff.setHaltedAt(instantOf("2026-11-22T20:50:00Z"));
  Activity& running = activityOf("Running");
  test.addEntry(running, "2026-11-20T08:00:00Z", 60);
  running.startEntry();
  auto& rows = log.rows();
  rows.sortBy({"date", false});
  log.rebuild();
  const struct {
    const char* customer;
    const char* date;
    const char* start;
    const char* end;
    const char* press;
    RowSign sign;
    InGroup place;
    const char* remark;
  } expected[] = {
      {"Running", "Tue 24 Nov 2026", "10:00:00", "now", "Stop", RowSign::None, InGroup::First, ""},
      {"Away", "Tue 24 Nov 2026", "09:00:00", "10:00:00", "Start Again", RowSign::Waiting, InGroup::Further,
       "37 min away?"},
      {"Lost", "Mon 23 Nov 2026", "23:30:00", "01:00:00", "Start Again", RowSign::Warning, InGroup::First,
       "answer lost, asked before it is sent"},
      {"Plain", "Mon 23 Nov 2026", "22:00:00", "22:01:00", "Start Again", RowSign::None, InGroup::Further,
       ""},
      {"Endless", "Sun 22 Nov 2026", "22:00:00", "23:00:00", "Start Again", RowSign::Warning, InGroup::First,
       ""},
      {"Cut", "Sun 22 Nov 2026", "21:00:00", "21:00:00", "Start Again", RowSign::Waiting, InGroup::Further,
       "cut off, length?"},
      {"Running", "Fri 20 Nov 2026", "09:00:00", "09:01:00", "", RowSign::None, InGroup::First, ""}};
  ASSERT_EQ(rows.rowCount(), std::ssize(expected));
  const int state = rows.columnOf(u"state").value();
  for (int row = 0; row < rows.rowCount(); ++row) {
    const auto& is = expected[row];
    const QStringList cells{column("customer")[row], column("date")[row], column("start")[row],
                            column("end")[row], column("state")[row]};
    EXPECT_EQ(cells, (QStringList{is.customer, is.date, is.start, is.end, is.press}));
    EXPECT_EQ(rows.sign(row), is.sign) << is.customer;
    EXPECT_EQ(rows.warning(row, state).isEmpty(), is.sign == RowSign::None) << "a sign says what it means";
    EXPECT_EQ(rows.groupPlace(row), is.place) << row;
    EXPECT_EQ(rows.remark(row, rows.columnOf(u"notes").value()), is.remark);
  }
  EXPECT_EQ(rows.index(1, rows.columnOf(u"notes").value()).data(Qt::AccessibleTextRole),
            "37 min away? sketches");
  rows.sortBy({"customer", true});
  EXPECT_EQ(rows.groupPlace(1), InGroup::Ungrouped);

  plain.setCompleted(true);
  const int last = rows.rowCount() - 3;  // Plain stands before the two of Running
  log.startOrStop(last);
  EXPECT_TRUE(plain.isRunning());
  EXPECT_EQ(plain.completed(), false) << "what runs is listed";
  EXPECT_EQ(column("state")[last], "") << "it runs already";
  log.startOrStop(last);
  EXPECT_EQ(plain.entries().size(), 2U);
  log.startOrStop(last + 1);
  EXPECT_FALSE(plain.isRunning());
}

TEST_F(TimeLog, TheTickMovesRunningRowsOnlyAndLeavesAStoppedOneAsItWas) {
  test.addEntry(activityOf("Acme"), "2026-11-24T08:00:00Z", 60);
  Activity& activity = activityOf("Bob");
  activity.startEntry();
  test.addEntry(activityOf("Zed"), "2026-11-24T08:00:00Z", 60);
  log.rebuild();
  EXPECT_EQ(column("duration"), (QStringList{"00:01:00", "00:00:00", "00:01:00"}));
  QList<int> touched;
  QObject::connect(
      &log.rows(), &QAbstractItemModel::dataChanged,
      [&](const QModelIndex& from, const QModelIndex& to) { touched << from.row() << to.row(); });
  test.clock.advance(90);
  log.updateRunningEntries();
  EXPECT_EQ(column("duration"), (QStringList{"00:01:00", "00:01:30", "00:01:00"}));
  EXPECT_EQ(log.summary().seconds, 210);
  EXPECT_EQ(touched, QList<int>({1, 1}));
  log.rows().sortBy({"customer", false});
  test.clock.advance(1);
  log.updateRunningEntries();
  log.rows().sortBy({"duration", true});
  test.clock.advance(1);
  log.updateRunningEntries();
  EXPECT_EQ(column("duration"), (QStringList{"00:01:00", "00:01:00", "00:01:32"}));
  test.clock.advance(10);
  activity.stop();
  log.updateRunningEntries();
  EXPECT_EQ(column("duration").last(), "00:01:32") << "rows are rebuilt by a reload only";
  log.rebuild();
  EXPECT_EQ(log.summary().seconds, 222);
}

TEST_F(TimeLog, TheSelectionIsTheWindowsCurrentEntry) {
  Activity& activity = activityOf("Acme");
  TimeEntry& sent = test.addEntry(activity, "2026-11-24T08:00:00Z", 60);
  sent.setDateSubmitted(test.clock.now());
  TimeEntry& unsent = test.addEntry(activity, "2026-11-24T08:00:00Z", 60);
  log.rebuild();
  EXPECT_TRUE(log.selectedEntries().empty());
  EXPECT_FALSE(window.canSend());
  log.selection().selectRows({1});
  EXPECT_TRUE(window.canSend());
  EXPECT_EQ(window.currentEntry(), &unsent);
  EXPECT_EQ(log.summary().seconds, 60);
  EXPECT_EQ(log.consideredRows().size(), 1U);
  EXPECT_EQ(log.consideredRows()[0].entry, &unsent);
  log.selection().selectRows({0, 1});
  EXPECT_FALSE(window.canSend()) << "the first selected entry was sent";
  const auto entries = log.selectedEntries();
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_EQ(entries[0], &sent);
  test.session.context()->deleteObject(unsent);
  EXPECT_FALSE(log.selectedEntries()[1]);
}

TEST_F(TimeLog, SelectingAnEntryThatIsNotListedSelectsTheOldRowAgain) {
  Activity& activity = activityOf("Acme");
  test.addEntry(activity, "2026-11-24T08:00:00Z", 60);
  TimeEntry& second = test.addEntry(activity, "2026-11-24T08:00:00Z", 60);
  log.rebuild();
  TimeEntry& unlisted = test.addEntry(activity, "2026-11-24T08:00:00Z", 60);
  log.selectEntry(&unlisted);
  EXPECT_TRUE(log.selection().rows().empty());
  log.selectEntry(&second);
  EXPECT_EQ(log.selection().rows(), std::vector<int>{1});
  log.selectEntry(&unlisted);
  EXPECT_EQ(log.selection().rows(), std::vector<int>{1});
  log.clearSelection();
  EXPECT_EQ(window.currentEntry(), nullptr);
  EXPECT_EQ(log.consideredRows().size(), 2U);
}

TEST_F(TimeLog, NamesFollowTheListsInEveryTableAndFilter) {
  Activity& activity = activityOf("Acme", "Roof");
  test.addEntry(activity, "2026-11-24T08:00:00Z", 60);
  window.rebuild();
  log.rebuild();
  log.reloadNames();
  const auto names = [this](const char* column) {
    return QStringList{cellText(window.rows(), QString::fromLatin1(column), 0),
                       cellText(log.rows(), QString::fromLatin1(column), 0)};
  };
  pickCustomer("Acme");
  log.jobPopup.selectTitle("Roof");
  test.addEntry(activityOf("Zed"), "2026-11-24T08:00:00Z", 60);
  const auto edit = [this](const auto& work) { std::ignore = test.session.context()->edit("Edit", work); };
  edit([&] {
    activity.customer()->setName("Moon");
    activity.job()->setName("Crater");
    design->setName("Survey");
  });
  EXPECT_EQ(names("customer"), QStringList({"Moon", "Moon"}));
  EXPECT_EQ(names("job"), QStringList({"Crater", "Crater"}));
  EXPECT_EQ(log.customerPopup.titles(), QStringList({"All", "Moon", "Zed"}));
  EXPECT_EQ(log.customerPopup.selectedTitle(), "Moon") << "what is chosen stays chosen";
  EXPECT_EQ(log.jobPopup.selectedTitle(), "Crater");
  EXPECT_EQ(log.rows().rowCount(), 1);
  EXPECT_EQ(log.servicePopup.titles(), QStringList({"All", "Survey"}));
  edit([&] {
    test.session.context()->deleteObject(*activity.customer());
    test.session.context()->deleteObject(*design);
  });
  EXPECT_EQ(names("customer"), QStringList({"", ""}));
  EXPECT_EQ(names("job"), QStringList({"", ""})) << "it went with its customer";
  EXPECT_EQ(names("service"), QStringList({"", ""}));
  EXPECT_EQ(log.customerPopup.titles(), QStringList({"All", "Zed"}));
  EXPECT_EQ(log.rows().rowCount(), 2) << "the filter went with its name";
}

TEST_F(TimeLog, MarkingAsUnsentAsksFirst) {
  TimeEntry& entry = test.addEntry(activityOf("Acme"), "2026-11-24T08:00:00Z", 60);
  entry.setDateSubmitted(test.clock.now());
  log.rebuild();
  log.markSelectedUnsent();
  EXPECT_TRUE(test.alerts.shown().empty()) << "nothing is selected";
  log.selection().selectRows({0});
  test.alerts.willAnswer({"Cancel"});
  log.markSelectedUnsent();
  EXPECT_TRUE(entry.wasSent());
  EXPECT_EQ(test.alerts.last().message, "Mark selected activities as unsent");
  EXPECT_EQ(test.alerts.last().buttons, (QStringList{"Continue", "Cancel"}));
}

}  // namespace
}  // namespace pendra
