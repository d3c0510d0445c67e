#include <SQLiteCpp/SQLiteCpp.h>
#include <gmock/gmock.h>

#include <QElapsedTimer>

#include "store/UndoStack.h"
#include "support/FileSizeLimit.h"
#include "support/TestDocument.h"

namespace pendra {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const QString kName = QStringLiteral("Rename");
const Error kRefused{QStringLiteral("test"), 0, QStringLiteral("refused")};

/// A document on the disk, and what its observers were told.
class Edit : public testing::Test, protected TestWorld {
 protected:
  std::unique_ptr<ObjectContext> owned = opened();
  ObjectContext& context = *owned;
  UndoStack& steps = context.undoStack();
  int told = 0;
  Subscription telling = context.observe([this](const ChangeSet&) { ++told; });

  Customer& customer(const char* name) {
    auto& made = context.insert<Customer>();
    made.setName(QString::fromUtf8(name));
    return made;
  }
  static QStringList namesIn(const ObjectContext& context) {
    QStringList all;
    for (const Customer* customer : context.all<Customer>()) all += queries::nameOf(customer);
    return all;
  }
  QStringList names() const { return namesIn(context); }
  /// The customers of the file, whatever holds it.
  QStringList namesOnDisk() {
    SQLite::Database database(path().toStdString(), SQLite::OPEN_READONLY);
    SQLite::Statement select(database, "SELECT name FROM Customer ORDER BY id");
    QStringList all;
    while (select.executeStep()) all += QString::fromStdString(select.getColumn(0).getString());
    return all;
  }
};

TEST_F(Edit, IsToldThenStoredThenAStep) {
  QStringList order;
  const auto moment = [&](const char* what) {
    order += QStringLiteral("%1: %2 stored, %3")
                 .arg(QLatin1StringView(what))
                 .arg(namesOnDisk().size())
                 .arg(steps.undoName());
  };
  const auto watching = context.observe([&](const ChangeSet&) {
    moment("told");
    EXPECT_TRUE(editInProgress());
  });
  const auto storing = context.observeCommits([&](const CommitState& state) {
    moment("written");
    EXPECT_TRUE(state.savedAt && !state.failure);
  });
  ASSERT_TRUE(context.edit(kName, [&] {
    EXPECT_TRUE(editInProgress());
    customer("Acme");
    ASSERT_TRUE(context.edit(QStringLiteral("inner"), [&] { customer("Zed"); }));
    EXPECT_THAT(order, IsEmpty());
  }));
  EXPECT_FALSE(editInProgress());
  moment("done");
  EXPECT_THAT(order, ElementsAre("told: 0 stored, ", "written: 2 stored, ", "done: 2 stored, Rename"));
  EXPECT_FALSE(context.hasChanges());

  const QByteArray before = contentsOf(path());
  ASSERT_TRUE(context.edit(QStringLiteral("Nothing"), [&] {
    context.deleteObject(customer("passing"));
    Customer& acme = *context.all<Customer>()[0];
    acme.setName(QStringLiteral("other"));
    acme.setName(QStringLiteral("Acme"));
  }));
  EXPECT_EQ(order.size(), 3) << "what left everything as it was is no edit";
  EXPECT_EQ(steps.undoName(), kName);
  EXPECT_EQ(contentsOf(path()), before);

  ASSERT_TRUE(context.edit(kName, {.undoable = false},
                           [&] { context.all<Customer>()[0]->setName(QStringLiteral("Ann")); }));
  EXPECT_EQ(namesOnDisk(), (QStringList{"Ann", "Zed"}));
  EXPECT_THAT(steps.undo(), testing::IsEmpty());
  EXPECT_FALSE(steps.canUndo());
}

TEST_F(Edit, TellsWhatCameWhatWentAndWhatWasBefore) {
  Customer *acme = nullptr, *zed = nullptr;
  Activity *first = nullptr, *second = nullptr;
  TimeEntry* entry = nullptr;
  context.fill([&] {
    acme = &customer("Acme");
    zed = &customer("Zed");
    for (Activity** activity : {&first, &second})
      (*activity = &context.insert<Activity>())->setCustomer(acme);
    entry = &second->addEntry();
    entry->setDuration(60);
  });
  EXPECT_EQ(told, 0);
  Subscription watching = context.observe([&](const ChangeSet& changes) {
    EXPECT_THAT(changes.inserted<Customer>().copy(), ElementsAre(context.all<Customer>()[1]));
    EXPECT_THAT(changes.changed<Customer>().copy(), ElementsAre(zed));
    EXPECT_THAT(changes.deleted<Customer>().copy(), ElementsAre(acme));
    EXPECT_EQ(changes.before(*zed, "name"), PropertyValue(QStringLiteral("Zed")));
    EXPECT_EQ(changes.before(*zed, "shown"), PropertyValue());
    EXPECT_TRUE(changes.changedAny<Customer>("name") && !changes.changedAny<Customer>("shown"));
    EXPECT_EQ(acme->name(), "Acme") << "what has gone can be read";
    EXPECT_THAT(changes.changed<Activity>().copy(), ElementsAre(first));
    EXPECT_EQ(changes.targetBefore<Customer>(*first, "customer"), acme);
    EXPECT_THAT(changes.deleted<Activity>().copy(), ElementsAre(second));
    EXPECT_EQ(changes.targetBefore<Activity>(*entry, "activity"), second);
    EXPECT_EQ(changes.before(*entry, "duration"), PropertyValue(60.0));
    EXPECT_FALSE(changes.touches<Job>() || changes.touches<Service>());
  });
  ASSERT_TRUE(context.edit(kName, [&] {
    zed->setName(QStringLiteral("Zoe"));
    customer("new").setName(QStringLiteral("newer"));
    entry->setDuration(90);
    context.deleteObject(*acme);
    context.deleteObject(*second);
    auto& passing = context.insertTemporary<Job>();
    passing.setCustomer(zed);
    context.deleteObject(passing);
  }));
  EXPECT_EQ(told, 1);
  watching = {};
  EXPECT_THAT(steps.undo(), IsEmpty());
  EXPECT_EQ(told, 2);
  EXPECT_EQ(names(), (QStringList{"Acme", "Zed"}));
  EXPECT_EQ(first->customer(), acme);
  EXPECT_THAT(acme->activities().copy(), ElementsAre(first, second));
  EXPECT_EQ(entry->activity(), second);
  EXPECT_EQ(entry->duration(), 60);
}

TEST_F(Edit, ThatFailsHasNotHappened) {
  ASSERT_TRUE(context.edit(kName, [&] { customer("Acme"); }));
  const Ref<Customer> acme(context.all<Customer>()[0]);
  const auto spoil = [&] {
    customer("never").setName(QStringLiteral("nor this"));
    acme->setName(QStringLiteral("spoilt"));
    context.deleteObject(*acme);
  };
  const QByteArray before = contentsOf(path());
  EXPECT_FALSE(context.edit(kName, [&]() -> Result<void> {
    spoil();
    return kRefused;
  }));
  EXPECT_THROW((void)context.edit(kName,
                                  [&] {
                                    spoil();
                                    throw std::runtime_error("thrown");
                                  }),
               std::runtime_error);
  EXPECT_EQ(names(), QStringList{"Acme"});
  EXPECT_EQ(acme.get(), context.all<Customer>()[0]);
  EXPECT_FALSE(context.hasChanges() || editInProgress());
  EXPECT_EQ(contentsOf(path()), before);
  EXPECT_EQ(told, 1);

  ASSERT_TRUE(context.edit(kName, [&] {
    customer("Zed");
    EXPECT_EQ(context
                  .edit(kName,
                        [&]() -> Result<void> {
                          spoil();
                          return kRefused;
                        })
                  .error()
                  .text,
              kRefused.text);
    EXPECT_THROW((void)context.edit(kName,
                                    [&] {
                                      spoil();
                                      throw 1;
                                    }),
                 int);
    acme->setName(QStringLiteral("Ann"));
  }));
  EXPECT_EQ(namesOnDisk(), (QStringList{"Ann", "Zed"})) << "the outer one goes on";
  EXPECT_EQ(queries::customersNamed(context, QStringLiteral("Ann")).size(), 1U);
  EXPECT_TRUE(queries::customersNamed(context, QStringLiteral("spoilt")).empty());
  EXPECT_GT(customer("next").objectID(), 6) << "no identifier is given twice";
}

TEST_F(Edit, StandsWhenItCannotBeStoredAndIsStoredLater) {
  ASSERT_TRUE(context.edit(kName, [&] { customer("Acme"); }));
  const auto rename = [&](const char* name) {
    EXPECT_TRUE(context.edit(kName, [&] { context.all<Customer>()[0]->setName(QString::fromUtf8(name)); }));
  };
  {
    const FileSizeLimit full(0);
    rename("first");
    clock.advance(60);
    rename("second");
  }
  EXPECT_EQ(context.commitState().failure->why.text, "File too large");
  EXPECT_EQ(context.commitState().failure->since, *context.commitState().savedAt);
  EXPECT_EQ(told, 3);
  EXPECT_EQ(namesOnDisk(), QStringList{"Acme"});
  {
    SQLite::Database reader(path().toStdString(), SQLite::OPEN_READONLY);
    SQLite::Transaction reading(reader);
    reader.execAndGet("SELECT count(*) FROM Customer");
    QElapsedTimer timer;
    timer.start();
    rename("third");
    EXPECT_LT(timer.elapsed(), 1000) << "a command does not wait for a reader as a save does";
    EXPECT_EQ(context.commitState().failure->why.text, "another program is using the file");
    EXPECT_THAT(steps.undo(), IsEmpty()) << "a step stands whether or not it is stored";
    ASSERT_TRUE(context.edit(kName, [&] {
      context.deleteObject(customer("passing"));
      customer("Zed");
    }));
    EXPECT_THAT(steps.undo(), IsEmpty());
  }
  ASSERT_TRUE(context.save());
  EXPECT_FALSE(context.commitState().failure || context.hasChanges());
  EXPECT_EQ(namesOnDisk(), QStringList{"second"});
}

TEST_F(Edit, DoesNotKnowTemporaryObjectsNorWhatFills) {
  auto& temporary = context.insertTemporary<TimeEntry>();
  context.requireEdits(true);
  ASSERT_TRUE(context.edit(kName, [&] { temporary.setDuration(1); }));
  temporary.setDuration(2);
  context.deleteObject(temporary);
  auto& service = context.insertTemporary<Service>();
  context.fill([&] {
    customer("Acme");
    context.insert<Activity>().setService(&service);
    context.insertTemporary<TimeEntry>().setActivity(context.all<Activity>()[0]);
  });
  EXPECT_EQ(context.all<Activity>()[0]->entries().size(), 1U) << "in memory it is as real as any";
  EXPECT_EQ(told, 0);
  EXPECT_FALSE(steps.canUndo());
  EXPECT_THAT(namesOnDisk(), IsEmpty());
  ASSERT_TRUE(context.save());
  EXPECT_EQ(namesOnDisk(), QStringList{"Acme"});
  SQLite::Database file(path().toStdString(), SQLite::OPEN_READONLY);
  EXPECT_EQ(file.execAndGet("SELECT count(*) FROM TimePeriod").getInt(), 0);
  EXPECT_EQ(file.execAndGet("SELECT count(service) FROM Activity").getInt(), 0);
  EXPECT_DEATH(customer("outside"), "a document changes in an edit");
  const auto editor = context.observe([&](const ChangeSet&) { customer("told"); });
  EXPECT_DEATH((void)context.edit(kName, [&] { customer("Zed"); }), "does not edit");
}

}  // namespace
}  // namespace pendra
