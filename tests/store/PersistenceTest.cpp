#include <SQLiteCpp/SQLiteCpp.h>
#include <gmock/gmock.h>

#include "store/PersistentStore.h"
#include "support/TestDocument.h"

namespace pendra {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAreArray;

class Persistence : public testing::Test, protected TestWorld {
 protected:
  /// Saves and reads again, as a second start of the program would.
  std::unique_ptr<ObjectContext> reopened(std::unique_ptr<ObjectContext> context) {
    EXPECT_TRUE(context->save());
    context.reset();
    return opened();
  }
  SQLite::Database file() { return SQLite::Database(path().toStdString(), SQLite::OPEN_READWRITE); }
};

std::vector<QString> namesOf(const ObjectContext& context) {
  std::vector<QString> names;
  for (const Customer* customer : context.all<Customer>()) names.push_back(queries::nameOf(customer));
  return names;
}

TEST_F(Persistence, AbsentEmptyAndZeroStayThreeThings) {
  auto context = opened();
  auto& absent = context->insert<TimeEntry>();
  absent.setStart(std::nullopt);
  absent.setRunning(std::nullopt);
  absent.setDateSubmitted(std::nullopt);
  auto& zero = context->insert<TimeEntry>();
  zero.setNotes(QString());
  zero.setDuration(0);
  zero.setStart(kReferenceInstant);
  auto& identity = context->insert<Identity>();
  identity.setCompanyFileName(QString());
  auto& hidden = context->insert<Job>();
  hidden.setShown(std::nullopt);
  context = reopened(std::move(context));

  const auto periods = context->fetch<TimeEntry>();
  EXPECT_FALSE(periods[0]->start() || periods[0]->duration() || periods[0]->running() ||
               periods[0]->dateSubmitted() || periods[0]->notes());
  EXPECT_EQ(periods[1]->notes(), QString());
  EXPECT_EQ(periods[1]->duration(), 0);
  EXPECT_EQ(periods[1]->start(), kReferenceInstant);
  EXPECT_EQ(periods[1]->running(), false);
  EXPECT_EQ(periods[1]->dateSubmitted(), kReferenceInstant);
  EXPECT_EQ(queries::firstIdentity(*context)->companyFileName(), QString());
  EXPECT_EQ(queries::firstIdentity(*context)->employeeName(), std::nullopt);
  EXPECT_EQ(context->all<Job>()[0]->shown(), std::nullopt) << "not what a new job would get";
}

TEST_F(Persistence, ValuesComeBackAsTheyWere) {
  const QString strange = QStringLiteral("“Zürich” \\ \"x\" 100%2 \n\t😀") + QChar(0) + u"end";
  auto context = opened();
  auto& activity = context->insert<Activity>();
  activity.setNotes(strange);
  auto& period = activity.addEntry();
  period.setStart(Instant{817203661.123456});
  period.setDuration(0.1 + 0.2);
  context = reopened(std::move(context));
  EXPECT_EQ(context->all<Activity>()[0]->notes(), strange);
  EXPECT_EQ(context->all<TimeEntry>()[0]->start(), Instant{817203661.123456});
  EXPECT_EQ(context->all<TimeEntry>()[0]->duration(), 0.1 + 0.2);
}

TEST_F(Persistence, OrderAndLinksSurviveWhateverWasTiedLast) {
  auto context = opened();
  auto& acme = context->insert<Customer>();
  auto& first = context->insert<Activity>();
  auto& second = context->insert<Activity>();
  second.setCustomer(&acme);
  first.setCustomer(&acme);
  for (const char* name : {"c", "a", "b"}) context->insert<Customer>().setName(QString::fromUtf8(name));
  acme.setName(QStringLiteral("z"));
  const std::vector<qint64> ids{first.objectID(), second.objectID()};
  context = reopened(std::move(context));
  EXPECT_THAT(namesOf(*context), ElementsAre("z", "c", "a", "b"));
  const auto activities = context->all<Customer>()[0]->activities();
  EXPECT_EQ((std::vector<qint64>{activities[0]->objectID(), activities[1]->objectID()}), ids);
}

TEST_F(Persistence, ASaveWritesWhatCameWentAndChanged) {
  auto context = opened();
  auto& kept = context->insert<Customer>();
  auto& gone = context->insert<Customer>();
  ASSERT_TRUE(context->save());
  EXPECT_FALSE(context->hasChanges());
  kept.setName(QStringLiteral("renamed"));
  context->deleteObject(gone);
  context->insert<Customer>().setName(QStringLiteral("new"));
  context->deleteObject(context->insert<Customer>());
  context = reopened(std::move(context));
  EXPECT_THAT(namesOf(*context), ElementsAre("renamed", "new"));
}

TEST_F(Persistence, ATemporaryObjectNeverReachesTheFile) {
  auto context = opened();
  auto& period = context->insertTemporary<TimeEntry>();
  auto& service = context->insertTemporary<Service>();
  auto& activity = context->insert<Activity>();
  period.setActivity(&activity);
  period.setDuration(60);
  activity.setService(&service);
  EXPECT_EQ(activity.entries().size(), 1U) << "in memory it is as real as any";
  context = reopened(std::move(context));
  EXPECT_TRUE(context->all<TimeEntry>().empty());
  EXPECT_TRUE(context->all<Service>().empty());
  EXPECT_EQ(context->all<Activity>()[0]->service(), nullptr);
}

TEST_F(Persistence, ALinkToARowThatIsNotThereIsNone) {
  reopened(opened());
  file().exec("INSERT INTO Activity(id, customer) VALUES (1, 77)");
  EXPECT_EQ(opened()->all<Activity>()[0]->customer(), nullptr);
}

class Columns : public Persistence, public testing::WithParamInterface<const EntityDescriptor*> {};

TEST_P(Columns, AreTheDescribedMembersAndNoOthers) {
  reopened(opened());
  auto database = file();
  SQLite::Statement info(database, std::string("PRAGMA table_info(\"") + GetParam()->name + "\")");
  std::vector<std::string> columns;
  while (info.executeStep())
    columns.push_back(info.getColumn(1).getString() + " " + info.getColumn(2).getString());
  std::vector<std::string> described{"id INTEGER"};
  for (const PropertyDescriptor& property : GetParam()->properties) {
    if (!property.hasColumn()) continue;
    const bool isReal = property.kind == Kind::Instant || property.kind == Kind::Number;
    const char* type = property.kind == Kind::Text ? " TEXT" : isReal ? " REAL" : " INTEGER";
    described.push_back(property.name + std::string(type));
  }
  EXPECT_THAT(columns, UnorderedElementsAreArray(described));
}

INSTANTIATE_TEST_SUITE_P(OfEveryEntity, Columns, testing::ValuesIn(testModel().entities),
                         [](const auto& row) { return std::string(row.param->name); });

TEST_F(Persistence, TheFileIsOneSqliteFileThatSaysWhatItIs) {
  reopened(opened());
  auto database = file();
  EXPECT_EQ(database.execAndGet("PRAGMA application_id").getInt(), kApplicationID);
  EXPECT_EQ(database.execAndGet("PRAGMA user_version").getInt(), testModel().newestLayout());
  EXPECT_EQ(database.execAndGet("PRAGMA journal_mode").getString(), "delete");
  EXPECT_THAT(QDir(places.documents).entryList(QDir::Files), ElementsAre("Work.pdr"));
}

}  // namespace
}  // namespace pendra
