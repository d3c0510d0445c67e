#include <SQLiteCpp/SQLiteCpp.h>
#include <gmock/gmock.h>

#include "store/PersistentStore.h"
#include "support/TestDocument.h"

namespace pendra {
namespace {

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

TEST_F(Persistence, TheFileIsOneSqliteFileThatSaysWhatItIs) {
  reopened(opened());
  auto database = file();
  EXPECT_EQ(database.execAndGet("PRAGMA application_id").getInt(), kApplicationID);
  EXPECT_EQ(database.execAndGet("PRAGMA user_version").getInt(), testModel().newestLayout());
  EXPECT_EQ(database.execAndGet("PRAGMA journal_mode").getString(), "delete");
  EXPECT_THAT(QDir(places.documents).entryList(QDir::Files), testing::ElementsAre("Work.pdr"));
}

}  // namespace
}  // namespace pendra
