#include "link/Submission.h"

#include "ListedRows.h"
#include "ScriptedVantor.h"
#include "channel/ChannelFailure.h"
#include "link/DoubtfulLengths.h"
#include "link/TimeRecord.h"
#include "link/VantorFailure.h"
#include "platform/Preferences.h"
#include "platform/Text.h"
#include "support/LogCapture.h"
#include "support/Rows.h"

namespace pendra {
namespace {

constexpr auto kInactive = "A customer, job, or service is inactive or deleted in Vantor";
constexpr auto kChanged = "A customer, job, or service name has changed in Vantor";

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
    progress.shown.clear();
  }
  void merge(bool on) { desk.defaults.setBoolean(preferences::kMergeSubmissions, on); }
  TimeEntry& addRow(Activity& activity, const char* start, double seconds) {
    TimeEntry& entry = desk.addEntry(activity, start, seconds);
    rows.add(entry);
    return entry;
  }
  void send() { submission.sendSelectedTime(); }
  /// Vantor fails at the record of that number, from 1.
  void failAt(int number, const QString& name) {
    const bool leaves = name != kVTIPCSend && name != kVTIPCArchiverFailure;
    const auto fate = leaves ? VantorFailure::Fate::InDoubt : VantorFailure::Fate::NeverLeft;
    vantor.whenSubmitted = [this, number, name, fate](const QString&) {
      if (vantor.timesAsked("submitTime") == number) throw VantorFailure(name, "scripted", fate);
    };
  }
  [[nodiscard]] QString notice() {
    const auto& standing = desk.session.notices().standing();
    return standing.empty() ? QString() : standing.back().text;
  }
  /// What the file holds: how many entries, how many stamped, how many marked as being sent.
  [[nodiscard]] std::array<int, 3> inFile() {
    ObjectContext read(desk.session.objectModel(), desk.clock, desk.calendar);
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
  LogCapture log;
};

TEST_F(SubmissionTest, ARecordIsTheseBytes) {
  Activity& activity = desk.addActivity(acme, design, roof, "Sketches & <notes>, 50 %@");
  TimeEntry& entry = desk.addEntry(activity, "1970-01-01T00:00:10Z", 5400);
  const auto record = [](const char* job, const char* user, const char* notes, int billable, int starts,
                         const char* date, const char* hours) {
    return formatted(
        u"<record>\n<customerID/>\n<customerID>c1</customerID>\n<job>%@</job>\n"
        "<jobParent>%@</jobParent>\n<userid>%@</userid>\n<service>s1</service>\n"
        "<notes>%@</notes>\n<billable>%@</billable>\n"
        "<shouldAutoStartTimer>%@</shouldAutoStartTimer>\n"
        "<timeentrydate>%@</timeentrydate>\n<duration>%@</duration>\n</record>\n",
        {QString(job), QString(job), QString(user), QString(notes), QString::number(billable),
         QString::number(starts), QString(date), QString(hours)});
  };
  EXPECT_EQ(timeRecord(activity, entry, &identity()),
            record("j1", "Clerk 1", "Sketches & <notes>, 50 %@", 1, 0, "10.000000", "1.50"));
  activity.setJob(nullptr);
  activity.setNotes(std::nullopt);
  activity.setShouldAutoStartTimer(true);
  activity.setBillable(false);
  entry.setStart(instantOf("1969-12-31T23:59:50.5Z"));
  entry.setDuration(17);
  EXPECT_EQ(timeRecord(activity, entry, nullptr),
            record("(null)", "(null)", "(null)", 0, 1, "-9.500000", "0.00"));
}

TEST_F(SubmissionTest, EverythingGoesOutOnceAndIsStampedDurably) {
  Activity& onRoof = desk.addActivity(acme, design, roof, "Sketches");
  addRow(onRoof, "2026-11-24T08:00:00Z", 3600);
  addRow(onRoof, "2026-11-23T09:00:00Z", 1800.9);
  Activity& atZed = desk.addActivity(zed, design, roof, "Plan");
  addRow(atZed, "2026-11-24T09:00:00Z", 60);
  // Exactly one second: sent, when sent one by one. That its job is lost is no matter of this sending.
  Job& gone = desk.addJob(*zed, "Gone", "j9");
  TimeEntry& before = addRow(desk.addActivity(zed, design, &gone), "2026-11-23T09:00:00Z", 60);
  before.setDateSubmitted(Instant{1.0});

  send();
  EXPECT_THAT(
      summary.shown.lines,
      testing::ElementsAre(SummaryLine{"Acme", "Roof", "Design", "23–24 Nov", "2 entries", "01:30:00"},
                           SummaryLine{"Zed", "Roof", "Design", "Tue 24 Nov", "Plan", "00:01:00"},
                           SummaryLine{"Sum", "", "", "", "3 entries, 3 records", "01:31:00", true}));
  EXPECT_EQ(summary.shown.leftOut, "");
  ASSERT_EQ(vantor.records.size(), 3);
  EXPECT_TRUE(vantor.records[0].startsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<record>\n"));
  EXPECT_EQ(desk.alerts.messages(), QStringList{"Time Sent"});
  EXPECT_EQ(progress.shown, (QStringList{"Fetching the lists from Vantor… 7", "1 of 3", "2 of 3", "3 of 3"}));
  EXPECT_EQ(inFile(), (std::array{4, 3, 0}));
  EXPECT_EQ(before.sentSeconds(), 1.0);
  EXPECT_EQ(vantor.openChannels, 0);
  EXPECT_FALSE(summary.open || progress.spinning);
  EXPECT_LT(vantor.asked.indexOf("customers"), vantor.asked.indexOf("services"));

  send();
  EXPECT_TRUE(summary.shown.lines.empty());
  EXPECT_EQ(summary.shown.leftOut, "Everything here has been sent.");
  EXPECT_EQ(vantor.records.size(), 3);
}

struct LeftOut {
  const char* name;
  int listed;
  int filtered;
  int selected;  ///< the row; -1: none
  bool rowIsSent;
  const char* text;
};

const LeftOut kLeftOut[] = {
    {"Nothing", 2, 0, -1, false, ""},
    {"Hidden", 2, 3, -1, false, "2 of 5 unsent entries; 3 are hidden by the filter."},
    {"NotSelected", 2, 0, 0, false, "1 of 2 unsent entries; 1 is not selected."},
    {"Both", 3, 1, 0, false, "1 of 4 unsent entries; 1 is hidden by the filter, 2 are not selected."},
    {"AllHidden", 0, 3, -1, false, "All 3 unsent entries are hidden by the filter."},
    {"OneHidden", 1, 1, -1, true, "The only unsent entry is hidden by the filter."},
    {"ASentOneSelected", 2, 0, 0, true, "Of the unsent entries 1 is not selected."}};

TEST_F(SubmissionTest, WhatIsLeftOutIsSaidInTheSummaryAndCanBeTakenIn) {
  Activity& activity = desk.addActivity(acme, design);
  for (const LeftOut& row : kLeftOut) {
    SCOPED_TRACE(row.name);
    rows.rows.clear();
    vantor.records.clear();
    desk.alerts.forget();
    for (int i = 0; i < row.listed + row.filtered; ++i) addRow(activity, "2026-11-24T08:00:00Z", 60);
    rows.filteredAway.assign(rows.rows.begin() + row.listed, rows.rows.end());
    rows.rows.resize(static_cast<std::size_t>(row.listed));
    if (row.rowIsSent) rows.rows[0].entry->setDateSubmitted(Instant{1e9});
    if (row.selected >= 0) rows.selected = row.selected;
    summary.sends = summary.showsAll = false;
    submission.sendAllTime();
    EXPECT_EQ(summary.shown.leftOut, row.text);
    EXPECT_EQ(summary.shown.canShowAll, *row.text != 0);
    EXPECT_THAT(vantor.records, testing::IsEmpty());
    EXPECT_THAT(desk.alerts.messages(), testing::IsEmpty());
    EXPECT_FALSE(rows.selected);
    if (row.selected >= 0) rows.selected = row.selected;
    summary.sends = summary.showsAll = true;
    submission.sendAllTime();
    EXPECT_EQ(vantor.records.size(), row.listed + row.filtered - row.rowIsSent);
  }
}

TEST_F(SubmissionTest, ADayOfAnActivityIsMergedFromTheLastRowToTheFirst) {
  merge(true);
  Activity& onRoof = desk.addActivity(acme, design, roof);
  Activity& other = desk.addActivity(zed, design);
  addRow(onRoof, "2026-03-03T08:00:00Z", 3600.9);
  addRow(other, "2026-03-03T08:00:00Z", 20.75);
  addRow(onRoof, "2026-04-03T10:00:00Z", 1800.9);
  addRow(onRoof, "2026-03-03T23:30:00Z", 60.9);  // the 4th in Berlin
  TimeEntry& once = addRow(onRoof, "2026-03-04T09:00:00Z", 10.9);
  once.setDateSubmitted(Instant{1.0});  // exactly: unsent, when merged

  send();
  QStringList sent;
  for (const QString& record : vantor.records) sent << record.section("<timeentrydate>", 1).chopped(10);
  const QString times = "%1.000000</timeentrydate>\n<duration>%2</duration>\n";
  EXPECT_EQ(sent, (QStringList{times.arg("1772580600", "0.02"), times.arg("1772524800", "1.50"),
                               times.arg("1772524800", "0.01")}));
  EXPECT_EQ(inFile(), (std::array{5, 5, 0})) << "no temporary entry in the file";
  EXPECT_EQ(onRoof.entries().size(), 4u);
  EXPECT_EQ(progress.shown.back(), QString("3 of 3"));
}

struct Cleared {
  const char* name;
  bool merging;
  void (*clear)(ScriptedVantor&);
  const char* message;
  const char* informativeEnd;
  int sent;
};

class ClearedTest : public SubmissionTest, public testing::WithParamInterface<Cleared> {};

TEST_P(ClearedTest, HoldsBackWhatVantorNoLongerKnows) {
  merge(GetParam().merging);
  // The middle of three rows is the one that loses something.
  TimeEntry& first = addRow(desk.addActivity(zed, design), "2026-11-24T07:00:00Z", 3600);
  TimeEntry& held = addRow(desk.addActivity(acme, design, roof), "2026-11-24T08:00:00Z", 3600);
  addRow(desk.addActivity(zed, design), "2026-11-24T09:00:00Z", 3600);
  if (!GetParam().clear) held.activity()->setCustomer(nullptr);
  if (GetParam().clear) GetParam().clear(vantor);

  send();
  EXPECT_EQ(desk.alerts.messages(), QStringList{GetParam().message});
  EXPECT_TRUE(desk.alerts.last().informative.endsWith(GetParam().informativeEnd));
  EXPECT_EQ(vantor.records.size(), GetParam().sent);
  EXPECT_FALSE(held.wasSent());
  EXPECT_EQ(first.wasSent(), GetParam().sent == 2);
  EXPECT_EQ(held.activity()->loss().any(), GetParam().clear != nullptr);
  EXPECT_EQ(inFile(), (std::array{3, GetParam().sent, 0}));
  EXPECT_TRUE(notice().contains("customer, job or service item that Vantor knows"));
}

void loseJob(ScriptedVantor& vantor) { vantor.jobs->clear(); }
void loseCustomer(ScriptedVantor& vantor) { vantor.customers->erase(vantor.customers->begin()); }

INSTANTIATE_TEST_SUITE_P(
    All, ClearedTest,
    testing::Values(
        Cleared{"JobOneByOne", false, loseJob, kChanged, "to figure out your next steps.", 2},
        Cleared{"JobMerged", true, loseJob, kInactive, "update the activities  and send them to Vantor.", 1},
        Cleared{"CustomerOneByOne", false, loseCustomer, kChanged, "next steps.", 2},
        Cleared{"CustomerMerged", true, loseCustomer, kInactive, "  and send them to Vantor.", 1},
        Cleared{"NoCustomer", false, nullptr, kInactive, "update the activities and send them to Vantor.", 2},
        Cleared{"NoCustomerMerged", true, nullptr, kInactive, "activities and send them to Vantor.", 1}),
    RowName());

struct Failure {
  const char* name;
  QString exception;
  bool merging;
  int inDoubt;  // entries of unknown fate
  const char* told;
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
  const auto fail = vantor.whenSubmitted;
  vantor.whenSubmitted = [&](const QString& record) {
    const int entries = GetParam().merging ? 2 : 1;  // whoever is killed now finds them in doubt
    EXPECT_EQ(inFile(), (std::array{6, static_cast<int>(vantor.records.size()) * entries, entries}));
    fail(record);
  };
  send();
  EXPECT_EQ(vantor.records.size(), 1);
  EXPECT_THAT(log.lines(), testing::Contains(GetParam().exception + ": scripted"));
  EXPECT_THAT(desk.alerts.messages(), testing::IsEmpty());
  EXPECT_EQ(vantor.openChannels, 0) << "a late answer must not answer a later call";
  EXPECT_EQ(inFile(), (std::array{6, GetParam().merging ? 2 : 1, GetParam().inDoubt}));
  EXPECT_EQ(notice().section("; ", 0, 0),
            GetParam().merging ? "1 of 3 records were sent" : "1 of 6 records were sent");
  EXPECT_TRUE(notice().contains(GetParam().told)) << notice().toStdString();

  if (GetParam().inDoubt > 0) desk.alerts.willAnswer({"Send Again"});
  vantor.whenSubmitted = {};
  send();
  EXPECT_EQ(vantor.records.size(), GetParam().merging ? 3 : 6);
  EXPECT_EQ(desk.alerts.unasked(), 0u);
  EXPECT_EQ(inFile(), (std::array{6, 6, 0}));
}

INSTANTIATE_TEST_SUITE_P(
    All, FailureTest,
    testing::Values(Failure{"Timeout", kVTIPCTimeout, false, 1, "did not answer for “Acme - Roof - Design”"},
                    Failure{"TimeoutMerged", kVTIPCTimeout, true, 2, "asked about before the next sending"},
                    Failure{"Cancelled", kVTIPCCancelled, true, 2, "it was cancelled while “Acme"},
                    Failure{"NeverLeft", kVTIPCSend, false, 0, "Vantor could not be reached"},
                    Failure{"NotWritten", kVTIPCArchiverFailure, true, 0, "scripted"}),
    RowName());

TEST_F(SubmissionTest, WhatIsInDoubtIsAskedAboutBeforeAnythingElseLeaves) {
  Activity& activity = desk.addActivity(acme, design, roof);
  TimeEntry& entry = addRow(activity, "2026-11-24T08:00:00Z", 5400);
  failAt(1, kVTIPCTimeout);
  send();
  vantor.whenSubmitted = {};
  activity.setCustomer(zed);
  activity.setJob(nullptr);

  desk.alerts.willAnswer({"Cancel"});
  send();
  EXPECT_EQ(desk.alerts.last().message, QString("Did the time for “Acme - Roof - Design” arrive in Vantor?"));
  EXPECT_EQ(desk.alerts.last().buttons, (QStringList{"It Arrived", "Send Again", "Cancel"}));
  EXPECT_TRUE(desk.alerts.last().informative.contains("(01:30:00, begun at 11/24/26 9:00 AM)"));
  EXPECT_FALSE(entry.wasSent());

  desk.clock.advance(600);
  desk.alerts.willAnswer({"It Arrived"});
  EXPECT_TRUE(notice().contains("asked about before the next sending"));
  send();
  EXPECT_EQ(notice(), QString()) << "it has been asked";
  EXPECT_EQ(entry.dateSubmitted(), instantOf("2026-11-24T09:00:00Z")) << "when it left";
  EXPECT_THAT(vantor.records, testing::IsEmpty());
  EXPECT_EQ(inFile(), (std::array{1, 1, 0}));

  entry.setDateSubmitted(std::nullopt);
  failAt(2, kVTIPCTimeout);
  send();
  vantor.whenSubmitted = {};
  addRow(activity, "2026-11-24T12:00:00Z", 60);
  rows.selected = 1;
  desk.alerts.willAnswer({"Send Again"});
  send();
  EXPECT_FALSE(entry.wasSent() || entry.sendingSince());
  EXPECT_EQ(vantor.records.size(), 1);
  EXPECT_EQ(notice(), "Of the entries to be sent again, 1 is not selected or not shown, and stays unsent.");
}

TEST_F(SubmissionTest, NothingLeavesThatCannotBeWrittenDownOrCheckedFirst) {
  TimeEntry& entry = addRow(desk.addActivity(acme, design), "2026-11-24T08:00:00Z", 60);
  vantor.whenAsked = [](const QString& what) {
    if (what == "jobs") throw VantorFailure(kVTIPCTimeout, "scripted");
  };
  EXPECT_THROW(send(), VantorFailure);
  EXPECT_FALSE(progress.spinning);
  EXPECT_EQ(vantor.openChannels, 0);
  vantor.whenAsked = [this](const QString& what) {
    if (what == "services") desk.workspace.setRunning(identifiers::kVantor, false);
  };
  send();
  EXPECT_EQ(desk.alerts.messages(), QStringList("Please start Vantor and try again"));
  vantor.whenAsked = {};
  desk.workspace.setRunning(identifiers::kVantor, true);
  desk.addActivity(acme, design).startEntry();
  desk.alerts.willAnswer({"Cancel"});
  submission.sendAllTime();
  EXPECT_EQ(desk.alerts.last().message, "Pendra needs to stop all timers");
  desk.putAnotherFileInItsPlace();
  desk.alerts.willAnswer({"OK"});
  send();
  EXPECT_EQ(summary.shown.remark, "1 timer was stopped for this.");
  EXPECT_EQ(vantor.timesAsked("submitTime"), 0);
  EXPECT_FALSE(entry.sendingSince() || entry.wasSent());
  EXPECT_TRUE(notice().startsWith("0 of 1 record was sent; the document could not be saved: "));
}

TEST_F(SubmissionTest, ALengthThatNobodyCanHaveWorkedIsToldAndAskedAbout) {
  const DoubtfulLengths lengths(desk.session);
  Activity& activity = desk.addActivity(acme, design);
  for (const double moved : {-3600.0, 86401.0, 86400.0}) {
    TimeEntry& entry = activity.startEntry();
    rows.add(entry);
    desk.clock.advance(moved);
    std::ignore = context().edit("Stop", [&] { activity.stop(); });
    EXPECT_EQ(entry.storedDuration(), moved) << "stored as the clock has it";
    EXPECT_EQ(notice().contains(moved < 0 ? "-1:00:00. Its length is negative" : "24:00:01. It is longer"),
              true);
  }
  desk.alerts.willAnswer({"Cancel"});
  send();
  EXPECT_EQ(desk.alerts.last().informative, "“Acme - Design”: -1:00:00\n“Acme - Design”: 24:00:01");
  EXPECT_THAT(vantor.records, testing::IsEmpty());
  desk.alerts.willAnswer({"Send"});
  send();
  EXPECT_EQ(vantor.records.size(), 3);
}

}  // namespace
}  // namespace pendra
