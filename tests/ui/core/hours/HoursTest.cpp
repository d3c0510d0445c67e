#include <SQLiteCpp/SQLiteCpp.h>

#include <random>

#include "../log/LogFixture.h"
#include "model/Report.h"
#include "store/UndoStack.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

/// What limits the hours; the dates of days without an end are none.
struct Limits {
  QDate first{};
  QDate last{};
  std::optional<QString> customer{};
  std::optional<QString> service{};
  QString word{};  ///< in a name or a note
  bool unsentOnly = false;
};

/// A document of chance around the night in which Berlin's clocks go back, with sent, running and unanswered
/// entries, with equal names, and with names that are missing. Whatever adds its hours up has to say what a
/// query of the file says.
class RandomHours : public TimeLog, public testing::WithParamInterface<unsigned> {
 protected:
  RandomHours() {
    test.clock.set("2026-10-28T10:00:00Z");
    for (const char* name : {"Acme", "Acme", "Bolt", "Crane", "Dune", "Elm", "Fir"}) {
      Customer* customer = chance(7) ? &test.addCustomer(QString::fromLatin1(name)) : nullptr;
      for (int each = below(4); each >= 0; --each) {
        Job* job = customer && chance(2) ? &test.addJob(*customer, QString(QChar(u'A' + below(2)))) : nullptr;
        activities.push_back(&test.addActivity(customer, chance(5) ? design : nullptr, job));
        activities.back()->setBillable(chance(2));
      }
    }
    for (int each = 0; each < 400; ++each) change();
  }

  int below(int bound) { return std::uniform_int_distribution(0, bound - 1)(random); }
  bool chance(int of) { return below(of) != 0; }

  /// One of the things that happen to entries.
  void change() {
    const auto entries = test.session.context()->all<TimeEntry>();
    Activity& activity = *activities[static_cast<size_t>(below(static_cast<int>(activities.size())))];
    TimeEntry* any =
        entries.empty() ? nullptr : entries[static_cast<size_t>(below(static_cast<int>(entries.size())))];
    // Half an hour around midnights, and any moment; the week before and after the change.
    const double start = instantOf("2026-10-18T22:00:00Z").seconds + below(14) * 86400 +
                         (chance(3) ? below(86400) : below(3600) - 1800) + below(1000) / 1000.0;
    const int what = any ? below(12) : 0;
    if (what < 6) {
      TimeEntry& entry = activity.addEntry();
      entry.setStart(Instant{start});
      entry.setDuration(below(30000) + below(1000) / 1000.0);
      if (!chance(3)) entry.setNotes(chance(2) ? u"Plan of the Elms"_s : u"100% _done_"_s);
      if (what == 5 && !activity.isRunning()) entry.startTimer();  // one at a time, as in life
    }
    if (what == 6) any->setDateSubmitted(Instant{test.clock.now().seconds});
    if (what == 7) any->setStart(chance(20) ? std::optional(Instant{start}) : std::nullopt);
    if (what == 8) any->running() == true ? any->stopTimer() : any->setDuration(below(9000));
    if (what == 9 && any->running() != true) any->setActivity(&activity);
    if (what == 10) any->setDateSubmitted(kReferenceInstant);
    if (what == 11) test.session.context()->deleteObject(*any);
  }

  /// The sums of the entries in the file, which SQL finds and adds up.
  Hours inFile(const Limits& limits) {
    SQLite::Database file(test.session.document()->path().toStdString(), SQLite::OPEN_READONLY);
    SQLite::Statement query(file, R"(
      SELECT count(*), count(CASE WHEN NOT sent THEN 1 END), ifnull(sum(length), 0),
             ifnull(sum(CASE WHEN sent THEN length END), 0), ifnull(sum(CASE WHEN billable THEN length END), 0)
      FROM (SELECT ifnull(period.dateSubmitted, 0) > 1 AS sent, ifnull(activity.billable, 0) AS billable,
                   CAST(round(1e6 * CASE WHEN period.running = 1 THEN :now - ifnull(period.start, :now)
                                         ELSE ifnull(period.duration, 0) END) AS INTEGER) AS length
            FROM TimePeriod period JOIN Activity activity ON activity.id = period.activity
            LEFT JOIN Customer customer ON customer.id = activity.customer
            LEFT JOIN Service service ON service.id = activity.service
            WHERE (:begin IS NULL OR period.start >= :begin) AND (:end IS NULL OR period.start < :end)
              AND (:customer IS NULL OR ifnull(customer.name, '') = :customer)
              AND (:service IS NULL OR service.name = :service)
              AND (instr(lower(ifnull(customer.name, '')), :word)
                   OR instr(lower(ifnull(service.name, '')), :word)
                   OR instr(lower(ifnull(period.notes, '')), :word))
              AND NOT (:unsentOnly AND ifnull(period.dateSubmitted, 0) > 1)))");
    const auto bindText = [&](const char* name, const std::optional<QString>& text) {
      if (text) query.bind(name, text->toStdString());
    };
    if (limits.first.isValid()) {
      query.bind(":begin", test.calendar.startOfDay(limits.first).seconds);
      query.bind(":end", test.calendar.startOfDay(limits.last.addDays(1)).seconds);
    }
    query.bind(":now", test.clock.now().seconds);
    bindText(":customer", limits.customer);
    bindText(":service", limits.service);
    bindText(":word", limits.word);
    query.bind(":unsentOnly", int(limits.unsentOnly));
    EXPECT_TRUE(query.executeStep());
    const auto length = [&](int column) { return Length(query.getColumn(column).getInt64()); };
    return {query.getColumn(0).getInt(), query.getColumn(1).getInt(), length(2), length(3), length(4)};
  }

  void expectGlance(const HoursAtAGlance& hours) {
    const QDate today = test.calendar.day(test.clock.now());
    const QDate monday = startOfWeek(today, Qt::Monday);
    const Hours all = inFile({});  // what has no day is not sent all the same
    EXPECT_EQ(hours.glance().today, inFile({.first = today, .last = today}).total);
    EXPECT_EQ(hours.glance().week, inFile({.first = monday, .last = monday.addDays(6)}).total);
    EXPECT_EQ(hours.glance().notSent, all.notSent());
    EXPECT_EQ(hours.glance().unsentEntries, all.unsentEntries);
  }

  void expectLog(const Limits& limits) {
    log.reloadNames();
    log.showOnly(limits.first, limits.last, limits.customer);
    if (limits.service) log.servicePopup.selectTitle(*limits.service);
    log.setSearch(limits.word);
    log.setHidesSubmitted(limits.unsentOnly);
    log.rebuild();
    const Hours hours = inFile(limits);
    EXPECT_EQ(log.summary().entries, hours.entries);
    EXPECT_NEAR(log.summary().seconds, secondsOf(hours.total), 1e-3);
  }

  static Hours sumOf(const std::vector<ReportGroup>& groups) {
    Hours sum;
    for (const ReportGroup& group : groups) {
      EXPECT_TRUE(group.groups.empty() || sumOf(group.groups) == group.hours);
      sum += group.hours;
    }
    return sum;
  }

  void expectReport(const ReportQuery& query) {
    const Report report = makeReport(*test.session.context(), query, test.clock.now());
    const Hours hours = inFile({query.range.first, query.range.last, query.customer});
    EXPECT_EQ(report.all, hours);
    EXPECT_EQ(sumOf(report.groups), hours);
    std::vector<Length> ofGroups(report.groups.size());
    QDate next = query.range.first;
    for (const ReportBar& bar : report.bars) {
      EXPECT_EQ(bar.first, next);
      next = bar.last.addDays(1);
      const Hours ofBar = inFile({bar.first, bar.last, query.customer});
      EXPECT_EQ(bar.sent, ofBar.sent);
      EXPECT_EQ(bar.notSent, ofBar.notSent());
      for (const BarPart& part : bar.parts) ofGroups[part.group] += part.sent + part.notSent;
    }
    EXPECT_EQ(next, query.range.last.addDays(1));
    for (size_t at = 0; at < report.groups.size(); ++at) {
      const ReportGroup* group = &report.groups[at];
      EXPECT_EQ(ofGroups[at], group->hours.total);
      while (!group->groups.empty()) group = &group->groups.front();
      Hours listed;
      for (const ReportEntry& entry : entriesOf(*group, query, test.calendar, test.clock.now()))
        listed += entry.hours;
      EXPECT_EQ(listed, group->hours);
    }
  }

  std::mt19937 random{GetParam()};
  std::vector<Activity*> activities;
};

TEST_P(RandomHours, AreTheSameByWhateverWayTheyAreAddedUp) {
  HoursAtAGlance hours(test.session, QLocale(QStringLiteral("de_DE")));
  ObjectContext& context = *test.session.context();
  ASSERT_TRUE(context.save());
  expectGlance(hours);
  for (int step = 0; step < 40; ++step) {
    ASSERT_TRUE(context.edit("A change", [&] {
      for (int each = below(4); each >= 0; --each) change();
    }));
    if (step % 5 == 0) std::ignore = context.undoStack().undo();
    if (step % 10 == 0) std::ignore = context.undoStack().redo();
    if (step % 7 == 0) {
      test.clock.advance(below(50000));  // over the next midnight, too
      hours.update();
    }
    expectGlance(hours);
  }
  test.session.close();
  EXPECT_EQ(hours.glance(), Glance());
}

TEST_P(RandomHours, AreTheSameInReportAndLog) {
  const QDate day(2026, 10, 25);  // it has 25 hours
  ASSERT_TRUE(test.session.context()->save());
  for (const auto kind :
       {RangeKind::Week, RangeKind::Month, RangeKind::Quarter, RangeKind::Year, RangeKind::Dates}) {
    for (const auto by : {GroupBy::Customer, GroupBy::Job, GroupBy::Service}) {
      for (const auto bars : {BarUnit::Day, BarUnit::Week, BarUnit::Month}) {
        expectReport({.range = ReportRange::around(kind, day, Qt::Monday), .bars = bars, .by = by});
      }
    }
    const ReportRange range = ReportRange::around(kind, day, Qt::Monday);
    expectReport({.range = range, .customer = QStringLiteral("Acme")});
    const std::optional<QString> acme(u"Acme"_s);
    for (const Limits& limits : {Limits{},
                                 {.customer = acme},
                                 {.service = u"Design"_s},
                                 {.word = u"acm"_s},
                                 {.word = u"elm"_s},
                                 {.word = u"0% _"_s},
                                 {.unsentOnly = true},
                                 {{}, {}, acme, u"Design"_s, u"plan"_s, true}}) {
      Limits ofRange = limits;
      ofRange.first = range.first;
      ofRange.last = range.last;
      expectLog(ofRange);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomHours, testing::Range(1U, 5U));

TEST(ReportRange, MovesByItself) {
  const QDate day(2024, 2, 29);
  const auto text = [](const ReportRange& range) -> QString {
    return range.first.toString(Qt::ISODate) + u' ' + range.last.toString(Qt::ISODate);
  };
  const auto around = [&](RangeKind kind) { return ReportRange::around(kind, day, Qt::Sunday); };
  EXPECT_EQ(text(around(RangeKind::Week).moved(1)), "2024-03-03 2024-03-09");
  EXPECT_EQ(text(around(RangeKind::Month).moved(-1)), "2024-01-01 2024-01-31");
  EXPECT_EQ(text(around(RangeKind::Quarter).moved(-1)), "2023-10-01 2023-12-31");
  EXPECT_EQ(text(around(RangeKind::Year).moved(1)), "2025-01-01 2025-12-31");
  EXPECT_EQ(text(ReportRange{RangeKind::Dates, day, day.addDays(2)}.moved(-1)), "2024-02-26 2024-02-28");
}

}  // namespace
}  // namespace pendra
