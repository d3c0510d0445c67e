#include "LogFixture.h"
#include "platform/Preferences.h"
#include "store/UndoStack.h"
#include "support/LogCapture.h"
#include "ui_core/LogSubmissionRows.h"

namespace pendra {
namespace {

TEST_F(TimeLog, ListsCustomersByCaseAndPattern) {
  const QStringList all{"Acme", "acme", "A*", "Who?", "Whom", "All", "Bob \"B\" Ltd"};
  for (const QString& name : all) test.addEntry(activityOf(name), "2026-11-24T08:00:00Z", 60);
  log.reloadNames();
  for (const auto& [customer, listed] :
       {std::pair("acme", QStringList("acme")), std::pair("A*", QStringList{"Acme", "A*", "All"}),
        std::pair("Who?", QStringList{"Who?", "Whom"}), std::pair("All", all)}) {
    pickCustomer(customer);
    EXPECT_EQ(column("customer"), listed);
  }
  const LogCapture lines;
  pickCustomer("Bob \"B\" Ltd");
  EXPECT_EQ(column("customer"), QStringList()) << "a quote breaks the text";
  EXPECT_EQ(lines.lines().size(), 1);
}

TEST_F(TimeLog, ListsWholeDays) {
  // Berlin: the clock goes back in the night of 25 October, and forward in that of 29 March.
  Activity& activity = activityOf("Acme");
  for (const char* start :
       {"2026-10-23T22:30:00Z", "2026-10-24T21:59:59Z", "2026-10-24T22:00:00Z", "2026-10-25T00:30:00Z",
        "2026-10-25T01:30:00Z", "2026-10-25T22:59:59Z", "2026-10-25T23:00:00Z", "2026-03-28T22:59:00Z",
        "2026-03-29T01:30:00Z", "2026-03-29T22:00:00Z", "2026-06-01T10:00:00Z"})
    test.addEntry(activity, start, 7200);
  log.rows().setHidden("start", true);  // then the date says the time as well
  const struct {
    const char* from;
    const char* to;
    QStringList listed;
  } rows[] = {{"10/25/26",
               "10/25/26",
               {"Sun 25 Oct 2026, 00:00:00", "Sun 25 Oct 2026, 02:30:00", "Sun 25 Oct 2026, 02:30:00",
                "Sun 25 Oct 2026, 23:59:59"}},
              {"3/29/26", "3/29/26", {"Sun 29 Mar 2026, 03:30:00"}},
              {"", "29 March 2026", {"Sat 28 Mar 2026, 23:59:00", "Sun 29 Mar 2026, 03:30:00"}},
              {"26 October 2026", "", {"Mon 26 Oct 2026, 00:00:00"}},
              {"10/26/26", "10/25/26", {}},
              {"5/1/26", "7/1/26", {"Mon 1 Jun 2026, 12:00:00"}}};
  for (const auto& row : rows) {
    log.startDateField = row.from;
    log.endDateField = row.to;
    log.rebuild();
    EXPECT_EQ(column("date"), row.listed) << row.from << " to " << row.to;
  }
}

TEST_F(TimeLog, AnUnreadableDateDoesNotLimit) {
  test.addEntry(activityOf("Acme"), "2026-11-24T08:00:00Z", 60);
  log.startDateField = "soonish";
  log.rebuild();
  EXPECT_EQ(log.rows().rowCount(), 1);
}

TEST_F(TimeLog, ExactlyOneSecondIsHiddenAsSentAndCannotBeMarkedUnsent) {
  Activity& activity = activityOf("Acme");
  for (const double seconds : {0.0, 0.999, 1.0, 1.001}) {
    test.addEntry(activity, "2026-11-24T08:00:00Z", 60).setDateSubmitted(Instant{seconds});
  }
  log.rebuild();
  EXPECT_EQ(column("submitted"), (QStringList{"-", "-", "01/01/01", "01/01/01"}));
  log.selection().selectRows({0, 1, 2, 3});
  test.alerts.willAnswer({"Continue"});
  log.markSelectedUnsent();
  EXPECT_EQ(column("submitted"), (QStringList{"-", "-", "01/01/01", "-"})) << "the mark follows at once";
  log.setHidesSubmitted(true);
  EXPECT_EQ(column("submitted"), (QStringList{"-", "-", "-"}));
  EXPECT_EQ(activity.entries()[3]->dateSubmitted(), kReferenceInstant);
  EXPECT_EQ(activity.entries()[2]->sentSeconds(), 1.0);
}

TEST_F(TimeLog, PopUpsListEachNameOnceWhateverItsCase) {
  activityOf("zed").customer()->setShown(false);
  activityOf("Acme", "Roof");
  activityOf("Acme", "Attic");
  activityOf("All", "Cellar").customer()->setShown(false);
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
  pickCustomer("All");
  EXPECT_EQ(log.jobPopup.titles(), QStringList("All")) << "whatever jobs a customer of that name has";
}

TEST_F(TimeLog, ANameFilterStaysUnlessItWouldHideWhatHasCome) {
  Activity& roof = activityOf("Acme", "Roof");
  Activity& other = activityOf("Bob");
  for (Activity* activity : {&roof, &other}) test.addEntry(*activity, "2026-11-24T08:00:00Z", 60);
  log.reloadNames();
  pickCustomer("Acme");
  log.jobPopup.selectTitle("Roof");
  log.servicePopup.selectTitle("Design");
  log.rebuild();
  const auto edit = [this](const auto& work) { std::ignore = test.session.context()->edit("Edit", work); };
  const auto chosen = [this] {
    return QStringList{*log.customerPopup.selectedTitle(), *log.jobPopup.selectedTitle(),
                       *log.servicePopup.selectedTitle()};
  };
  log.selection().selectRows({0});
  edit([&] { roof.startEntry(); });
  edit([&] { test.addActivity(&test.addCustomer("Zed"), design); });
  edit([&] { test.session.context()->deleteObject(*other.entries()[0]); });
  EXPECT_EQ(chosen(), (QStringList{"Acme", "Roof", "Design"}));
  EXPECT_EQ(log.customerPopup.titles(), (QStringList{"All", "Acme", "Bob", "Zed"}));
  EXPECT_EQ(log.rows().rowCount(), 2);
  EXPECT_EQ(log.selectedEntry(), roof.entries()[0]) << "so does what is selected";
  EXPECT_TRUE(test.session.notices().standing().empty());
  edit([&] { other.startEntry(); });
  EXPECT_EQ(chosen(), (QStringList{"All", "All", "All"}));
  EXPECT_EQ(log.rows().rowCount(), 3);
  ASSERT_EQ(test.session.notices().standing().size(), 1U);
  EXPECT_TRUE(test.session.notices().standing()[0].text.contains("would hide the new entry"));
  pickCustomer("Acme");
  test.session.notices().withdraw("filters");
  edit([&] { roof.setCustomer(nullptr); });
  EXPECT_EQ(chosen(), (QStringList{"All", "All", "All"}));
  EXPECT_EQ(test.session.notices().standing().size(), 1U) << "nobody is called Acme any more";
}

TEST_F(TimeLog, ARangeFillsTheDatesAndMovesWithTheDay) {
  for (const char* start : {"2026-10-31T08:00:00Z", "2026-11-15T08:00:00Z", "2026-11-22T08:00:00Z",
                            "2026-11-23T08:00:00Z", "2026-11-24T08:00:00Z", "2026-11-28T08:00:00Z"}) {
    test.addEntry(activityOf("Acme"), start, 60);
  }
  EXPECT_EQ(log.range(), LogRange::AnyTime);
  const struct {
    LogRange range;
    const char* from;
    const char* to;
    int rows;
  } expected[] = {{LogRange::Today, "today", "today", 1},
                  {LogRange::Yesterday, "23 Nov 2026", "23 Nov 2026", 1},
                  {LogRange::ThisWeek, "23 Nov 2026", "29 Nov 2026", 3},  // one lies ahead
                  {LogRange::LastWeek, "16 Nov 2026", "22 Nov 2026", 1},
                  {LogRange::LastMonth, "1 Oct 2026", "31 Oct 2026", 1},
                  {LogRange::Dates, "1 Oct 2026", "31 Oct 2026", 1},
                  {LogRange::AnyTime, "", "", 6}};
  for (const auto& is : expected) {
    log.chooseRange(is.range);
    EXPECT_EQ(log.startDateField, is.from);
    EXPECT_EQ(log.endDateField, is.to);
    EXPECT_EQ(log.rows().rowCount(), is.rows) << is.from;
    EXPECT_EQ(log.isLimited(), is.range != LogRange::AnyTime);
  }
  test.session.context()->deleteObject(*test.session.context()->all<TimeEntry>()[5]);
  log.chooseRange(LogRange::ThisMonth);
  EXPECT_EQ(log.endDateField, "today") << "as long as nothing lies ahead";
  log.chooseRange(LogRange::Today);
  log.selection().selectRows({0});
  window.rebuild();
  const auto today = [&] { return cellText(window.rows(), QStringLiteral("today"), 4); };
  EXPECT_EQ(today(), "00:01:00");
  test.clock.advance(24 * 3600);
  window.updateTimeDisplay();
  EXPECT_EQ(log.rows().rowCount(), 0) << "today is another day";
  EXPECT_EQ(today(), "00:00:00") << "also of what does not run";
  log.startDateField = "11/24";
  log.datesTyped();
  EXPECT_EQ(log.range(), LogRange::Dates);
  EXPECT_EQ(log.rows().rowCount(), 1);
  log.startDateField.clear();
  log.endDateField.clear();
  log.datesTyped();
  EXPECT_EQ(log.range(), LogRange::AnyTime);
}

TEST_F(TimeLog, ASearchIsAFilterThatFollowsEachLetter) {
  Activity& roof = activityOf("Acme", "Roof");
  TimeEntry& noted = test.addEntry(roof, "2026-11-24T08:00:00Z", 60);
  noted.setNotes(QString::fromUtf8("Größe XL"));
  test.addEntry(roof, "2026-11-23T08:00:00Z", 60);
  TimeEntry& other = test.addEntry(activityOf("Bob"), "2026-11-22T08:00:00Z", 3600);
  other.setNotes("a\nroof, too");
  log.rows().sortBy({"date", false});
  log.rebuild();
  const auto found = [this](const char* typed) {
    log.setSearch(QString::fromUtf8(typed));
    return column("customer").join(',');
  };
  for (const auto& [typed, rows] :
       {std::pair("roof", "Acme,Acme,Bob"), std::pair("ROOF acme", "Acme,Acme"), std::pair("größe", "Acme"),
        std::pair("GRÖSSE", ""), std::pair("xl roof", "Acme"), std::pair("xl bob", ""),
        std::pair("f, t", "Bob"), std::pair("design", "Acme,Acme,Bob"), std::pair("  ", "Acme,Acme,Bob")}) {
    EXPECT_EQ(found(typed), rows) << typed;
  }
  log.selection().selectRows({2});
  EXPECT_EQ(found("bob"), "Bob");
  EXPECT_EQ(log.selectedEntry(), &other) << "what is selected stays so as long as it is found";
  EXPECT_EQ(log.hiddenBySearch(), 2);
  EXPECT_EQ(log.summary().seconds, 3600);
  EXPECT_EQ(LogSubmissionRows(log).allRows().size(), 1U);
  EXPECT_EQ(log.rows().searchText().foundIn("Bobby Bob"), (std::vector<FoundLetters>{{0, 3}, {6, 3}}));
  const auto edit = [this](const auto& work) { std::ignore = test.session.context()->edit("Edit", work); };
  edit([&] { other.setNotes("bobbing"); });
  edit([&] { test.addEntry(*other.activity(), "2026-11-25T08:00:00Z", 60); });
  edit([&] { test.addEntry(roof, "2026-11-21T08:00:00Z", 60); });
  EXPECT_EQ(column("date").join(','), "Wed 25 Nov 2026,Sun 22 Nov 2026") << "what comes is looked through";
  EXPECT_EQ(log.selectedEntry(), &other);
  log.rows().sortBy({"date", true});
  EXPECT_EQ(column("date").join(','), "Sun 22 Nov 2026,Wed 25 Nov 2026");
  edit([&] { test.session.context()->deleteObject(*roof.entries()[1]); });
  EXPECT_EQ(column("date").join(','), "Sun 22 Nov 2026,Wed 25 Nov 2026");
  log.rebuild();
  EXPECT_EQ(log.hiddenBySearch(), 2);
  EXPECT_EQ(found("nowhere"), "");
  EXPECT_EQ(log.emptiness(), LogEmptiness::FilteredAway);
  LogSubmissionRows(log).showAll();
  EXPECT_EQ(log.rows().rowCount(), 4);
  EXPECT_EQ(log.search(), "");
}

TEST_F(TimeLog, ClearingTheFiltersShowsEverything) {
  test.addEntry(activityOf("Acme"), "2026-11-24T08:00:00Z", 60).setDateSubmitted(test.clock.now());
  log.setHidesSubmitted(true);
  EXPECT_EQ(log.emptiness(), LogEmptiness::FilteredAway);
  log.startDateField = "tomorrow";
  log.clearFilters();
  EXPECT_EQ(log.emptiness(), LogEmptiness::HasRows);
  EXPECT_FALSE(test.defaults.boolean(preferences::kHideSubmitted));
}

TEST_F(TimeLog, WithoutEntriesOrADocumentThereIsNothing) {
  log.start();
  log.rebuild();
  EXPECT_EQ(log.emptiness(), LogEmptiness::NoEntries);
  EXPECT_EQ(log.customerPopup.titles(), QStringList{"All"});
  test.session.close();
  log.reloadNames();
  log.updateRunningEntries();
  EXPECT_EQ(log.emptiness(), LogEmptiness::NoEntries);
}

TEST_F(TimeLog, AnEditTakesAnEntryThroughTheFiltersByDayAndBySent) {
  ObjectContext& context = *test.session.context();
  TimeEntry& entry = test.addEntry(activityOf("Acme"), "2026-11-23T08:00:00Z", 60);
  log.startDateField = "11/24/26";
  log.rebuild();
  int rebuilds = 0;
  QObject::connect(&log.rows(), &QAbstractItemModel::modelReset, [&] { ++rebuilds; });
  const auto rowsAfter = [&](const std::function<void()>& work) {
    std::ignore = context.edit(QStringLiteral("Edit"), work);
    return log.rows().rowCount();
  };
  EXPECT_EQ(rowsAfter([&] { entry.setStart(test.clock.now()); }), 1);
  EXPECT_EQ(rowsAfter([&] { entry.setStart(instantOf("2026-11-22T08:00:00Z")); }), 0);
  log.clearFilters();
  log.setHidesSubmitted(true);
  rebuilds = 0;
  EXPECT_EQ(rowsAfter([&] { entry.setDateSubmitted(test.clock.now()); }), 0);
  EXPECT_EQ(rowsAfter([&] { entry.setDateSubmitted(kReferenceInstant); }), 1);
  EXPECT_EQ(rebuilds, 0) << "hundreds are sent one after the other";

  Customer& other = *test.addEntry(activityOf("Bob"), "2026-11-23T08:00:00Z", 60).activity()->customer();
  log.reloadNames();
  pickCustomer("Acme");
  EXPECT_EQ(rowsAfter([&] { other.setName(QStringLiteral("Acme")); }), 2) << "called as the filter says";
  EXPECT_EQ(rowsAfter([&] { other.setName(QStringLiteral("Bob")); }), 1) << "the filter follows it, alone";
}

TEST_F(TimeLog, FollowsEachEditToWhatARebuildLists) {
  ObjectContext& context = *test.session.context();
  Activity& acme = activityOf(QStringLiteral("Acme"));
  Activity& bob = activityOf(QStringLiteral("Bob"));
  std::vector<TimeEntry*> entries;
  for (int hour = 8; hour < 13; ++hour) {
    const QString start = QStringLiteral("2026-11-23T%1:00:00Z").arg(hour, 2, 10, QChar(u'0'));
    entries.push_back(&test.addEntry(hour % 2 ? acme : bob, qPrintable(start), 60.25 * hour));
  }
  log.rows().sortBy({QStringLiteral("date"), false});
  log.rebuild();
  const auto listed = [&] {
    QStringList rows;
    for (const LogRow& row : log.rows().rows()) {
      rows << QString::number(row.entry->objectID()) + row.customer() + row.service();
    }
    return rows << QString::number(log.summary().seconds, 'f', 6);
  };
  int rebuilds = 0;
  const std::function<void()> edits[] = {
      [&] { entries[0]->setStart(instantOf("2026-11-23T10:30:00Z")); },
      [&] { entries[4]->setStart(instantOf("2026-11-22T10:30:00Z")); },
      [&] {
        for (TimeEntry* one : {entries[1], entries[2]}) one->setStart(*one->start() + -90'000);
      },
      [&] { entries[3]->setDuration(0.1); },
      [&] { entries[3]->setActivity(&bob); },
      [&] { bob.setService(&test.addService(QStringLiteral("Text"))); },
      [&] { acme.customer()->setName(QStringLiteral("Zenith")); },
      [&] { acme.startEntry(); },
      [&] { acme.stop(), acme.setCompleted(true); },
      [&] { context.deleteObject(*entries[0]), context.deleteObject(*entries[3]); },
      [&] { context.deleteObject(bob); }};
  for (const bool back : {false, true}) {
    for (std::size_t at = 0; at < std::size(edits); ++at) {
      const auto counting =
          QObject::connect(&log.rows(), &QAbstractItemModel::modelReset, [&] { ++rebuilds; });
      if (back) context.undoStack().undo();
      if (!back) std::ignore = context.edit(QStringLiteral("Edit"), edits[at]);
      QObject::disconnect(counting);
      const QStringList followed = listed();
      log.rebuild();
      EXPECT_EQ(followed, listed()) << (back ? "back from " : "") << at;
    }
  }
  EXPECT_EQ(rebuilds, 0);
}

}  // namespace
}  // namespace pendra
