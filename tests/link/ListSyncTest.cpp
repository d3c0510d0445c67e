#include "ScriptedVantor.h"
#include "channel/ChannelFailure.h"
#include "store/ChangeSet.h"

namespace pendra {
namespace {

/// The items of a class as "name=identifier", in the order of insertion.
template <class T>
QStringList listed(const ObjectContext& context) {
  QStringList texts;
  for (const T* one : context.all<T>())
    texts << one->name().value_or("-") + u"=" + one->vtObjectID().value_or("-");
  return texts;
}

QStringList jobsListed(const ObjectContext& context) {
  QStringList texts;
  for (const Job* job : context.all<Job>()) {
    texts << queries::nameOf(job->customer()) + u"/" + job->name().value_or("-") + u"=" +
                 job->vtObjectID().value_or("-");
  }
  return texts;
}

using Rows = std::vector<ListRow>;

class ListSyncTest : public LinkTest {
 protected:
  void synchronise() { lists.refreshBeforeSending(); }
};

TEST_F(ListSyncTest, AFirstOneFillsTheListsAndARepeatedOneChangesNothing) {
  vantor.services = Rows{item("Design", "s1"), item("", "s2"), item("Build", "s3")};
  vantor.customers = Rows{item("Acme", "c1"), item("", "c2"), item("Nobody", ""), item("Zed", "c3")};
  vantor.jobs = Rows{jobItem("Roof", "j1", "c1"), jobItem("", "j2", "c1"), jobItem("Attic", "j3", "gone")};
  synchronise();
  EXPECT_EQ(listed<Service>(context()), (QStringList{"Design=s1", "Build=s3"}));
  EXPECT_EQ(listed<Customer>(context()), (QStringList{"Acme=c1", "Zed=c3"}));
  EXPECT_EQ(jobsListed(context()), (QStringList{"Acme/Roof=j1", "/Attic=j3"}));
  EXPECT_EQ(context().all<Customer>()[0]->shown(), true);

  ASSERT_TRUE(context().save());
  synchronise();
  EXPECT_FALSE(context().hasChanges());
}

TEST_F(ListSyncTest, AListThatVantorDoesNotGiveIsLeftAlone) {
  desk.addService("Design", "s1");
  desk.addCustomer("Acme", "c1");
  vantor.services = std::nullopt;
  vantor.customers = std::nullopt;
  synchronise();
  EXPECT_EQ(listed<Service>(context()), QStringList{"Design=s1"});
  EXPECT_EQ(listed<Customer>(context()), QStringList{"Acme=c1"});
}

TEST_F(ListSyncTest, ServicesAreInsertedByNameAndKeptByIdentifier) {
  vantor.services = Rows{item("Design", "s1"), item("Build", "s2")};
  synchronise();
  vantor.services = Rows{item("Build", "s1"), item("Design", "s2")};
  synchronise();
  EXPECT_EQ(listed<Service>(context()), (QStringList{"Build=s1", "Design=s2"})) << "swapped names swap";

  vantor.services = Rows{item("Build", "new"), item("Design", "s2")};
  synchronise();
  EXPECT_EQ(listed<Service>(context()), QStringList{"Design=s2"}) << "made again under another identifier";
  synchronise();
  EXPECT_EQ(listed<Service>(context()), (QStringList{"Design=s2", "Build=new"}));

  vantor.services = Rows{item("Design", "s2"), item("Drawing", "s2")};
  synchronise();
  EXPECT_EQ(listed<Service>(context()), (QStringList{"Drawing=s2", "Drawing=s2"})) << "the last name wins";
}

TEST_F(ListSyncTest, CustomersAreRenamedByIdentifierAndKeepTheirJobs) {
  vantor.customers = Rows{item("Acme", "c1"), item("Zed", "c2")};
  vantor.jobs = Rows{jobItem("Roof", "j1", "c1")};
  synchronise();
  vantor.customers = Rows{item("Acme Ltd", "c1"), item("Zed", "c2"), item("Zed", "c3"), item("Twin", "c4"),
                          item("Twin", "c4")};
  synchronise();
  EXPECT_EQ(listed<Customer>(context()),
            (QStringList{"Acme Ltd=c1", "Zed=c2", "Zed=c3", "Twin=c4", "Twin=c4"}));
  EXPECT_EQ(jobsListed(context()), QStringList{"Acme Ltd/Roof=j1"});

  vantor.customers = Rows{item("Zed", "c1"), item("Acme Ltd", "c2")};
  synchronise();
  EXPECT_EQ(listed<Customer>(context()), (QStringList{"Acme Ltd=c1", "Zed=c2"})) << "swapped names stay";
}

TEST_F(ListSyncTest, TypedInItemsGoUnlessVantorReportsTheirIdentifier) {
  desk.addService("Own", "0");
  desk.addCustomer("Mine", "0");
  synchronise();
  EXPECT_THAT(listed<Service>(context()), testing::IsEmpty());
  EXPECT_THAT(listed<Customer>(context()), testing::IsEmpty());

  desk.addCustomer("Acme", "0");
  desk.addCustomer("Other", "0");
  vantor.customers = Rows{item("Other", "0"), item("Acme", "c1"), item("Acme", "c2")};
  synchronise();
  EXPECT_EQ(listed<Customer>(context()), (QStringList{"Acme=c2", "Other=0", "Acme=c1", "Acme=c2"}));
}

TEST_F(ListSyncTest, JobsMoveAreRenamedAsTwoAndGo) {
  vantor.customers = Rows{item("Acme", "c1"), item("Zed", "c2")};
  vantor.jobs = Rows{jobItem("Roof", "j1", "c1"), jobItem("Attic", "j2", "c1"), jobItem("Barn", "j3", "c2")};
  synchronise();
  Job* roof = context().all<Job>()[0];
  Activity& onRoof = desk.addActivity(context().all<Customer>()[0], nullptr, roof);

  vantor.jobs = Rows{jobItem("Roof", "j1", "c2"), jobItem("Loft", "j2", "c1")};
  synchronise();
  EXPECT_EQ(jobsListed(context()), (QStringList{"Zed/Roof=j1", "Acme/Loft=j2", "Acme/Loft=j2"}));
  EXPECT_EQ(onRoof.job(), roof);

  vantor.jobs = Rows{jobItem("Roof", "j1", "nowhere"), jobItem("Loft", "j2", "c1")};
  synchronise();
  EXPECT_EQ(jobsListed(context())[0], "/Roof=j1") << "a job without a customer stays";
  synchronise();
  EXPECT_EQ(jobsListed(context()).size(), 3);
}

TEST_F(ListSyncTest, WhatGoesClearsItsActivitiesAndKeepsTheirTime) {
  vantor.customers = Rows{item("Acme", "c1"), item("Zed", "c2")};
  vantor.jobs = Rows{jobItem("Roof", "j1", "c1"), jobItem("Barn", "j2", "c2")};
  vantor.services = Rows{item("Design", "s1")};
  synchronise();
  const auto customers = context().fetch<Customer>();
  const auto jobs = context().fetch<Job>();
  Activity& acme = desk.addActivity(customers[0], context().all<Service>()[0], jobs[0]);
  Activity& zed = desk.addActivity(customers[1], context().all<Service>()[0], jobs[1]);
  Activity& done = desk.addActivity(customers[0], nullptr, jobs[0]);
  done.setCompleted(true);
  desk.addPeriod(acme, "2026-11-24T08:00:00Z", 3600);

  vantor.customers = Rows{item("Zed", "c2")};
  vantor.jobs = Rows{jobItem("Barn", "j2", "c2")};
  synchronise();
  EXPECT_EQ(acme.customer(), nullptr);
  EXPECT_EQ(acme.job(), nullptr);
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

TEST_F(ListSyncTest, TheCommandIsOneEditThatIsStoredAndKeepsDocumentAndSteps) {
  vantor.customers = Rows{item("Acme", "c1")};
  vantor.jobs = Rows{jobItem("Roof", "j1", "c1")};
  ObjectContext& before = context();
  Customer& mine = desk.addCustomer("Mine");
  std::ignore = context().edit("Rename", [&] { mine.setName(QStringLiteral("Ours")); });
  int told = 0;
  const Subscription news = context().observe([&](const ChangeSet& changes) {
    ++told;
    EXPECT_EQ(changes.inserted<Customer>().size(), 1U);
    EXPECT_EQ(changes.inserted<Job>().size(), 1U);
  });
  lists.updateLists();
  EXPECT_EQ(desk.alerts.messages(), QStringList{"Your lists are now up to date"});
  EXPECT_FALSE(progress.spinning);
  EXPECT_EQ(vantor.openChannels, 0);
  EXPECT_EQ(listed<Customer>(context()), QStringList{"Acme=c1"});
  EXPECT_EQ(&context(), &before);
  EXPECT_EQ(told, 1);
  EXPECT_FALSE(context().hasChanges());
}

TEST_F(ListSyncTest, AJobThatMovedKeepsItsActivitiesThoughItsCustomerGoes) {
  vantor.customers = Rows{item("Acme", "c1"), item("Zed", "c2")};
  vantor.jobs = Rows{jobItem("Roof", "j1", "c1"), jobItem("Barn", "j2", "c1")};
  synchronise();
  const auto jobs = context().fetch<Job>();
  Activity& activity = desk.addActivity(context().all<Customer>()[1], nullptr, jobs[0]);
  vantor.customers = Rows{item("Zed", "c2")};
  vantor.jobs = Rows{jobItem("Roof", "j1", "c2")};
  synchronise();
  EXPECT_EQ(jobsListed(context()), QStringList{"Zed/Roof=j1"});
  EXPECT_EQ(activity.job(), jobs[0]);
}

TEST_F(ListSyncTest, ACallThatFailsChangesNothing) {
  vantor.services = Rows{item("Design", "s1")};
  vantor.customers = Rows{item("Acme", "c1")};
  vantor.whenAsked = [](const QString& what) {
    if (what == "jobs") throw ChannelFailure(kVTIPCTimeout, "scripted");
  };
  EXPECT_THROW(synchronise(), ChannelFailure);
  EXPECT_TRUE(context().all<Service>().empty());
  EXPECT_TRUE(context().all<Customer>().empty());
  EXPECT_FALSE(progress.spinning);
}

TEST_F(ListSyncTest, ARunningTimerIsAskedAboutAfterTheCompany) {
  desk.addActivity(nullptr, nullptr).startEntry();
  vantor.accepts = false;
  lists.updateLists();
  EXPECT_THAT(desk.alerts.messages(),
              testing::ElementsAre(QString("Pendra can’t work with this version of Vantor.")));

  vantor.accepts = true;
  desk.alerts.forget();
  desk.alerts.willAnswer({"Cancel"});
  lists.updateLists();
  EXPECT_EQ(desk.alerts.messages(), QStringList{"Pendra needs to stop all timers"});
  EXPECT_EQ(vantor.timesAsked("services"), 0);
  EXPECT_EQ(vantor.openChannels, 0);

  vantor.whenAsked = [](const QString&) { throw ChannelFailure(kVTIPCTimeout, "scripted"); };
  EXPECT_THROW(lists.updateLists(), ChannelFailure);
  EXPECT_EQ(vantor.openChannels, 0) << "a late answer must not answer a later call";
}

TEST_F(ListSyncTest, AVantorThatGoesHalfWayIsToldTwiceAndTheEndStillShows) {
  vantor.services = Rows{item("Design", "s1")};
  int checked = 0;
  // The command's own check passes; then Vantor is gone.
  desk.workspace.setRunning(identifiers::kVantor, true);
  desk.addActivity(nullptr, nullptr).startEntry();
  desk.alerts.willAnswer({"OK"});
  vantor.whenAsked = [&](const QString& what) {
    if (what == "companyFileName" && ++checked == 1) desk.workspace.setRunning(identifiers::kVantor, false);
  };
  lists.updateLists();
  EXPECT_EQ(desk.alerts.messages(),
            (QStringList{"Pendra needs to stop all timers", "Please start Vantor and try again",
                         "Please start Vantor and try again", "Your lists are now up to date"}));
}

TEST_F(ListSyncTest, ChoosingACustomerFileChangesNothing) {
  ASSERT_TRUE(context().save());
  desk.panels.willChoose(desk.places.path("customers.zlf"));
  lists.importCustomers();
  EXPECT_EQ(desk.panels.openPanels(), 1);
  EXPECT_FALSE(context().hasChanges());
}

}  // namespace
}  // namespace pendra
