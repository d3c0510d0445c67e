#include "sample/SampleDocument.h"

#include "model/Queries.h"
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
                   .arg(entry->sentSeconds(), 0, 'f', 3);
  }
  return entries;
}

TEST(SampleDocument, IsMadeOfItsOptionsAlone) {
  const SampleOptions options{.entries = 300};
  const QStringList entries = entriesOf(options, "Europe/Berlin");
  EXPECT_EQ(entries, entriesOf(options, "America/New_York"));
  EXPECT_EQ(entries.size(), 300);
  EXPECT_NE(entries, entriesOf({.entries = 300, .seed = 2}, "Europe/Berlin"));
  EXPECT_EQ(entriesOf({.customers = 500, .entries = 1}, "UTC").size(), 1) << "more than there are names";
  EXPECT_EQ(entriesOf({.customers = 0}, "UTC").size(), 0) << "there is nobody to work for";
}

}  // namespace
}  // namespace pendra
