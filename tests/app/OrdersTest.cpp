// What other programs read of the answers is a surface: it is held here word for word.
#include <gmock/gmock.h>

#include <QJsonDocument>

#include "Program.h"
#include "model/Queries.h"
#include "orders/Deeds.h"
#include "orders/Reading.h"
#include "orders/Said.h"
#include "store/PersistentStore.h"
#include "support/ManualClock.h"
#include "support/Rows.h"
#include "support/TestPlaces.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

struct World {
  TestPlaces places;
  ManualClock clock{instantOf("2026-11-24T09:00:00Z")};
  Calendar calendar{QTimeZone("Europe/Berlin")};
  ObjectModel model = loadObjectModel();
  QString path = places.documents + u"/Work.pdr"_s;

  World() {
    ObjectContext context(model, clock, calendar);
    EXPECT_TRUE(context.open(path));
    context.fill([&] { fill(context); });
    EXPECT_TRUE(context.save());
  }

  static void fill(ObjectContext& context) {
    auto& acme = context.insert<Customer>();
    acme.setName(u"Acme"_s);
    auto& service = context.insert<Service>();
    service.setName(u"Design"_s);
    auto& design = context.insert<Activity>();
    design.setCompleted(false);
    design.setCustomer(&acme);
    design.setService(&service);
    design.setBillable(true);
    TimeEntry& sent = design.addEntry();
    sent.setStart(instantOf("2026-11-22T23:30:00Z"));  // on Monday in Berlin
    sent.setDuration(1800);
    sent.setDateSubmitted(instantOf("2026-11-23T17:00:00Z"));
    TimeEntry& running = design.startEntry();
    running.setStart(instantOf("2026-11-24T08:00:00Z"));
    running.setNotes(u"the \"roof\"\n\x1b[2J"_s);
    auto& bare = context.insert<Activity>();
    bare.setCompleted(false);
    bare.setNotes(u"Designing nothing"_s);
    TimeEntry& old = bare.addEntry();
    old.setStart(instantOf("2026-11-01T12:00:00Z"));
    old.setDuration(60.5);
  }

  /// What is printed for these words; of what is only asked.
  QByteArray printed(std::vector<const char*> words) {
    QStringList arguments{u"pendra"_s};
    for (const char* word : words) arguments << QString::fromUtf8(word);
    auto order = readOrder(arguments);
    if (!order) return printedAsJson(order.error());
    if (!order.value()) return "no order";
    ObjectContext context(model, clock, calendar);
    EXPECT_TRUE(PersistentStore::look(path, context, model));
    order.value()->document = u"/Work.pdr"_s;
    const auto answer = answerFrom(context, *order.value(), Qt::Monday);
    return answer ? pendra::printed(*order.value(), answer.value()) : printedAsJson(answer.error());
  }
};

struct Asked {
  const char* name;
  std::vector<const char*> words;
  const char* answer;
};

class Answers : public testing::TestWithParam<Asked> {};

TEST_P(Answers, StandWordForWord) {
  World world;
  const QByteArray before = contentsOf(world.path);
  EXPECT_EQ(world.printed(GetParam().words).toStdString(), GetParam().answer);
  EXPECT_EQ(contentsOf(world.path), before);
}

#define ACME_ENTRY "\"customer\":\"Acme\""
#define AND_SERVICE "\"service\":\"Design\""

INSTANTIATE_TEST_SUITE_P(
    Orders, Answers,
    testing::Values(
        Asked{"Status",
              {"status", "--json"},
              "{\"document\":\"/Work.pdr\",\"running\":[{\"billable\":true," ACME_ENTRY
              ",\"id\":1,\"job\":null,\"notes\":null,\"seconds\":3600," AND_SERVICE
              ",\"since\":\"2026-11-24T09:00:00+01:00\"}],\"todaySeconds\":3600,\"unsent\":2,"
              "\"unsentSeconds\":3660.5,\"weekSeconds\":5400}\n"},
        Asked{"StatusInLines",
              {"status"},
              "01:00:00  since 2026-11-24 09:00  Acme - Design\nToday 01:00:00, this week 01:30:00.\n"
              "Not sent: 01:01:00 in 2 entries.\n"},
        Asked{"Log",
              {"log", "--json", "--from", "2026-11-23", "--to", "2026-11-23"},
              "[{" ACME_ENTRY ",\"end\":\"2026-11-23T01:00:00+01:00\",\"job\":null,\"notes\":null,"
              "\"running\":false,\"seconds\":1800,\"sent\":\"2026-11-23T18:00:00+01:00\"," AND_SERVICE
              ",\"start\":\"2026-11-23T00:30:00+01:00\"}]\n"},
        Asked{"LogInLines",
              {"log", "--unsent", "--customer", "acme"},
              "2026-11-24 09:00  01:00:00  Acme - Design  the \"roof\" [2J  (running)\n"},
        Asked{"LogOfNobody",
              {"log", "--json", "--customer", "Zed"},
              "{\"error\":\"NoMatch\",\"message\":\"no customer is called “Zed”\"}\n"},
        Asked{
            "Report",
            {"report", "--json", "--by", "service,day"},
            "{\"groups\":[{\"groups\":[{\"groups\":[],\"name\":\"2026-11-23\",\"seconds\":1800},{\"groups\":["
            "],"
            "\"name\":\"2026-11-24\",\"seconds\":3600}],\"name\":\"Design\",\"seconds\":5400},{\"groups\":[{"
            "\"groups\":[],\"name\":\"2026-11-01\",\"seconds\":60.5}],\"name\":null,\"seconds\":60.5}],"
            "\"seconds\":5460.5}\n"},
        Asked{"ReportInLines",
              {"report", "--by", "customer", "--to", "2026-11-23"},
              "00:30:00  Acme\n00:01:00  (none)\n00:31:00  in all\n"},
        Asked{"UnknownOption",
              {"stop", "--json", "--from", "2026-11-23"},
              "{\"error\":\"WrongUsage\",\"message\":\"unknown option --from (pendra --help says what can be "
              "asked)\"}\n"},
        Asked{"NoDay",
              {"log", "--from", "monday"},
              "{\"error\":\"WrongUsage\",\"message\":\"a day is written as 2026-11-24, not “monday” (pendra "
              "--help "
              "says what can be asked)\"}\n"},
        Asked{"FileOfThatName", {"--", "status"}, "no order"},
        Asked{"DocumentFirst", {"--document", "log", "other.pdr"}, "no order"}),
    RowName());

TEST(Orders, StartStopAndAddWhatIsMeantAndNothingElse) {
  World world;
  const auto document = OpenDocument::read(world.path, world.model, world.clock, world.calendar);
  ASSERT_TRUE(document);
  OpenDocument& open = *document.value();
  const auto why = [](const auto& result) {
    return result ? std::string()
                  : QString(nameOf(refusalOf(result.error())) + u": " + result.error().text).toStdString();
  };
  EXPECT_THAT(why(orders::stop(open, {})),
              testing::HasSubstr("NoMatch: nothing runs; the length of 1 entry"));
  EXPECT_EQ(why(orders::start(open, u"design"_s)),
            "SeveralMatches: “design” matches 2 activities: “Acme - Design”, “Designing nothing”");
  EXPECT_EQ(why(orders::start(open, u"acne sale"_s)),
            "NoMatch: “acne sale” matches no activity; near to it: “Acme - Design”");
  EXPECT_EQ(why(orders::start(open, u" - "_s)), "NoMatch: “ - ” names no activity");
  EXPECT_FALSE(open.context()->hasChanges());
  EXPECT_EQ(open.context()->all<TimeEntry>().size(), 3U);

  const auto started = orders::start(open, u"acme - DESIGN"_s);
  ASSERT_TRUE(started) << why(started);
  EXPECT_EQ(started.value()[u"service"_s], u"Design"_s);
  EXPECT_EQ(why(orders::start(open, u"acme"_s)), "NoMatch: “Acme - Design” runs already");
  EXPECT_THAT(why(orders::exportLog(open, world.places.path(u"log.txt"_s))),
              testing::HasSubstr("Refused: time runs"));
  EXPECT_THAT(why(orders::exportLog(open, u"log.txt"_s)), testing::HasSubstr("Refused"));
  world.clock.advance(90);
  EXPECT_EQ(why(orders::stop(open, u"nothing"_s)), "NoMatch: “nothing” matches no activity");
  const auto stopped = orders::stop(open, {});
  ASSERT_TRUE(stopped) << why(stopped);
  EXPECT_EQ(stopped.value().at(0).toMap()[u"seconds"_s], 90);

  open.context()->fill([&] { open.settings().setStandalone(true); });
  EXPECT_EQ(why(orders::add(open, u" "_s, false)), "WrongUsage: nothing was said");
  EXPECT_EQ(why(orders::add(open, u"acme: design soon @9:30 x"_s, false)),
            "WrongUsage: “x” is no time, no length and no date.");
  EXPECT_EQ(why(orders::add(open, u"acme: dancing"_s, false)),
            "NoMatch: No service item is called “dancing”. With --create it is added to its list.");
  const auto added = orders::add(open, u"acme: dancing - steps @8-9:30"_s, true);
  ASSERT_TRUE(added) << why(added);
  const QByteArray json = printed({.verb = Verb::Add, .asJson = true}, added.value());
  EXPECT_EQ(json.toStdString(), "{\"added\":{" ACME_ENTRY
                                ",\"end\":\"2026-11-24T09:30:00+01:00\",\"job\":null,\"notes\":\"steps\","
                                "\"remarks\":[\"New activity\",\"New service item “dancing”\"],"
                                "\"running\":false,\"seconds\":5400,\"sent\":null,\"service\":\"dancing\","
                                "\"start\":\"2026-11-24T08:00:00+01:00\"}}\n");
  EXPECT_EQ(printed({.verb = Verb::Add}, added.value()),
            "Added: 2026-11-24 08:00  01:30:00  Acme - dancing  steps\n  New activity\n"
            "  New service item “dancing”\n");
  // What the windows would show is said: an overlap, and what a start has stopped.
  open.context()->fill([&] { open.settings().setStartsOneAtATime(true); });
  ASSERT_TRUE(orders::start(open, u"acme - dancing"_s));
  const auto other = orders::add(open, u"acme: design -120"_s, false);
  ASSERT_TRUE(other) << why(other);
  EXPECT_EQ(printed({.verb = Verb::Add}, other.value()).toStdString(),
            "Started: Acme - Design\n  Stopped: Acme - dancing\n"
            "  Overlaps Acme - dancing and 1 more by 01:30:00\n");
  open.context()->undoStack().undo();
  open.context()->undoStack().undo();
  EXPECT_EQ(orders::addStarts(*open.context(), u"acme: design -10"_s, false).value(), true);
  EXPECT_EQ(orders::addStarts(*open.context(), u"acme: design 10m"_s, false).value(), false);
  open.context()->fill([&] { open.settings().setStandalone(false); });
  EXPECT_EQ(why(orders::add(open, u"zed: dancing"_s, true)), "NoMatch: No customer is called “zed”.");
  std::ignore = open.context()->save();

  const QString file = world.places.path(u"log.txt"_s);
  EXPECT_EQ(orders::exportLog(open, file).value()[u"entries"_s], 5);
  const QByteArray exported = contentsOf(file);
  EXPECT_THAT(why(orders::exportLog(open, file)), testing::HasSubstr("exists already and was left alone"));
  EXPECT_EQ(contentsOf(file), exported);
  const auto backup = orders::backUp(open, world.model, world.places.path(u"log.txt"_s));
  ASSERT_TRUE(backup) << why(backup);
  ObjectContext copy(world.model, world.clock, world.calendar);
  ASSERT_TRUE(PersistentStore::look(backup.value()[u"written"_s].toString(), copy, world.model));
  EXPECT_EQ(copy.all<TimeEntry>().size(), 5U);
}

}  // namespace
}  // namespace pendra
