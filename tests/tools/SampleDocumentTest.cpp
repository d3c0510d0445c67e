#include "sample/SampleDocument.h"

#include "model/Queries.h"
#include "support/Rows.h"
#include "support/TestModel.h"

namespace pendra {
namespace {

/// A sample as its entries tell it: whom, when, how long, when sent.
QStringList entriesOf(const SampleOptions& options, const char* zone) {
  const ObjectModel model = testModel();
  const SampleClock clock(options.today);
  const Calendar calendar{QTimeZone(zone)};
  ObjectContext context(model, clock, calendar);
  fillSample(context, options);
  QStringList entries;
  for (const TimeEntry* entry : context.all<TimeEntry>()) {
    entries << QStringLiteral("%1 %2 %3 %4 %5")
                   .arg(queries::nameOf(entry->activity()->customer()), entry->notes().value_or(QString()))
                   .arg(entry->start()->seconds, 0, 'f', 3)
                   .arg(entry->storedDuration(), 0, 'f', 3)
                   .arg(entry->submittedSeconds(), 0, 'f', 3);
  }
  return entries;
}

TEST(SampleDocument, IsMadeOfItsOptionsAlone) {
  const SampleOptions options{.entries = 300};
  const QStringList entries = entriesOf(options, "Europe/Berlin");
  EXPECT_EQ(entries, entriesOf(options, "America/New_York"));
  EXPECT_NE(entries, entriesOf({.entries = 300, .seed = 2}, "Europe/Berlin"));
}

struct CountRow {
  const char* name;
  SampleOptions options;
  int customers, jobs, services, open, entries;
};
class SampleDocumentCounts : public testing::TestWithParam<CountRow> {};

TEST_P(SampleDocumentCounts, AreMet) {
  const auto& row = GetParam();
  const ObjectModel model = testModel();
  const SampleClock clock(row.options.today);
  const Calendar calendar{QTimeZone::utc()};
  ObjectContext context(model, clock, calendar);
  fillSample(context, row.options);
  const auto count = [](const auto& objects) { return static_cast<int>(objects.size()); };
  EXPECT_EQ(count(context.all<Customer>()), row.customers);
  EXPECT_EQ(count(context.all<Job>()), row.jobs);
  EXPECT_EQ(count(context.all<Service>()), row.services);
  EXPECT_EQ(count(queries::openActivities(context)), row.open);
  EXPECT_EQ(count(context.all<TimeEntry>()), row.entries);
  for (const TimeEntry* entry : context.all<TimeEntry>()) EXPECT_TRUE(entry->activity());
}

INSTANTIATE_TEST_SUITE_P(
    Options, SampleDocumentCounts,
    testing::Values(CountRow{"AsItIs", {}, 12, 24, 8, 14, 400},
                    CountRow{"WithoutCustomers", {.customers = 0}, 0, 0, 8, 0, 0},
                    CountRow{"EntriesOfWhatIsDone",
                             {.customers = 2, .jobs = 3, .services = 0, .activities = 0, .entries = 50},
                             2,
                             3,
                             0,
                             0,
                             50},
                    CountRow{"MoreThanThereAreNames", {.customers = 500, .entries = 1}, 500, 1000, 8, 14, 1}),
    RowName());

}  // namespace
}  // namespace pendra
