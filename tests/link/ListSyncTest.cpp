#include "ScriptedVantor.h"
#include "channel/ChannelFailure.h"
#include "link/AffectedActivities.h"
#include "store/ChangeSet.h"
#include "support/Rows.h"

namespace pendra {
namespace {

/// "Roof=j1@c1, Barn=j2@c2": name, identifier and, of a job, its customer's identifier. A "-" is no list.
std::optional<std::vector<VantorItem>> itemsOf(const QString& text) {
  if (text == "-") return {};
  std::vector<VantorItem> items;
  for (const QString& one : text.split(", ", Qt::SkipEmptyParts)) {
    const QString parent = one.section('@', 1);
    items.push_back({.name = one.section('=', 0, 0),
                     .id = one.section('=', 1).section('@', 0, 0),
                     .parent = parent.isEmpty() ? std::nullopt : std::optional(parent)});
  }
  return items;
}

/// One synchronisation: what Vantor has, and what the document has then, jobs as "customer/job=identifier".
struct Round {
  const char* services;
  const char* customers;
  const char* jobs;
  const char* then;
};
struct History {
  const char* name;
  const char* typedIn;  ///< services and customers of that name that the user had before
  std::vector<Round> rounds;
};

class ListSyncTest : public LinkTest {
 protected:
  void synchronise(const char* services, const char* customers, const char* jobs) {
    vantor.services = itemsOf(services);
    vantor.customers = itemsOf(customers);
    vantor.jobs = itemsOf(jobs);
    lists.refreshBeforeSending();
  }
  [[nodiscard]] QString listed() {
    QStringList services;
    QStringList customers;
    QStringList jobs;
    for (const auto* one : context().all<Service>()) services << textOf(*one);
    for (const auto* one : context().all<Customer>()) customers << textOf(*one);
    for (const auto* one : context().all<Job>())
      jobs << queries::nameOf(one->customer()) + u"/" + textOf(*one);
    return services.join(", ") + u" | " + customers.join(", ") + u" | " + jobs.join(", ");
  }
  template <class T>
  static QString textOf(const T& one) {
    return one.name().value_or("-") + u"=" + one.vtObjectID().value_or("-");
  }
};

class Histories : public ListSyncTest, public testing::WithParamInterface<History> {};

TEST_P(Histories, BringTheListsInLine) {
  for (const QString& name : QString(GetParam().typedIn).split(", ", Qt::SkipEmptyParts)) {
    desk.addService(name);
    desk.addCustomer(name);
  }
  for (const Round& round : GetParam().rounds) {
    synchronise(round.services, round.customers, round.jobs);
    EXPECT_EQ(listed(), round.then);
  }
}

INSTANTIATE_TEST_SUITE_P(
    All, Histories,
    testing::Values(
        History{"FirstAndWithoutLists",
                "",
                {{"Design=s1, =s2, Build=s3", "Acme=c1, =c2, Nobody=, Zed=c3",
                  "Roof=j1@c1, =j2@c1, Attic=j3@gone",
                  "Design=s1, Build=s3 | Acme=c1, Zed=c3 | Acme/Roof=j1, /Attic=j3"},
                 {"-", "-", "-", "Design=s1, Build=s3 | Acme=c1, Zed=c3 | Acme/Roof=j1, /Attic=j3"}}},
        History{"ServicesAreInsertedByNameAndKeptByIdentifier",
                "",
                {{"Design=s1, Build=s2", "", "", "Design=s1, Build=s2 |  | "},
                 {"Build=s1, Design=s2", "", "", "Build=s1, Design=s2 |  | "},
                 {"Build=new, Design=s2", "", "", "Design=s2 |  | "},
                 {"Build=new, Design=s2", "", "", "Design=s2, Build=new |  | "},
                 {"Design=s2, Drawing=s2", "", "", "Drawing=s2, Drawing=s2 |  | "}}},
        History{"CustomersAreRenamedByIdentifierButNotSwapped",
                "",
                {{"", "Acme=c1, Zed=c2", "Roof=j1@c1", " | Acme=c1, Zed=c2 | Acme/Roof=j1"},
                 {"", "Acme Ltd=c1, Zed=c2, Zed=c3, Twin=c4, Twin=c4", "Roof=j1@c1",
                  " | Acme Ltd=c1, Zed=c2, Zed=c3, Twin=c4, Twin=c4 | Acme Ltd/Roof=j1"},
                 {"", "Zed=c1, Acme Ltd=c2", "", " | Acme Ltd=c1, Zed=c2 | "}}},
        History{"WhatWasTypedInGoesUnlessVantorHasItsIdentifier",
                "Acme, Other",
                {{"Other=0", "Other=0, Acme=c1, Acme=c2", "",
                  "Other=0, Other=0 | Acme=c2, Other=0, Acme=c1, Acme=c2 | "},
                 {"", "", "", " |  | "}}},
        History{"JobsMoveAreRenamedAsTwoAndGo",
                "",
                {{"", "Acme=c1, Zed=c2", "Roof=j1@c1, Attic=j2@c1, Barn=j3@c2",
                  " | Acme=c1, Zed=c2 | Acme/Roof=j1, Acme/Attic=j2, Zed/Barn=j3"},
                 {"", "Acme=c1, Zed=c2", "Roof=j1@c2, Loft=j2@c1",
                  " | Acme=c1, Zed=c2 | Zed/Roof=j1, Acme/Loft=j2, Acme/Loft=j2"},
                 {"", "Acme=c1, Zed=c2", "Roof=j1@nowhere, Loft=j2@c1",
                  " | Acme=c1, Zed=c2 | /Roof=j1, Acme/Loft=j2, Acme/Loft=j2"},
                 {"", "Zed=c2", "Loft=j2@c2", " | Zed=c2 | /Roof=j1, Zed/Loft=j2"}}},
        History{"TwoItemsOfOneIdentifierAreTwoJobsOfTheLastName",
                "",
                {{"", "Acme=c1", "Loft=j2@c1, Attic=j2@c1", " | Acme=c1 | Acme/Attic=j2, Acme/Attic=j2"}}},
        History{"TheLastItemNamesTheJobAlsoIfItHasNoName",
                "",
                {{"", "Acme=c1", "Loft=j2@c1, =j2@c1", " | Acme=c1 | Acme/=j2"}}},
        History{"AJobOfNobodyHidesNoneThatIsGone",
                "",
                {{"", "Acme=c1", "Lost=j1@gone, Gone=j9@c1", " | Acme=c1 | /Lost=j1, Acme/Gone=j9"},
                 {"", "Acme=c1", "Lost=j1@gone", " | Acme=c1 | /Lost=j1"}}},
        History{"AnItemThatComesTwiceHidesNoneThatIsGone",
                "",
                {{"", "Acme=c1", "Roof=j1@c1, Gone=j9@c1", " | Acme=c1 | Acme/Roof=j1, Acme/Gone=j9"},
                 {"", "Acme=c1", "Roof=j1@c1, Roof=j1@c1", " | Acme=c1 | Acme/Roof=j1"}}}),
    RowName());

TEST_F(ListSyncTest, WhatGoesClearsItsActivitiesAndWhatMovesKeepsThem) {
  synchronise("Design=s1", "Acme=c1, Zed=c2", "Roof=j1@c1, Barn=j2@c2, Loft=j3@c1");
  const auto customers = context().fetch<Customer>();
  const auto jobs = context().fetch<Job>();
  Activity& acme = desk.addActivity(customers[0], context().all<Service>()[0], jobs[0]);
  Activity& zed = desk.addActivity(customers[1], context().all<Service>()[0], jobs[1]);
  Activity& moved = desk.addActivity(customers[1], nullptr, jobs[2]);
  Activity& done = desk.addActivity(customers[0], nullptr, jobs[0]);
  done.setCompleted(true);
  desk.addEntry(acme, "2026-11-24T08:00:00Z", 3600);

  synchronise("Design=s1", "Zed=c2", "Barn=j2@c2, Loft=j3@c2");
  EXPECT_EQ(moved.job(), jobs[2]);
  EXPECT_FALSE(acme.customer() || acme.job());
  EXPECT_EQ(acme.entries().size(), 1u);
  EXPECT_TRUE(lossText(acme).startsWith("Its customer and job are no longer in the lists"));
  EXPECT_EQ(lossText(zed), "");
  EXPECT_EQ(lossText(done), "") << "nothing of it is left to send";
  ASSERT_EQ(desk.session.notices().standing().size(), 1u);
  EXPECT_TRUE(
      desk.session.notices().standing()[0].text.startsWith("“Acme - Roof - Design”: a customer, job"));

  acme.setCustomer(zed.customer());
  EXPECT_TRUE(lossText(acme).startsWith("Its job is no longer in the lists")) << "the job is still missing";
  forgetLoss(desk.session, acme);
  EXPECT_EQ(lossText(acme), "") << "it is meant to have none";
  EXPECT_TRUE(desk.session.notices().standing().empty());
}

TEST_F(ListSyncTest, TheCommandIsOneEditThatIsStoredAndACallThatFailsChangesNothing) {
  vantor.services = itemsOf("Design=s1");
  vantor.customers = itemsOf("Acme=c1");
  vantor.jobs = itemsOf("Roof=j1@c1");
  desk.addCustomer("Mine");
  int told = 0;
  const Subscription news = context().observe([&](const ChangeSet& changes) {
    ++told;
    EXPECT_EQ(changes.inserted<Customer>().size(), 1U);
    EXPECT_EQ(changes.inserted<Job>().size(), 1U);
  });
  vantor.whenAsked = [](const QString& what) {
    if (what == "jobs") throw VantorFailure(kVTIPCTimeout, "scripted");
  };
  EXPECT_THROW(lists.updateLists(), VantorFailure);
  EXPECT_EQ(told, 0);
  EXPECT_EQ(listed(), " | Mine=0 | ");
  EXPECT_FALSE(progress.spinning || vantor.openChannels > 0) << "a late answer must not answer a later call";

  vantor.whenAsked = {};
  const auto before = desk.session.context();
  lists.updateLists();
  EXPECT_EQ(desk.alerts.messages(), QStringList{"Your lists are now up to date"});
  EXPECT_EQ(vantor.openChannels, 0);
  EXPECT_EQ(listed(), "Design=s1 | Acme=c1 | Acme/Roof=j1");
  EXPECT_EQ(desk.session.context(), before);
  EXPECT_EQ(told, 1);
  lists.updateLists();
  EXPECT_EQ(told, 1) << "nothing has changed since";
  EXPECT_FALSE(context().hasChanges());
}

TEST_F(ListSyncTest, ARunningTimerIsAskedAboutAfterTheCompanyAndAVantorThatGoesHalfWayIsTold) {
  desk.addActivity(nullptr, nullptr).startEntry();
  vantor.accepts = false;
  lists.updateLists();
  EXPECT_EQ(desk.alerts.messages(), QStringList("Pendra can’t work with this version of Vantor."));
  vantor.accepts = true;
  desk.alerts.forget();
  desk.alerts.willAnswer({"Cancel"});
  lists.updateLists();
  EXPECT_EQ(desk.alerts.messages(), QStringList{"Pendra needs to stop all timers"});
  EXPECT_EQ(vantor.timesAsked("services"), 0);
  EXPECT_EQ(vantor.openChannels, 0);

  desk.alerts.forget();
  desk.alerts.willAnswer({"OK"});
  vantor.whenAsked = [&](const QString& what) {
    if (what == "companyFileName") desk.workspace.setRunning(identifiers::kVantor, false);
  };
  lists.updateLists();
  EXPECT_EQ(desk.alerts.messages(),
            (QStringList{"Pendra needs to stop all timers", "Please start Vantor and try again",
                         "Please start Vantor and try again", "Your lists are now up to date"}));
}

}  // namespace
}  // namespace pendra
