#include <gmock/gmock.h>

#include "support/TestDocument.h"

namespace pendra {
namespace {

using testing::ElementsAre;

class Entities : public testing::Test, protected TestDocument {
 protected:
  Customer& customer(const char* name) {
    auto& made = context.insert<Customer>();
    made.setName(QString::fromUtf8(name));
    return made;
  }
};

TEST_F(Entities, EveryRelationshipIsTheInverseOfItsInverse) {
  for (const EntityDescriptor* entity : testModel().entities) {
    for (const PropertyDescriptor& property : entity->properties) {
      if (!property.isRelationship()) continue;
      const auto* inverse = property.target().property(QLatin1StringView(property.inverse));
      ASSERT_TRUE(inverse) << entity->name << "." << property.name;
      EXPECT_STREQ(inverse->inverse, property.name);
      EXPECT_EQ(&inverse->target(), entity);
      EXPECT_NE(inverse->kind, property.kind) << "one end holds one, the other many";
    }
  }
}

TEST_F(Entities, BeginWithWhatListsAndFetchesRelyOn) {
  EXPECT_EQ(context.insert<Activity>().completed(), false);
  EXPECT_EQ(context.insert<Job>().shown(), true);
  EXPECT_EQ(context.insert<Service>().shown(), false);
  EXPECT_EQ(context.insert<TimeEntry>().dateSubmitted(), kReferenceInstant);
  EXPECT_EQ(context.insert<Customer>().index(), context.insert<Customer>().index());
}

TEST_F(Entities, NamesCompareByCodeUnit) {
  EXPECT_LT(queries::compareNames(QStringLiteral("Zed"), QStringLiteral("acme")), 0);
  EXPECT_EQ(queries::compareNames(std::nullopt, QString()), 0);
}

TEST_F(Entities, AnActivityRunsOneEntryAtATime) {
  auto& activity = context.insert<Activity>();
  EXPECT_EQ(activity.addEntry().running(), false);
  EXPECT_FALSE(activity.isRunning());
  TimeEntry& running = activity.startEntry();
  EXPECT_EQ(activity.runningEntry(), &running);
  clock.advance(60);
  activity.stop();
  activity.stop();
  EXPECT_EQ(running.duration(), 60);
  EXPECT_FALSE(activity.isRunning());
}

TEST_F(Entities, FixedQueriesAnswerInTheOrderOfInsertion) {
  Customer& zed = customer("Zed");
  Customer& acme = customer("Acme");
  zed.setShown(true);
  acme.setShown(true);
  customer("hidden").setShown(false);
  customer("unknown");
  EXPECT_THAT(queries::shownCustomers(context), ElementsAre(&zed, &acme));
  zed.setVtObjectID(QStringLiteral("7"));
  EXPECT_THAT(queries::customersWithRecord(context, QStringLiteral("7")).copy(), ElementsAre(&zed));
  auto& done = context.insert<Activity>();
  auto& unknown = context.insert<Activity>();
  auto& open = context.insert<Activity>();
  done.setCompleted(true);
  unknown.setCompleted(std::nullopt);
  EXPECT_THAT(queries::openActivities(context), ElementsAre(&open));
  EXPECT_TRUE(queries::nameContains(QStringLiteral("Backup"), QStringLiteral("AC")));
  EXPECT_FALSE(queries::nameContains(QStringLiteral("Zed"), QStringLiteral("ac")));
  EXPECT_FALSE(queries::nameContains(std::nullopt, QString()));
  EXPECT_THAT(queries::distinctNames(context.all<Customer>()),
              ElementsAre("Acme", "hidden", "unknown", "Zed"));
}

}  // namespace
}  // namespace pendra
