#include <gtest/gtest.h>

#include "support/TestDocument.h"

namespace pendra {
namespace {

class Entities : public testing::Test, protected TestDocument {};

TEST_F(Entities, EveryRelationshipIsTheInverseOfItsInverse) {
  for (const EntityDescriptor* entity : testModel().entities) {
    for (const PropertyDescriptor& property : entity->properties) {
      if (!property.target) continue;
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

}  // namespace
}  // namespace pendra
