#include "LogFixture.h"
#include "platform/Preferences.h"
#include "support/LogCapture.h"

namespace pendra {
namespace {

struct FilterRow {
  const char* name;
  QString customer, job, service;
  QString text;
};
class LogFilterText : public TimeLog, public testing::WithParamInterface<FilterRow> {};

TEST_P(LogFilterText, IsExactly) {
  activityOf("Acme", "Roof");
  activityOf("Bob \"B\" Ltd");
  log.reloadNames();
  const auto& row = GetParam();
  const LogCapture lines;
  pickCustomer(row.customer);
  log.jobPopup.selectItemWithTitle(row.job);
  log.servicePopup.selectItemWithTitle(row.service);
  EXPECT_EQ(log.buildPredicate(), row.text);
}

INSTANTIATE_TEST_SUITE_P(
    Choices, LogFilterText,
    testing::Values(
        FilterRow{"NothingChosen", "All", "All", "All", ""},
        FilterRow{"Customer", "Acme", "All", "All", "customer.name LIKE \"Acme\""},
        FilterRow{"TwoBlanksBeforeTheJob", "Acme", "Roof", "All",
                  "customer.name LIKE \"Acme\" &&  job.name LIKE \"Roof\""},
        FilterRow{"ServiceAlone", "All", "All", "Design", "service.name LIKE \"Design\""},
        FilterRow{"AllThree", "Acme", "Roof", "Design",
                  "customer.name LIKE \"Acme\" &&  job.name LIKE \"Roof\" && service.name LIKE \"Design\""},
        FilterRow{"NoChoiceAtAll", "gone", "gone", "gone", ""},
        FilterRow{"QuotesStayAsTheyAre", "Bob \"B\" Ltd", "All", "All",
                  "customer.name LIKE \"Bob \"B\" Ltd\""}),
    RowName());

struct CustomerRow {
  const char* name;
  QString customer;
  QStringList listed;
};
class LogOfCustomer : public TimeLog, public testing::WithParamInterface<CustomerRow> {};

TEST_P(LogOfCustomer, ListsWhatMatches) {
  for (const char* name : {"Acme", "acme", "A*", "Who?", "Whom", "All", "Bob \"B\" Ltd"}) {
    test.addPeriod(activityOf(QString::fromUtf8(name)), "2026-11-24T08:00:00Z", 60);
  }
  log.reloadNames();
  const LogCapture lines;
  pickCustomer(GetParam().customer);
  EXPECT_EQ(column("customer"), GetParam().listed);
  EXPECT_EQ(lines.lines().size(), GetParam().listed.isEmpty() ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(Names, LogOfCustomer,
                         testing::Values(CustomerRow{"CaseCounts", "acme", {"acme"}},
                                         CustomerRow{"AStarMatchesAnyRun", "A*", {"Acme", "A*", "All"}},
                                         CustomerRow{"AQuestionMarkMatchesOne", "Who?", {"Who?", "Whom"}},
                                         CustomerRow{"AQuoteBreaksTheText", "Bob \"B\" Ltd", {}},
                                         CustomerRow{
                                             "AllCannotBeFiltered",
                                             "All",
                                             {"Acme", "acme", "A*", "Who?", "Whom", "All", "Bob \"B\" Ltd"}}),
                         RowName());

struct DateRow {
  const char* name;
  QString from, to;
  QStringList listed;
};
class LogBetweenDates : public TimeLog, public testing::WithParamInterface<DateRow> {};

TEST_P(LogBetweenDates, ListsWholeDays) {
  // Berlin: the clock goes back in the night of 25 October, and forward in that of 29 March.
  Activity& activity = activityOf("Acme");
  for (const char* start :
       {"2026-10-23T22:30:00Z", "2026-10-24T21:59:59Z", "2026-10-24T22:00:00Z", "2026-10-25T00:30:00Z",
        "2026-10-25T01:30:00Z", "2026-10-25T22:59:59Z", "2026-10-25T23:00:00Z", "2026-03-28T22:59:00Z",
        "2026-03-29T01:30:00Z", "2026-03-29T22:00:00Z", "2026-06-01T10:00:00Z"}) {
    test.addPeriod(activity, start, 7200);
  }
  log.startDateField = GetParam().from;
  log.endDateField = GetParam().to;
  log.reloadData();
  EXPECT_EQ(column("date"), GetParam().listed);
}

INSTANTIATE_TEST_SUITE_P(
    Bounds, LogBetweenDates,
    testing::Values(
        DateRow{"OneLongDay",
                "10/25/26",
                "10/25/26",
                {"Sun 25 Oct 2026, 00:00:00", "Sun 25 Oct 2026, 02:30:00", "Sun 25 Oct 2026, 02:30:00",
                 "Sun 25 Oct 2026, 23:59:59"}},
        DateRow{"OneShortDay", "3/29/26", "3/29/26", {"Sun 29 Mar 2026, 03:30:00"}},
        DateRow{"UpToADay", "", "29 March 2026", {"Sat 28 Mar 2026, 23:59:00", "Sun 29 Mar 2026, 03:30:00"}},
        DateRow{"FromADay", "26 October 2026", "", {"Mon 26 Oct 2026, 00:00:00"}},
        DateRow{"CrossedBounds", "10/26/26", "10/25/26", {}},
        DateRow{"FarFromBothBounds", "5/1/26", "7/1/26", {"Mon 1 Jun 2026, 12:00:00"}}),
    RowName());

TEST_F(TimeLog, AnUnreadableDateDoesNotLimitAndSaysSo) {
  test.addPeriod(activityOf("Acme"), "2026-11-24T08:00:00Z", 60);
  log.startDateField = "soonish";
  log.reloadData();
  EXPECT_EQ(log.rows().rowCount(), 1);
  EXPECT_FALSE(log.isReadable(log.startDateField));
  EXPECT_TRUE(log.isReadable("last monday"));
  EXPECT_TRUE(log.isReadable(""));
}

TEST_F(TimeLog, ExactlyOneSecondIsHiddenAsSentAndCannotBeMarkedUnsent) {
  Activity& activity = activityOf("Acme");
  for (const double seconds : {0.0, 0.999, 1.0, 1.001}) {
    test.addPeriod(activity, "2026-11-24T08:00:00Z", 60).setDateSubmitted(Instant{seconds});
  }
  log.reloadData();
  EXPECT_EQ(column("submitted"), (QStringList{"-", "-", "01/01/01", "01/01/01"}));
  log.selection().selectRows({0, 1, 2, 3});
  test.alerts.willAnswer({"Continue"});
  log.markSelectedUnsent();
  EXPECT_EQ(column("submitted"), (QStringList{"-", "-", "01/01/01", "-"})) << "the mark follows at once";
  log.setHidesSubmitted(true);
  EXPECT_EQ(column("submitted"), (QStringList{"-", "-", "-"}));
  EXPECT_EQ(activity.entries()[3]->dateSubmitted(), kReferenceInstant);
  EXPECT_EQ(activity.entries()[2]->submittedSeconds(), 1.0);
}

TEST_F(TimeLog, PopUpsListEachNameOnceWhateverItsCase) {
  activityOf("zed").customer()->setShown(false);
  activityOf("Acme", "Roof");
  activityOf("Acme", "Attic");
  activityOf("Bob").customer()->setShown(std::nullopt);
  activityOf("");
  log.start();
  EXPECT_EQ(log.customerPopup.titles(), (QStringList{"All", "Acme", "zed"}));
  EXPECT_EQ(log.servicePopup.titles(), (QStringList{"All", "Design"}));
  queries::customersNamed(*test.session.context(), "Acme")[0]->jobs()[0]->setShown(false);
  pickCustomer("Acme");
  EXPECT_EQ(log.jobPopup.titles(), (QStringList{"All", "Attic"}));
  log.customerPicked(log.servicePopup);
  EXPECT_EQ(log.jobPopup.titles(), (QStringList{"All", "Attic"})) << "not the customer's pop-up";
}

TEST_F(TimeLog, ACustomerNamedAllOffersNoJobs) {
  activityOf("All", "Roof");
  log.start();
  pickCustomer("All");
  EXPECT_EQ(log.jobPopup.titles(), QStringList("All"));
}

TEST_F(TimeLog, TheSameChoiceIsAllWithTheJobsIndexLeftOver) {
  test.addPeriod(activityOf("Acme", "Roof"), "2026-11-24T08:00:00Z", 60);
  test.addPeriod(activityOf("Bob"), "2026-11-24T08:00:00Z", 60);
  log.reloadNames();
  pickCustomer("Acme");
  log.jobPopup.selectItemWithTitle("Roof");
  log.reloadData();
  ASSERT_EQ(log.rows().rowCount(), 1);
  log.reloadKeepingChoice();
  EXPECT_EQ(log.customerPopup.indexOfSelectedItem(), 0);
  EXPECT_EQ(log.servicePopup.indexOfSelectedItem(), 0);
  EXPECT_EQ(log.jobPopup.titles(), QStringList{"All"});
  EXPECT_EQ(log.jobPopup.indexOfSelectedItem(), -1);
  EXPECT_EQ(log.rows().rowCount(), 2);
  EXPECT_EQ(log.buildPredicate(), "");
}

TEST_F(TimeLog, ClearingTheFiltersShowsEverything) {
  test.addPeriod(activityOf("Acme"), "2026-11-24T08:00:00Z", 60).setDateSubmitted(test.clock.now());
  log.setHidesSubmitted(true);
  EXPECT_EQ(log.emptiness(), LogEmptiness::FilteredAway);
  log.startDateField = "tomorrow";
  log.clearFilters();
  EXPECT_EQ(log.emptiness(), LogEmptiness::HasRows);
  EXPECT_FALSE(test.defaults.boolean(preferences::kHideSubmitted));
}

TEST_F(TimeLog, WithoutEntriesOrADocumentThereIsNothing) {
  log.start();
  log.reloadData();
  EXPECT_EQ(log.emptiness(), LogEmptiness::NoEntries);
  EXPECT_EQ(log.customerPopup.titles(), QStringList{"All"});
  test.session.close();
  log.reloadKeepingChoice();
  log.updateRunningEntries();
  EXPECT_EQ(log.emptiness(), LogEmptiness::NoEntries);
}

TEST_F(TimeLog, AnEditTakesAnEntryThroughTheFiltersByDayAndBySent) {
  ObjectContext& context = *test.session.context();
  TimeEntry& entry = test.addPeriod(activityOf("Acme"), "2026-11-23T08:00:00Z", 60);
  log.startDateField = "11/24/26";
  log.reloadData();
  const auto rowsAfter = [&](const std::function<void()>& work) {
    std::ignore = context.edit(QStringLiteral("Edit"), work);
    return log.rows().rowCount();
  };
  EXPECT_EQ(rowsAfter([&] { entry.setStart(test.clock.now()); }), 1);
  EXPECT_EQ(rowsAfter([&] { entry.setStart(instantOf("2026-11-22T08:00:00Z")); }), 0);
  log.clearFilters();
  log.setHidesSubmitted(true);
  EXPECT_EQ(rowsAfter([&] { entry.setDateSubmitted(test.clock.now()); }), 0);
  EXPECT_EQ(rowsAfter([&] { entry.setDateSubmitted(kReferenceInstant); }), 1);
}

}  // namespace
}  // namespace pendra
