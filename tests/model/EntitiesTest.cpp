#include <gmock/gmock.h>

#include "model/ArrayExtensions.h"
#include "model/NameAndRecNumber.h"
#include "model/Notes.h"
#include "support/TestDocument.h"

namespace pendra {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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
  EXPECT_EQ(context.insert<TimePeriod>().dateSubmitted(), kReferenceInstant);
  EXPECT_EQ(context.insert<Customer>().index(), context.insert<Customer>().index());
}

TEST_F(Entities, NamesCompareByCodeUnit) {
  EXPECT_LT(customer("Zed").compare(customer("acme")), 0);
  EXPECT_EQ(customer("Zed").compare(customer("Zed")), 0);
  EXPECT_EQ(customer("Zed").descriptionFunction(), "Zed");
}

TEST_F(Entities, ACopiedServiceBelongsToNoDocument) {
  auto& service = context.insert<Service>();
  service.setName(QStringLiteral("Design"));
  service.setVtObjectID(QStringLiteral("80"));
  service.setShown(true);
  const auto copy = service.copyWithZone();
  EXPECT_EQ(copy->compare(service), 0);
  EXPECT_EQ(copy->vtObjectID(), "80");
  EXPECT_EQ(copy->shown(), std::nullopt);
  EXPECT_EQ(copy->context(), nullptr);
  EXPECT_EQ(context.all<Service>().size(), 1U);
}

TEST_F(Entities, AnActivityRunsOneEntryAtATime) {
  auto& activity = context.insert<Activity>();
  EXPECT_EQ(activity.addTimePeriod().running(), false);
  EXPECT_FALSE(activity.isRunning());
  TimePeriod& running = activity.startNewTimePeriod();
  EXPECT_EQ(activity.runningTimePeriod(), &running);
  clock.advance(60);
  activity.stop();
  activity.stop();
  EXPECT_EQ(running.duration(), 60);
  EXPECT_FALSE(activity.isRunning());
  EXPECT_EQ(activity.billableImage(), "CheckBox_SmallControl_Unselected");
  activity.setBillable(true);
  EXPECT_EQ(activity.billableImage(), "CheckBox_SmallControl_Selected");
}

TEST_F(Entities, TheDocumentAnnouncesItsCustomersBeforeAndAfter) {
  auto& document = context.insert<CorvelDoc>();
  Customer& acme = customer("Acme");
  std::vector<std::size_t> sizes;
  const auto look = [&] { sizes.push_back(document.customers().size()); };
  const auto watching = document.customersChanges().observe(look, look);
  document.addCustomerObject(acme);
  document.removeCustomerObject(acme);
  document.removeCustomerObject(acme);
  EXPECT_THAT(sizes, ElementsAre(0U, 1U, 1U, 0U, 0U, 0U));
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

TEST(ArrayExtensions, FindFromAnIndexOn) {
  const std::vector<int> numbers{4, 7, 9, 7};
  const auto isSeven = [](int number) { return number == 7; };
  EXPECT_EQ(findFirstMatchingPredicate(numbers, isSeven), 1);
  EXPECT_EQ(findMatchingPredicate(numbers, isSeven, 1), 3);
  EXPECT_EQ(findMatchingPredicate(numbers, isSeven, 3), -1);
  EXPECT_EQ(findMatchingPredicate(numbers, isSeven, 99), -1);
  EXPECT_EQ(findMatchingPredicate(std::vector<int>{}, isSeven, -1), -1);
  EXPECT_EQ(countMatchingPredicate(numbers, isSeven), 2);
  const std::vector<const int*> pointers{&numbers[1]};
  EXPECT_TRUE(containsObjectIdenticalTo(pointers, &numbers[1]));
  EXPECT_FALSE(containsObjectIdenticalTo(pointers, &numbers[3])) << "an equal one is not the very one";
}

TEST(ArrayExtensions, InsertTogetherAndAppendWhatIsNew) {
  std::vector<int> numbers{1, 4};
  insertObjectsFromArray(numbers, std::vector<int>{2, 3}, 1);
  EXPECT_THAT(numbers, ElementsAre(1, 2, 3, 4));
  EXPECT_FALSE(addObjectIfUnique(numbers, std::optional<int>()));
  EXPECT_FALSE(addObjectIfUnique(numbers, std::optional(4)));
  EXPECT_TRUE(addObjectIfUnique(numbers, std::optional(5)));
  std::vector<QVariant> mixed{QVariant(7)};
  EXPECT_TRUE(addStringIfContentsAreUnique(mixed, QStringLiteral("7"))) << "a number is no text";
  EXPECT_FALSE(addStringIfContentsAreUnique(mixed, QStringLiteral("7")));
  EXPECT_FALSE(addStringIfContentsAreUnique(mixed, std::nullopt));
  EXPECT_EQ(mixed.size(), 2U);
}

TEST(Values, ANoteShowsItsMarkerOnlyWhereThereIsAText) {
  EXPECT_EQ(Notes{}.value(), std::nullopt);
  EXPECT_EQ(Notes{QString()}.value(), std::nullopt);
  EXPECT_EQ(Notes{QStringLiteral("x")}.copyWithZone().description(), "Notesbox");
  EXPECT_EQ(NameAndRecNumber::initWithName(QStringLiteral("Acme"), QStringLiteral("1")).parentObjectID,
            std::nullopt);
}

}  // namespace
}  // namespace pendra
