#include "link/Submission.h"

#include "ListedRows.h"
#include "ScriptedVantor.h"
#include "channel/ChannelFailure.h"
#include "link/MergedRecords.h"
#include "link/TimeRecord.h"
#include "platform/Preferences.h"
#include "support/LogCapture.h"
#include "support/Rows.h"

namespace pendra {
namespace {

class SubmissionTest : public LinkTest {
 protected:
  SubmissionTest() {
    identity().setEmployeeName("Clerk 1");
    merge(false);
    vantor.customers = std::vector{item("Acme", "c1"), item("Zed", "c2")};
    vantor.services = std::vector{item("Design", "s1")};
    vantor.jobs = std::vector{jobItem("Roof", "j1", "c1")};
    lists.refreshBeforeSending();
    acme = context().all<Customer>()[0];
    zed = context().all<Customer>()[1];
    roof = context().all<Job>()[0];
    design = context().all<Service>()[0];
    vantor.asked.clear();
  }
  void merge(bool on) { desk.defaults.setBoolean(preferences::kMergeSubmissions, on); }
  TimeEntry& addRow(Activity& activity, const char* start, double seconds) {
    TimeEntry& period = desk.addPeriod(activity, start, seconds);
    rows.add(period);
    return period;
  }
  /// Vantor fails at the record of that number, from 1.
  void failAt(int number, const QString& name) {
    const bool leaves = name != kVTIPCSend && name != kVTIPCArchiverFailure;
    const auto fate = leaves ? ChannelFailure::Fate::InDoubt : ChannelFailure::Fate::NeverLeft;
    vantor.whenSubmitted = [this, number, name, fate](const QString&) {
      if (vantor.timesAsked("submitTime") == number) throw ChannelFailure(name, "scripted", fate);
    };
  }
  [[nodiscard]] QString notice() {
    const auto& standing = desk.session.notices().standing();
    return standing.empty() ? QString() : standing.back().text;
  }
  /// What the file holds: how many entries, how many stamped, how many marked as being sent.
  [[nodiscard]] std::array<int, 3> inFile() {
    ManualClock clock;
    ObjectContext read(desk.session.objectModel(), clock, desk.calendar);
    QFile::copy(desk.places.path("Test.pdr"), desk.places.path("copy.pdr"));
    EXPECT_TRUE(read.open(desk.places.path("copy.pdr")));
    QFile::remove(desk.places.path("copy.pdr"));
    std::array<int, 3> counted{};
    for (const TimeEntry* one : read.all<TimeEntry>()) {
      ++counted[0];
      counted[1] += one->wasSent();
      counted[2] += one->sendingSince().has_value();
    }
    return counted;
  }

  Customer* acme = nullptr;
  Customer* zed = nullptr;
  Job* roof = nullptr;
  Service* design = nullptr;
  ListedRows rows;
  ScriptedSummary summary;
  Submission submission{{desk.session, checks, lists, rows, summary}};
};

TEST_F(SubmissionTest, ARecordIsTheseBytes) {
  Activity& activity = desk.addActivity(acme, design, roof, "Sketches & <notes>, 50 %@");
  TimeEntry& period = desk.addPeriod(activity, "1970-01-01T00:00:10Z", 5400);
  EXPECT_EQ(timeRecord(activity, period, &identity()),
            QString("<record>\n<customerID/>\n<customerID>c1</customerID>\n<job>j1</job>\n"
                    "<jobParent>j1</jobParent>\n<userid>Clerk 1</userid>\n<service>s1</service>\n"
                    "<notes>Sketches & <notes>, 50 %@</notes>\n<billable>1</billable>\n"
                    "<shouldAutoStartTimer>0</shouldAutoStartTimer>\n"
                    "<timeentrydate>10.000000</timeentrydate>\n<duration>1.50</duration>\n</record>\n"));

  activity.setJob(nullptr);
  activity.setNotes(std::nullopt);
  activity.setShouldAutoStartTimer(true);
  activity.setBillable(false);
  period.setStart(instantOf("1969-12-31T23:59:50.5Z"));
  period.setDuration(17);
  EXPECT_EQ(timeRecord(activity, period, nullptr),
            QString("<record>\n<customerID/>\n<customerID>c1</customerID>\n<job>(null)</job>\n"
                    "<jobParent>(null)</jobParent>\n<userid>(null)</userid>\n<service>s1</service>\n"
                    "<notes>(null)</notes>\n<billable>0</billable>\n"
                    "<shouldAutoStartTimer>1</shouldAutoStartTimer>\n"
                    "<timeentrydate>-9.500000</timeentrydate>\n<duration>0.00</duration>\n</record>\n"));
}

TEST_F(SubmissionTest, EverythingGoesOutOnceAndIsStampedDurably) {
  Activity& onRoof = desk.addActivity(acme, design, roof);
  addRow(onRoof, "2026-11-24T08:00:00Z", 3600);
  addRow(onRoof, "2026-11-24T09:00:00Z", 1800.9);
  TimeEntry& before = addRow(desk.addActivity(zed, design), "2026-11-23T09:00:00Z", 60);
  before.setDateSubmitted(Instant{1.0});  // exactly: sent, when sent one by one
  desk.session.ports().interfaces.load(Interface::TimerWindow);

  submission.sendSelectedTime();
  EXPECT_THAT(summary.lines, testing::ElementsAre(SummaryLine{"Acme", "Roof", "Design", "01:30:00"}));
  EXPECT_EQ(vantor.records.size(), 2);
  EXPECT_TRUE(vantor.records[0].startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<record>\n"));
  EXPECT_EQ(desk.alerts.messages(), QStringList{"Time Sent"});
  EXPECT_EQ(progress.shown, (QStringList{"Fetching the lists from Vantor… 7",
                                         "Fetching the lists from Vantor… 7", "1 of 2", "2 of 2"}));
  EXPECT_EQ(inFile(), (std::array{3, 2, 0}));
  EXPECT_EQ(before.submittedSeconds(), 1.0);
  EXPECT_EQ(rows.reloads, 1);
  EXPECT_EQ(vantor.openChannels, 0);
  EXPECT_FALSE(summary.open || progress.spinning);
  EXPECT_LT(vantor.asked.indexOf("customers"), vantor.asked.indexOf("services"));

  submission.sendSelectedTime();
  EXPECT_THAT(summary.lines, testing::IsEmpty());
  EXPECT_EQ(vantor.records.size(), 2);
  EXPECT_EQ(desk.alerts.messages(), (QStringList{"Time Sent", "Time Sent"})) << "also when there was nothing";
}

TEST_F(SubmissionTest, ASelectionIsAllThatTheMenuSendsAndACancelSendsNothing) {
  Activity& activity = desk.addActivity(acme, design);
  addRow(activity, "2026-11-24T08:00:00Z", 3600);
  addRow(activity, "2026-11-24T09:00:00Z", 7200);
  rows.selected = 1;
  summary.answer = 0;
  submission.sendAllTime();
  EXPECT_THAT(vantor.records, testing::IsEmpty());
  EXPECT_THAT(desk.alerts.messages(), testing::IsEmpty());
  EXPECT_FALSE(rows.selected);

  rows.selected = 1;
  summary.answer = 1;
  submission.sendAllTime();
  ASSERT_EQ(vantor.records.size(), 1);
  EXPECT_TRUE(vantor.records[0].contains("<duration>2.00</duration>"));
}

TEST_F(SubmissionTest, ADayOfAnActivityIsMergedFromTheLastRowToTheFirst) {
  merge(true);
  Activity& onRoof = desk.addActivity(acme, design, roof);
  Activity& other = desk.addActivity(zed, design);
  TimeEntry& early = addRow(onRoof, "2026-03-03T08:00:00Z", 3600.9);
  addRow(other, "2026-03-03T08:00:00Z", 100.5);
  TimeEntry& month = addRow(onRoof, "2026-04-03T10:00:00Z", 1800.9);
  TimeEntry& base = addRow(onRoof, "2026-03-03T23:30:00Z", 60.9);  // the 4th in Berlin
  TimeEntry& once = addRow(onRoof, "2026-03-04T09:00:00Z", 10.9);
  once.setDateSubmitted(Instant{1.0});  // exactly: unsent, when merged

  submission.sendSelectedTime();
  ASSERT_EQ(vantor.records.size(), 3);
  const auto part = [&](int record) {
    return vantor.records[record].split("<timeentrydate>")[1].chopped(10);
  };
  EXPECT_EQ(part(0), QString("1772580600.000000</timeentrydate>\n<duration>0.02</duration>\n"));
  EXPECT_EQ(part(1), QString("1772524800.000000</timeentrydate>\n<duration>1.50</duration>\n"));
  EXPECT_EQ(part(2), QString("1772524800.000000</timeentrydate>\n<duration>0.03</duration>\n"));
  for (const TimeEntry* one : {&early, &month, &base, &once}) EXPECT_TRUE(one->wasSent());
  EXPECT_EQ(inFile(), (std::array{5, 5, 0})) << "no temporary entry in the file";
  EXPECT_EQ(onRoof.entries().size(), 4u);
  EXPECT_EQ(progress.shown.back(), QString("3 of 3"));
}

TEST_F(SubmissionTest, TheMergedLengthIsOfWholeSecondsAndALoneOneKeepsItsFraction) {
  Activity& activity = desk.addActivity(acme, design);
  addRow(activity, "2026-11-23T08:00:00Z", 10.75);
  addRow(activity, "2026-11-24T08:00:00Z", 10.75);
  addRow(activity, "2026-11-24T07:00:00Z", 20.75);
  const auto records = mergedRecords(rows.rows, desk.calendar);
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[0].duration, 30.0);
  EXPECT_EQ(records[0].start, instantOf("2026-11-24T07:00:00Z"));
  EXPECT_EQ(records[1].duration, 10.75);
}

struct Cleared {
  const char* name;
  bool merging;
  void (*clear)(SubmissionTest&, ScriptedVantor&);
  const char* message;
  const char* informativeEnd;
  int sent;
};

constexpr auto kInactive = "A customer, job, or service is inactive or deleted in Vantor";
constexpr auto kChanged = "A customer, job, or service name has changed in Vantor";

class ClearedTest : public SubmissionTest, public testing::WithParamInterface<Cleared> {};

TEST_P(ClearedTest, HoldsBackWhatVantorNoLongerKnows) {
  merge(GetParam().merging);
  // The middle of three rows is the one that loses something.
  TimeEntry& first = addRow(desk.addActivity(zed, design), "2026-11-24T07:00:00Z", 3600);
  TimeEntry& held = addRow(desk.addActivity(acme, design, roof), "2026-11-24T08:00:00Z", 3600);
  TimeEntry& last = addRow(desk.addActivity(zed, design), "2026-11-24T09:00:00Z", 3600);
  GetParam().clear(*this, vantor);

  submission.sendSelectedTime();
  EXPECT_EQ(desk.alerts.messages(), QStringList{GetParam().message});
  EXPECT_TRUE(desk.alerts.last().informative.endsWith(GetParam().informativeEnd));
  EXPECT_EQ(vantor.records.size(), GetParam().sent);
  EXPECT_FALSE(held.wasSent());
  EXPECT_TRUE(last.wasSent());
  EXPECT_EQ(first.wasSent(), GetParam().sent == 2);
  EXPECT_TRUE(held.activity()->loss().any());
  EXPECT_EQ(inFile(), (std::array{3, GetParam().sent, 0}));
}

void loseJob(SubmissionTest&, ScriptedVantor& vantor) { vantor.jobs->clear(); }
void loseCustomer(SubmissionTest&, ScriptedVantor& vantor) {
  vantor.customers->erase(vantor.customers->begin());
}

INSTANTIATE_TEST_SUITE_P(
    All, ClearedTest,
    testing::Values(
        Cleared{"JobOneByOne", false, loseJob, kChanged, "to figure out your next steps.", 2},
        Cleared{"JobMerged", true, loseJob, kInactive, "update the activities  and send them to Vantor.", 1},
        Cleared{"CustomerOneByOne", false, loseCustomer, kChanged, "next steps.", 2},
        Cleared{"CustomerMerged", true, loseCustomer, kInactive, "  and send them to Vantor.", 1}),
    RowName());

TEST_F(SubmissionTest, AnActivityWithoutACustomerIsToldInTheOtherWords) {
  addRow(desk.addActivity(nullptr, design), "2026-11-24T08:00:00Z", 60);
  submission.sendSelectedTime();
  EXPECT_EQ(desk.alerts.messages(), QStringList{kInactive});
  EXPECT_TRUE(desk.alerts.last().informative.endsWith("update the activities and send them to Vantor."));
  EXPECT_TRUE(notice().startsWith("0 of 1 records were sent; the others lack")) << notice().toStdString();
}

struct Failure {
  const char* name;
  QString exception;
  bool merging;
  int inDoubt;  // entries of unknown fate
};

class FailureTest : public SubmissionTest, public testing::WithParamInterface<Failure> {};

TEST_P(FailureTest, LeavesEveryEntrySentUnsentOrInDoubt) {
  merge(GetParam().merging);
  Activity& activity = desk.addActivity(acme, design, roof);
  for (const char* start : {"2026-11-21T08:00:00Z", "2026-11-22T08:00:00Z", "2026-11-23T08:00:00Z"}) {
    addRow(activity, start, 3600);
    addRow(activity, start, 60);
  }
  failAt(2, GetParam().exception);
  const LogCapture log;
  submission.sendSelectedTime();
  EXPECT_EQ(vantor.records.size(), 1);
  EXPECT_THAT(log.lines(), testing::Contains(GetParam().exception + ": scripted"));
  EXPECT_THAT(desk.alerts.messages(), testing::IsEmpty());
  EXPECT_EQ(vantor.openChannels, 0) << "a late answer must not answer a later call";
  EXPECT_EQ(inFile(), (std::array{6, GetParam().merging ? 2 : 1, GetParam().inDoubt}));
  EXPECT_EQ(activity.entries().size(), 6u);
  EXPECT_TRUE(
      notice().startsWith(GetParam().merging ? "1 of 3 records were sent; " : "1 of 6 records were sent; "));
  EXPECT_EQ(notice().contains("asked about before the next sending"), GetParam().inDoubt > 0);

  if (GetParam().inDoubt > 0) desk.alerts.willAnswer({"Send Again"});
  vantor.whenSubmitted = {};
  submission.sendSelectedTime();
  EXPECT_EQ(vantor.records.size(), GetParam().merging ? 3 : 6);
  EXPECT_EQ(desk.alerts.unasked(), 0u);
  EXPECT_EQ(inFile(), (std::array{6, 6, 0}));
}

INSTANTIATE_TEST_SUITE_P(All, FailureTest,
                         testing::Values(Failure{"Timeout", kVTIPCTimeout, false, 1},
                                         Failure{"TimeoutMerged", kVTIPCTimeout, true, 2},
                                         Failure{"Garbage", kVTIPCUnArchiverFailure, false, 1},
                                         Failure{"NeverLeft", kVTIPCSend, false, 0},
                                         Failure{"NeverLeftMerged", kVTIPCSend, true, 0},
                                         Failure{"NotWritten", kVTIPCArchiverFailure, true, 0}),
                         RowName());

TEST_F(SubmissionTest, WhatArrivedAfterAllIsStampedAndACancelKeepsTheQuestion) {
  TimeEntry& period = addRow(desk.addActivity(acme, design, roof), "2026-11-24T08:00:00Z", 5400);
  failAt(1, kVTIPCTimeout);
  const LogCapture log;
  submission.sendSelectedTime();
  vantor.whenSubmitted = {};

  desk.alerts.willAnswer({"Cancel"});
  submission.sendSelectedTime();
  EXPECT_EQ(desk.alerts.last().message, QString("Did the time for “Acme - Roof - Design” arrive in Vantor?"));
  EXPECT_EQ(desk.alerts.last().buttons, (QStringList{"It Arrived", "Send Again", "Cancel"}));
  EXPECT_TRUE(desk.alerts.last().informative.contains("(01:30:00, begun at 11/24/26 9:00 AM)"));
  EXPECT_FALSE(period.wasSent());

  desk.clock.advance(600);
  desk.alerts.willAnswer({"It Arrived"});
  EXPECT_TRUE(notice().contains("asked about before the next sending"));
  submission.sendSelectedTime();
  EXPECT_EQ(notice(), QString()) << "it has been asked";
  EXPECT_EQ(period.dateSubmitted(), instantOf("2026-11-24T09:00:00Z")) << "when it left";
  EXPECT_THAT(vantor.records, testing::IsEmpty());
  EXPECT_EQ(inFile(), (std::array{1, 1, 0}));
}

TEST_F(SubmissionTest, WhatIsToBeSentAgainButIsNotSelectedStaysUnsentAndIsSaid) {
  Activity& activity = desk.addActivity(acme, design, roof);
  TimeEntry& first = addRow(activity, "2026-11-24T08:00:00Z", 5400);
  failAt(1, kVTIPCTimeout);
  const LogCapture log;
  submission.sendSelectedTime();
  vantor.whenSubmitted = {};
  addRow(activity, "2026-11-24T12:00:00Z", 60);
  rows.selected = 1;
  desk.alerts.willAnswer({"Send Again"});
  submission.sendSelectedTime();
  EXPECT_FALSE(first.wasSent() || first.sendingSince());
  EXPECT_EQ(vantor.records.size(), 1);
  EXPECT_EQ(notice(), "Of the entries to be sent again, 1 are not selected or not shown, and stay unsent.");
}

TEST_F(SubmissionTest, NothingLeavesThatCannotBeWrittenDownFirst) {
  TimeEntry& period = addRow(desk.addActivity(acme, design), "2026-11-24T08:00:00Z", 60);
  const LogCapture log;
  desk.putAnotherFileInItsPlace();
  submission.sendSelectedTime();
  EXPECT_EQ(vantor.timesAsked("submitTime"), 0);
  EXPECT_FALSE(period.sendingSince() || period.wasSent());
  EXPECT_TRUE(notice().startsWith("0 of 1 records were sent; the document could not be saved: "));
}

TEST_F(SubmissionTest, AFailingRefreshEndsTheCommand) {
  addRow(desk.addActivity(acme, design), "2026-11-24T08:00:00Z", 60);
  desk.session.ports().interfaces.load(Interface::TimerWindow);
  vantor.whenAsked = [](const QString& what) {
    if (what == "jobs") throw ChannelFailure(kVTIPCTimeout, "scripted");
  };
  EXPECT_THROW(submission.sendSelectedTime(), ChannelFailure);
  EXPECT_FALSE(progress.spinning);
  EXPECT_EQ(vantor.openChannels, 0);
}

TEST_F(SubmissionTest, ACheckThatFailsAtTheEndChangesNothing) {
  TimeEntry& period = addRow(desk.addActivity(acme, design), "2026-11-24T08:00:00Z", 60);
  vantor.company = std::nullopt;
  identity().setCompanyFileName("/Books/Acme.cmp");
  EXPECT_FALSE(submission.sendEntries());
  EXPECT_EQ(rows.reloads, 0);
  EXPECT_FALSE(period.wasSent());
}

TEST_F(SubmissionTest, TheLogsOwnGuardLooksAtTheRows) {
  Activity& activity = desk.addActivity(acme, design);
  addRow(activity, "2026-11-24T08:00:00Z", 60);
  addRow(activity, "2026-11-24T09:00:00Z", 60).setRunning(true);
  rows.selected = 0;
  EXPECT_TRUE(submission.checkForRunningTimers(false));
  EXPECT_FALSE(submission.checkForRunningTimers(true));
  EXPECT_EQ(desk.alerts.last().style, Alert::Style::Critical);
}

TEST_F(SubmissionTest, TheMenuChecksGuardsAndChecksAgain) {
  desk.addActivity(acme, design).startEntry();
  desk.alerts.willAnswer({"Cancel"});
  submission.sendAllTime();
  EXPECT_EQ(vantor.timesAsked("canTalkToPendra"), 1);
  EXPECT_EQ(desk.alerts.messages(), QStringList{"Pendra needs to stop all timers"});
}

}  // namespace
}  // namespace pendra
