// The grammar of the quick entry, in one table: what is typed, and what Return will do.
#include <gmock/gmock.h>

#include "store/UndoStack.h"
#include "support/Rows.h"
#include "support/TestSession.h"
#include "ui_core/QuickDeed.h"
#include "ui_core/QuickReadingTexts.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

/// Tuesday, 24 November 2026, 10:00 in Berlin, in a document with names that hold every sign.
struct Papers : TestSession {
  ObjectContext& context;
  QLocale locale{QLocale::English, QLocale::UnitedStates};

  explicit Papers(bool standalone = true) : context(openDocument(standalone)) {
    context.fill([this] { fill(); });
  }

  void fill() {
    Customer& acme = addCustomer("Acme");
    Job& roof = addJob(acme, "Roof");
    addJob(acme, "Roof: East - 2");
    addCustomer("Acme, Inc: North @9 - South");
    addCustomer("Smith, Jones & Co");
    addCustomer("Fernhill");
    Customer& fernwood = addCustomer("Fernwood Clinic");
    addCustomer("Old \"Bridge\" 90m");
    Customer& hidden = addCustomer("Fernandez");
    hidden.setShown(false);
    addCustomer("Fernet").setShown(false);
    Service& design = addService("Design");
    addService("Design - print");
    addService("Development");
    Activity& plain = addActivity(&acme, &design);
    addActivity(&acme, &design, &roof, "sketches");
    addActivity(&fernwood, &design, nullptr, "first");
    addActivity(&fernwood, &design, nullptr, "second");
    addActivity(&acme, &design, nullptr, "done").setCompleted(true);
    addEntry(plain, "2026-11-24T07:00:00Z", 3600);
    addEntry(plain, "2026-11-24T07:30:00Z", 1800);
    TimeEntry& running = addActivity(&hidden, &design).startEntry();
    running.setStart(instantOf("2026-11-24T08:45:00Z"));
  }

  QuickReading read(const QString& text, NewNames newNames = NewNames::Made) {
    return readQuickEntry(text, NameIndex(context), context, newNames, locale);
  }
  QString said(const QString& text, NewNames newNames = NewNames::Made) {
    return textsOf(read(text, newNames), context).joined().replace(u'\n', u'|');
  }
};

struct Typed {
  const char* name;
  const char* text;
  const char* said;
  const char* now = "2026-11-24T09:00:00Z";
  NewNames newNames = NewNames::Refused;
};

/// Reading changes nothing, so that all rows share one document.
class Grammar : public testing::TestWithParam<Typed> {
 protected:
  static void SetUpTestSuite() { shared = std::make_unique<Papers>(); }
  static void TearDownTestSuite() { shared.reset(); }
  static inline std::unique_ptr<Papers> shared;
};

TEST_P(Grammar, SaysWhatReturnWillDo) {
  Papers& papers = *shared;
  papers.clock.set(instantOf(GetParam().now));
  const QString said = papers.said(QString::fromUtf8(GetParam().text), GetParam().newNames);
  EXPECT_EQ(said.toStdString(), GetParam().said);
}

INSTANTIATE_TEST_SUITE_P(
    Names, Grammar,
    testing::Values(
        Typed{"Nothing", "  ", ""}, Typed{"Whole", "Acme: Design", "Starts now|Acme - Design"},
        Typed{"InAnyCaseWithoutBlanks", "acme,roof:design - Sketches",
              "Starts now|Acme - Roof - Design, “sketches”"},
        Typed{"BegunNames", "smi: dev - plan",
              "Starts now|New activity: Smith, Jones & Co - Development, “plan”"},
        Typed{"ASecondWord", "jones: Dev", "Starts now|New activity: Smith, Jones & Co - Development"},
        Typed{"CustomerAlone", "acme, roof", "Starts now|Acme - Roof - Design, “sketches”"},
        Typed{"WithoutJobIsAnotherActivity", "acme: design - sketches",
              "Starts now|New activity: Acme - Design, “sketches”"},
        Typed{"CompletedGoesOn", "acme: design - Done 90m",
              "Books 01:30:00, today from 8:30 to 10:00|Acme - Design, “done”|"
              "Overlaps Acme - Design and 2 more by 00:45:00|Takes up a completed activity again"},
        Typed{"CompletedIsNamedWholly", "acme: design - do", "Starts now|New activity: Acme - Design, “do”"},
        Typed{"AnAgoBehindAnAt", "acme: design @-10", "“@-10” is no time of day."},
        Typed{"ServiceMissing", "smith, jones & co", "The service item is missing, as in “Acme: Design”."},
        Typed{"CustomerMissing", ": design", "The customer is missing."},
        Typed{"BothMissing", "- sketches", "A customer and a service item are missing."},
        Typed{"JobWithoutCustomer", ", roof: design", "A job needs its customer before it."},
        Typed{"Unknown", "Zed: Design", "No customer is called “Zed”."},
        Typed{"UnknownJob", "Acme, Cellar: Design", "This customer has no job “Cellar”."},
        Typed{"UnknownService", "Acme: Dancing", "No service item is called “Dancing”."},
        Typed{"HiddenButInUse", "fernand: design", "“Fernandez - Design” runs already."},
        Typed{"HiddenWhereNoOtherFits", "ferne: design", "Starts now|New activity: Fernet - Design"},
        Typed{"SeveralNames", "fern: design",
              "“fern” fits 3 customers: Fernandez, Fernhill, Fernwood Clinic."},
        Typed{"SeveralActivities", "fernwood",
              "2 activities fit: “Fernwood Clinic - Design - first”, “Fernwood Clinic - Design - second”."},
        Typed{"TheNotesDecide", "fernwood: design - SECOND", "Starts now|Fernwood Clinic - Design, “second”"},
        Typed{"SignsInTheCustomer", "acme, inc: north @9 - south: design @9:30 - 10",
              "Books 00:30:00, today from 9:30 to 10:00|New activity: Acme, Inc: North @9 - South - Design|"
              "Overlaps Fernandez - Design by 00:15:00"},
        Typed{"SignsInABegunName", "smith, j: dev",
              "Starts now|New activity: Smith, Jones & Co - Development"},
        Typed{"SignsInJobAndService", "acme, roof: east - 2: design - print - x",
              "Starts now|New activity: Acme - Roof: East - 2 - Design - print, “x”"},
        Typed{"ALengthInAName", "old \"bridge\" 90m: design 90m",
              "Books 01:30:00, today from 8:30 to 10:00|New activity: Old \"Bridge\" 90m - Design|"
              "Overlaps Acme - Design and 2 more by 00:45:00"},
        Typed{"Quoted", "\"Old \"\"Bridge\"\" 90m\": \"Design\" - \"not @9:30, nor 90m\"",
              "Starts now|New activity: Old \"Bridge\" 90m - Design, “not @9:30, nor 90m”"},
        Typed{"QuotedIsWhole", "\"Smith\": Design", "No customer is called “Smith”."},
        Typed{"QuoteNotClosed", "\"Acme: Design", "The quote is not closed."},
        Typed{"NewNames", "\"Smith\", Attic: Dancing",
              "Starts now|New activity: Smith - Attic - Dancing|New customer “Smith”|New job “Attic”|"
              "New service item “Dancing”",
              "2026-11-24T09:00:00Z", NewNames::Made}),
    RowName());

#define ACME "|Acme - Design"

INSTANTIATE_TEST_SUITE_P(
    Times, Grammar,
    testing::Values(
        Typed{"Length", "acme: design 90m",
              "Books 01:30:00, today from 8:30 to 10:00" ACME
              "|Overlaps Acme - Design and 2 more by 00:45:00"},
        Typed{"LengthWithBlanks", "acme: design - draft 1 h 5 min",
              "Books 01:05:00, today from 8:55 to 10:00|New activity: Acme - Design, “draft”|"
              "Overlaps Fernandez - Design and 2 more by 00:20:00"},
        Typed{"Comma", "acme: design 1,5 h yesterday", "Books 01:30:00, yesterday from 12:00 to 13:30" ACME},
        Typed{"AsOf", "acme: design @9:30",
              "Starts as of 9:30, 00:30:00 ago" ACME "|Overlaps Fernandez - Design by 00:15:00"},
        Typed{"Ago", "acme: design -10",
              "Starts as of 9:50, 00:10:00 ago" ACME "|Overlaps Fernandez - Design by 00:10:00"},
        Typed{"AgoWithUnitsAndLength", "acme: design -1h30 30m",
              "Books 00:30:00, today from 8:30 to 9:00" ACME
              "|Overlaps Acme - Design and 1 more by 00:30:00"},
        Typed{"FromTo", "acme: design @6:30-7.15", "Books 00:45:00, today from 6:30 to 7:15" ACME},
        Typed{"Halves", "acme: design yesterday @11-1pm",
              "Books 02:00:00, yesterday from 11:00 to 13:00" ACME},
        Typed{"OneHalfForBoth", "acme: design yesterday @2-4pm",
              "Books 02:00:00, yesterday from 14:00 to 16:00" ACME},
        Typed{"Weekday", "acme: design mon @9 45 min", "Books 00:45:00, yesterday from 9:00 to 9:45" ACME},
        Typed{"WeekdayOfToday", "acme: design Tuesday @6-7", "Books 01:00:00, today from 6:00 to 7:00" ACME},
        Typed{"DayAndMonth", "acme: design @6-7 24.12.",
              "Books 01:00:00, Wed 24 Dec 2025 from 6:00 to 7:00" ACME},
        Typed{"MonthAndDay", "acme: design 11/20 @6-7",
              "Books 01:00:00, Fri 20 Nov 2026 from 6:00 to 7:00" ACME},
        Typed{"InWords", "acme: design 3 days ago @6-7",
              "Books 01:00:00, Sat 21 Nov 2026 from 6:00 to 7:00" ACME},
        Typed{"IsoDay", "acme: design 2026-11-20 @6-24",
              "Books 18:00:00, Fri 20 Nov 2026 from 6:00 to 0:00 the next day" ACME "|Longer than 12 hours"},
        Typed{"OverMidnight", "acme: design yesterday @22-1",
              "Books 03:00:00, yesterday from 22:00 to 1:00 the next day" ACME},
        Typed{"OfDays", "acme: design 11/20 @22 30h",
              "Books 30:00:00, Fri 20 Nov 2026 from 22:00 to Sun 22 Nov 2026 4:00" ACME
              "|Longer than 12 hours"},
        Typed{"StartedYesterday", "acme: design yesterday @23:30",
              "Starts as of yesterday 23:30, 10:30:00 ago" ACME
              "|Overlaps Acme - Design and 2 more by 01:15:00"},
        Typed{"JustNow", "acme: design yesterday @23:30", "Starts as of yesterday 23:30, 00:45:00 ago" ACME,
              "2026-11-23T23:15:00Z"},
        Typed{"ADayInANote", "acme: design - call on mon",
              "Starts now|New activity: Acme - Design, “call on mon”"},
        Typed{"ADayAlone", "acme: design yesterday", "A day needs a time or a length: @9:30-11 or 90m."},
        Typed{"StillToCome", "acme: design @10:01", "10:01 is still to come."},
        Typed{"EndsInTheFuture", "acme: design @9:30-9",
              "It would end at 25 Nov 2026 9:00, which is still to come."},
        Typed{"Tomorrow", "acme: design tomorrow @9-10", "25 Nov 2026 9:00 is still to come."},
        Typed{"NoTime", "acme: design 0m", "It would take no time."},
        Typed{"NoTimeOfDay", "acme: design - x @25", "“@25” is no time of day."},
        Typed{"NoMinute", "acme: design @9:75", "“@9:75” is no time of day."},
        Typed{"NothingBehindTheTime", "acme: design @9:30 sketches",
              "“sketches” is no time, no length and no date."},
        Typed{"TwoTimes", "acme: design @8 @9", "“@9” says again what was said before it."},
        Typed{"TwoEnds", "acme: design @6-7 1h", "It says twice how long it is."},
        Typed{"TwoBeginnings", "acme: design -10 @6", "It says twice when it began."},
        Typed{"NeverWas", "acme: design 3/29 @2:30-4",
              "2:30 did not exist on that day, when the clock was put forward."},
        Typed{"OverTheGap", "acme: design 3/29 @1:30-3:30",
              "Books 01:00:00, Sun 29 Mar 2026 from 1:30 to 3:30" ACME},
        Typed{"Twice", "acme: design 10/25 @2:30-3:30",
              "Books 02:00:00, Sun 25 Oct 2026 from 2:30 to 3:30" ACME
              "|2:30 was twice on that day; the first is meant"}),
    RowName());

TEST(QuickEntry, PointsAtWhatItDoesNotUnderstand) {
  Papers papers;
  const QString text = u"acme, cellar: design - x @9:30 soon"_s;
  const auto fault = papers.read(text).fault;
  ASSERT_TRUE(fault);
  EXPECT_EQ(text.mid(fault->at, fault->length), u"soon"_s);
  const auto unknown = papers.read(u"acme, cellar: design"_s, NewNames::Refused).fault;
  ASSERT_TRUE(unknown);
  EXPECT_EQ(text.mid(unknown->at, unknown->length), u"cellar"_s);
  papers.context.fill([&] { papers.addCustomer(" Odd, name "); });
  EXPECT_EQ(papers.said(u"\" Odd, name \": design"_s), u"Starts now|New activity:  Odd, name  - Design"_s);
}

TEST(QuickEntry, ReadsDaysAsTheDateFieldsDo) {
  Papers papers;
  const QString inMarch = u"Books 01:00:00, Wed 4 Mar 2026 from 6:00 to 7:00|Acme - Design"_s;
  EXPECT_EQ(papers.said(u"acme: design @6-7 3/4"_s), inMarch);
  papers.locale = QLocale(QLocale::German, QLocale::Germany);
  EXPECT_EQ(papers.said(u"acme: design @6-7 4/3"_s), inMarch);
  EXPECT_EQ(papers.said(u"acme: design 4. März @6-7"_s), inMarch);
  EXPECT_EQ(papers.said(u"acme: design Montag @6-7"_s),
            u"Books 01:00:00, yesterday from 6:00 to 7:00|Acme - Design"_s);
}

TEST(QuickEntry, IsOneStepThatIsTakenBackWhole) {
  Papers papers;
  papers.session.requireEdits();
  ObjectContext& context = papers.context;
  const auto counts = [&] {
    return std::vector{context.all<Customer>().size(), context.all<Job>().size(),
                       context.all<Service>().size(), context.all<Activity>().size(),
                       context.all<TimeEntry>().size()};
  };
  const auto before = counts();
  const auto made = carryOut(papers.read(u"Zed, Attic: Dancing - steps @6-7:30"_s), context);
  ASSERT_TRUE(made);
  const TimeEntry& entry = *made.value();
  EXPECT_EQ(entry.start(), instantOf("2026-11-24T05:00:00Z"));
  EXPECT_EQ(entry.duration(), 5400);
  EXPECT_NE(entry.running(), true);
  const Activity& activity = *entry.activity();
  EXPECT_EQ(queries::nameOf(activity.job()->customer()), u"Zed"_s);
  EXPECT_EQ(activity.customer(), activity.job()->customer());
  EXPECT_EQ(queries::nameOf(activity.service()), u"Dancing"_s);
  EXPECT_EQ(activity.notes(), u"steps"_s);
  EXPECT_TRUE(activity.billable() == true && activity.completed() == false);
  EXPECT_EQ(context.undoStack().undoName(), u"Booking of Zed - Attic - Dancing"_s);
  context.undoStack().undo();
  EXPECT_EQ(counts(), before);

  // Of two that differ in case, and of customers that are called the same, each is the one that is named.
  context.fill([&] {
    papers.addJob(papers.addCustomer("Twin"), "attic");
    papers.addJob(papers.addCustomer("Twin"), "Attic");
  });
  const auto twin = carryOut(papers.read(u"Twin, Attic: Design 5m"_s), context);
  ASSERT_TRUE(twin);
  EXPECT_EQ(queries::nameOf(twin.value()->activity()->job()), u"Attic"_s);
  EXPECT_EQ(twin.value()->activity()->customer(), twin.value()->activity()->job()->customer());
  EXPECT_EQ(papers.said(u"twin, ATTIC: design"_s), u"“ATTIC” fits 2 jobs: Attic, attic."_s);

  const auto started = carryOut(papers.read(u"acme: design -10"_s), context);
  ASSERT_TRUE(started);
  EXPECT_EQ(started.value()->running(), true);
  EXPECT_EQ(started.value()->start(), instantOf("2026-11-24T08:50:00Z"));
  EXPECT_EQ(context.undoStack().undoName(), u"Start of Acme - Design"_s);
  EXPECT_EQ(papers.said(u"acme: design"_s), u"“Acme - Design” runs already."_s);

  const auto steps = context.undoStack().undoName();
  EXPECT_FALSE(carryOut(papers.read(u"acme: design @11"_s), context));
  EXPECT_FALSE(carryOut(papers.read(QString()), context));
  EXPECT_EQ(context.undoStack().undoName(), steps);
}

}  // namespace
}  // namespace pendra
