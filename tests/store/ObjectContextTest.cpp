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
};

TEST_F(Graph, IsTiedAtBothEndsAndComesApartByTheRules) {
  Customer& acme = customer("Acme");
  Customer& zed = customer("Zed");
  Job& first = job(acme);
  Job& second = job(acme);
  first.setCustomer(&zed);
  EXPECT_THAT(acme.jobs().copy(), ElementsAre(&second));
  EXPECT_THAT(zed.jobs().copy(), ElementsAre(&first));
  first.setCustomer(&acme);
  EXPECT_THAT(acme.jobs().copy(), ElementsAre(&first, &second)) << "in the order of insertion, not of tying";

  auto& activity = context.insert<Activity>();
  activity.setCustomer(&acme);
  activity.setJob(&second);
  TimeEntry& running = activity.startEntry();
  TimeEntry& other = activity.addEntry();
  context.deleteObject(acme);
  EXPECT_TRUE(first.isDeleted() && second.isDeleted());
  EXPECT_TRUE(!activity.customer() && !activity.job() && !activity.isDeleted());
  activity.setCustomer(&acme);
  EXPECT_EQ(activity.customer(), nullptr) << "nothing is tied to what is deleted";
  Service free;
  activity.setService(&free);
  EXPECT_EQ(activity.service(), nullptr) << "or free-standing";
  context.deleteObject(running);
  context.deleteObject(running);
  EXPECT_FALSE(activity.isRunning());
  EXPECT_THAT(activity.entries().copy(), ElementsAre(&other));
  context.deleteObject(activity);
  EXPECT_TRUE(other.isDeleted());
  activity.setCustomer(&zed);
  EXPECT_THAT(zed.activities().copy(), IsEmpty());
  EXPECT_TRUE(context.all<Job>().empty() && context.all<TimeEntry>().empty());
}

TEST_F(Graph, AReferenceIsNoneWithoutItsObjectOrItsDocument) {
  Customer& acme = customer("Acme");
  const Ref<Customer> first(&acme);
  Ref<Customer> zed(&customer("Zed"));
  EXPECT_TRUE(first == &acme && first != zed);
  context.deleteObject(acme);
  EXPECT_TRUE(!first && !Ref<Customer>(&acme));
  ASSERT_TRUE(context.edit({}, {.undoable = false}, [&] { context.deleteObject(customer("Passing")); }));
  EXPECT_TRUE(zed);
  const Ref<Customer> copy = zed;
  owned.reset();
  EXPECT_TRUE(!zed && !copy);
}

}  // namespace
}  // namespace pendra
