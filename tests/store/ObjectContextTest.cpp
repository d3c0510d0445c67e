#include "store/ObjectContext.h"

#include <gmock/gmock.h>

#include "support/TestDocument.h"

namespace pendra {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Graph : public testing::Test, protected TestDocument {
 protected:
  Customer& customer(const char* name) {
    auto& made = context.insert<Customer>();
    made.setName(QString::fromUtf8(name));
    return made;
  }
  Job& job(Customer& customer) {
    auto& made = context.insert<Job>();
    made.setCustomer(&customer);
    return made;
  }
  std::vector<Customer*> named(const char* name) {
    return queries::customersNamed(context, QString::fromUtf8(name)).copy();
  }
};

TEST_F(Graph, BothEndsOfARelationshipMoveTogether) {
  Customer& acme = customer("Acme");
  Customer& zed = customer("Zed");
  Job& first = job(acme);
  Job& second = job(acme);
  EXPECT_THAT(acme.jobs().copy(), ElementsAre(&first, &second));
  first.setCustomer(&zed);
  EXPECT_THAT(acme.jobs().copy(), ElementsAre(&second));
  EXPECT_THAT(zed.jobs().copy(), ElementsAre(&first));
  first.setCustomer(&acme);
  EXPECT_THAT(acme.jobs().copy(), ElementsAre(&first, &second)) << "in the order of insertion, not of tying";
  first.setCustomer(nullptr);
  EXPECT_THAT(acme.jobs().copy(), ElementsAre(&second));
}

TEST_F(Graph, DeletingACustomerTakesItsJobsAndLeavesItsActivities) {
  Customer& acme = customer("Acme");
  Job& phone = job(acme);
  auto& service = context.insert<Service>();
  auto& activity = context.insert<Activity>();
  activity.setCustomer(&acme);
  activity.setJob(&phone);
  activity.setService(&service);
  context.deleteObject(acme);
  EXPECT_TRUE(phone.isDeleted());
  EXPECT_EQ(activity.customer(), nullptr);
  EXPECT_EQ(activity.job(), nullptr);
  EXPECT_EQ(activity.service(), &service);
  context.deleteObject(service);
  EXPECT_EQ(activity.service(), nullptr);
  EXPECT_THAT(context.fetch<Job>(), IsEmpty());
  EXPECT_THAT(context.fetch<Activity>(), ElementsAre(&activity));
}

TEST_F(Graph, DeletingAnActivityTakesItsEntriesAndDeletingTwiceIsDeletingOnce) {
  auto& activity = context.insert<Activity>();
  TimeEntry& running = activity.startEntry();
  TimeEntry& other = activity.addEntry();
  context.deleteObject(running);
  EXPECT_FALSE(activity.isRunning());
  context.deleteObject(running);
  activity.stop();
  EXPECT_THAT(activity.entries().copy(), ElementsAre(&other));
  context.deleteObject(activity);
  context.deleteObject(activity);
  EXPECT_TRUE(other.isDeleted());
  EXPECT_TRUE(context.all<TimeEntry>().empty());
}

TEST_F(Graph, NothingIsTiedToWhatIsDeletedOrFreeStanding) {
  Customer& acme = customer("Acme");
  Customer& zed = customer("Zed");
  auto& activity = context.insert<Activity>();
  context.deleteObject(acme);
  activity.setCustomer(&acme);
  EXPECT_EQ(activity.customer(), nullptr);
  Service free;
  activity.setService(&free);
  EXPECT_EQ(activity.service(), nullptr);
  context.deleteObject(activity);
  activity.setCustomer(&zed);
  EXPECT_THAT(zed.activities().copy(), IsEmpty());
}

TEST_F(Graph, AReferenceReadsAsNoneOnceItsObjectIsGone) {
  Customer& acme = customer("Acme");
  const Ref<Customer> first(&acme);
  const Ref<Customer> zed(&customer("Zed"));
  EXPECT_EQ(first.get(), &acme);
  EXPECT_FALSE(first == zed);
  context.deleteObject(acme);
  EXPECT_EQ(first.get(), nullptr);
  EXPECT_EQ(Ref<Customer>(&acme).get(), nullptr) << "also one that is made after the deletion";
  EXPECT_TRUE(zed);
  owned.reset();
  EXPECT_FALSE(zed) << "its document has closed";
}

TEST_F(Graph, LookUpsFollowEveryRenamingAndKeepTheOrderOfInsertion) {
  Customer& first = customer("Acme");
  Customer& second = customer("acme");
  Customer& third = customer("Acme");
  EXPECT_THAT(named("Acme"), ElementsAre(&first, &third));
  second.setName(QStringLiteral("Acme"));
  EXPECT_THAT(named("Acme"), ElementsAre(&first, &second, &third));
  first.setName(QString());
  third.setName(std::nullopt);
  EXPECT_THAT(named("Acme"), ElementsAre(&second));
  EXPECT_THAT(named(""), ElementsAre(&first)) << "an absent name is not an empty one";
  context.deleteObject(second);
  EXPECT_THAT(named("Acme"), IsEmpty());
}

}  // namespace
}  // namespace pendra
