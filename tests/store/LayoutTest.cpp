#include <SQLiteCpp/SQLiteCpp.h>
#include <gmock/gmock.h>

#include "store/PersistentStore.h"
#include "support/Disk.h"
#include "support/FileSizeLimit.h"
#include "support/Rows.h"
#include "support/TestDocument.h"

namespace pendra {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// What the second layout's first programs did to a document of the first.
constexpr const char* kSecondLayout =
    "ALTER TABLE Activity ADD COLUMN lostCustomer INTEGER;"
    "ALTER TABLE Activity ADD COLUMN lostJob INTEGER;"
    "ALTER TABLE Activity ADD COLUMN lostService INTEGER;";

/// What the third layout's programs did to a document of the second.
constexpr const char* kThirdLayout =
    "ALTER TABLE TimePeriod ADD COLUMN haltedAt REAL;"
    "ALTER TABLE TimePeriod ADD COLUMN awayFrom REAL;"
    "ALTER TABLE TimePeriod ADD COLUMN awayTo REAL;"
    "ALTER TABLE Activity ADD COLUMN favourite INTEGER;"
    "ALTER TABLE Document ADD COLUMN aliveAt REAL;";

/// Documents as they were made, some under a number that was given out already.
struct OldLayout {
  const char* name;
  const char* schema;  ///< the tables as they were then
  const char* upgrade;
  int number;
  bool knowsSending;
  bool knowsLosses;
  bool knowsAbsences = false;
  bool knowsNames = false;  ///< of the records in which entries were sent

  [[nodiscard]] bool isNewest() const { return number == testModel().newestLayout(); }
};

QByteArray fixture(const char* name) {
  const QByteArray text = contentsOf(QStringLiteral(PENDRA_FIXTURES "/") + QLatin1StringView(name));
  EXPECT_FALSE(text.isEmpty()) << name;
  return text;
}

class Museum : public testing::Test, protected TestWorld {
 protected:
  void alter(const char* text) {
    SQLite::Database(path().toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE).exec(text);
  }
  void makeDocument(const OldLayout& old) {
    alter(fixture(old.schema).constData());
    alter(old.upgrade);
    alter(fixture("rows.sql").constData());
    if (old.knowsSending) alter("UPDATE TimePeriod SET sendingSince=785000900.5 WHERE id=11");
    if (old.knowsLosses) alter("UPDATE Activity SET lostService=1 WHERE id=8");
    if (old.knowsAbsences) {
      alter(
          "UPDATE TimePeriod SET haltedAt=10.5, awayFrom=11, awayTo=12 WHERE id=11;"
          "UPDATE Activity SET favourite=1 WHERE id=7; UPDATE Document SET aliveAt=13");
    }
    if (old.knowsNames) alter("UPDATE TimePeriod SET sentAs='Acme - Roof' WHERE id=11");
    alter(qPrintable(QStringLiteral("PRAGMA application_id=%1; PRAGMA user_version=%2")
                         .arg(kApplicationID)
                         .arg(old.number)));
  }
  QStringList files() const { return QDir(places.documents).entryList(QDir::Files); }

  static void expectEverything(const ObjectContext& context, const OldLayout& old) {
    const Activity& activity = *context.all<Activity>()[0];
    const DocumentSettings& settings = *context.all<DocumentSettings>()[0];
    EXPECT_EQ((QStringList{queries::nameOf(activity.customer()), *activity.customer()->vtObjectID(),
                           queries::nameOf(activity.job()), queries::nameOf(activity.job()->customer()),
                           queries::nameOf(activity.service()), *settings.identity()->employeeName(),
                           *activity.notes()}),
              (QStringList{u"Zürich & Co"_qs, "80001", "Site", u"Zürich & Co"_qs, "Design", "Ann", "walls"}));
    EXPECT_EQ(activity.service()->shown(), false);
    EXPECT_EQ(settings.standalone(), false);
    EXPECT_EQ(activity.billable(), true);
    EXPECT_FALSE(activity.loss().any());
    EXPECT_EQ(context.all<Activity>()[1]->loss().service, old.knowsLosses);
    const TimeEntry& entry = *context.all<TimeEntry>()[0];
    EXPECT_EQ(entry.activity(), &activity);
    EXPECT_EQ(std::tuple(entry.start(), entry.dateSubmitted(), entry.notes(), entry.running()),
              std::tuple(Instant{785000000.25}, Instant{785100000}, QString("first floor"), false));
    EXPECT_EQ(entry.duration(), 5400.5);
    EXPECT_EQ(entry.sendingSince(), old.knowsSending ? std::optional(Instant{785000900.5}) : std::nullopt);
    const bool away = old.knowsAbsences;
    const auto known = [&](double seconds) { return away ? std::optional(Instant{seconds}) : std::nullopt; };
    EXPECT_EQ(std::tuple(entry.haltedAt(), entry.awayFrom(), entry.awayTo()),
              std::tuple(known(10.5), known(11), known(12)));
    EXPECT_EQ(activity.favourite(), away ? std::optional(true) : std::nullopt);
    EXPECT_EQ(entry.sentAs(), old.knowsNames ? std::optional(u"Acme - Roof"_qs) : std::nullopt);
    const TimeEntry& bare = *context.all<TimeEntry>()[1];
    EXPECT_FALSE(bare.start() || bare.duration() || bare.running() || bare.dateSubmitted() || bare.notes());
  }
};

class Layout : public Museum, public testing::WithParamInterface<OldLayout> {};

TEST_P(Layout, IsReadKeptAsACopyAndSavedInTheNewest) {
  makeDocument(GetParam());
  const QByteArray before = contentsOf(path());
  EXPECT_TRUE(PersistentStore::check(path(), testModel()));
  auto context = opened();
  expectEverything(*context, GetParam());
  EXPECT_EQ(queries::firstDocument(*context)->aliveAt(),
            GetParam().knowsAbsences ? std::optional(Instant{13}) : std::nullopt);
  const QString copy = QStringLiteral("Work (layout %1).pdrbackup").arg(GetParam().number);
  if (GetParam().isNewest()) {
    EXPECT_THAT(files(), ElementsAre("Work.pdr"));
  } else {
    EXPECT_THAT(files(), ElementsAre(copy, "Work.pdr"));
    EXPECT_EQ(contentsOf(path(copy)), before);
  }

  TimeEntry& bare = *context->all<TimeEntry>()[1];
  EXPECT_FALSE(bare.haltedAt() || bare.awayFrom() || bare.awayTo());
  bare.setHaltedAt(Instant{1.5});
  bare.setAwayFrom(Instant{2});
  bare.setAwayTo(Instant{3});
  bare.activity()->setFavourite(true);
  queries::firstDocument(*context)->setAliveAt(Instant{4});
  ASSERT_TRUE(context->save());
  context.reset();
  context = opened();
  expectEverything(*context, GetParam());
  const TimeEntry& stored = *context->all<TimeEntry>()[1];
  EXPECT_EQ(stored.haltedAt(), Instant{1.5});
  EXPECT_EQ(stored.awayFrom(), Instant{2});
  EXPECT_EQ(stored.awayTo(), Instant{3});
  EXPECT_EQ(stored.activity()->favourite(), true);
  EXPECT_EQ(queries::firstDocument(*context)->aliveAt(), Instant{4});
  EXPECT_EQ(files().size(), GetParam().isNewest() ? 1 : 2) << "one copy, however often it is opened";
  EXPECT_NE(GetParam().isNewest() ? QString() : pathOfLayoutCopy(path(), GetParam().number), path(copy))
      << "never over an older copy";
}

INSTANTIATE_TEST_SUITE_P(
    Files, Layout,
    testing::Values(OldLayout{"First", "first.momd", "", 1, false, false},
                    OldLayout{"FirstThatKnowsSending", "sending.momd", "", 1, true, false},
                    OldLayout{"FirstThatKnowsLosses", "losses.momd", "", 1, true, true},
                    OldLayout{"Second", "losses.momd", "", 2, true, true},
                    OldLayout{"SecondFromOneThatKnewSending", "sending.momd", kSecondLayout, 2, true, true},
                    OldLayout{"SecondFromTheFirst", "first.momd", kSecondLayout, 2, false, true},
                    OldLayout{"Third", "third.momd", "", 3, true, true, true},
                    OldLayout{"ThirdFromTheSecond", "losses.momd", kThirdLayout, 3, true, true, true},
                    OldLayout{"Fourth", "fourth.momd", "", 4, true, true, true, true},
                    OldLayout{"FourthFromTheThird", "third.momd",
                              "ALTER TABLE TimePeriod ADD COLUMN sentAs TEXT", 4, true, true, true, true}),
    RowName());

TEST_F(Museum, AnUpgradeThatFailsAtAnyMomentIsDoneWhollyOrNotAtAll) {
  int syncs = 0;
  for (bool done = false; !done; ++syncs) {
    for (const QString& file : files()) QFile::remove(path(file));
    makeDocument({"First", "first.momd", "", 1, false, false});
    const QByteArray before = contentsOf(path());
    {
      Disk disk;
      disk.syncs = syncs;
      done = bool(emptyContext()->open(path()));
    }
    SQLite::Database file(path().toStdString(), SQLite::OPEN_READWRITE);
    if (file.execAndGet("PRAGMA user_version").getInt() == testModel().newestLayout()) continue;
    EXPECT_EQ(contentsOf(path()), before) << "after " << syncs;
  }
  EXPECT_GT(syncs, 4);
}

struct Broken {
  const char* name;
  const char* alteration;
  const char* reason;
  rlim_t room = RLIM_INFINITY;
};

class BrokenLayout : public Museum, public testing::WithParamInterface<Broken> {};

TEST_P(BrokenLayout, StaysAsItWasAndSaysWhy) {
  makeDocument({"First", "first.momd", "", 1, false, false});
  alter(GetParam().alteration);
  const QByteArray before = contentsOf(path());
  std::string reason;
  {
    const FileSizeLimit limit(GetParam().room);
    const auto read = emptyContext()->open(path());
    if (!read) reason = read.error().text.toStdString();
  }
  EXPECT_THAT(reason, HasSubstr(GetParam().reason));
  EXPECT_EQ(contentsOf(path()), before);
  EXPECT_THAT(files(), ElementsAre("Work.pdr")) << "nor is there a copy of what did not change";
}

INSTANTIATE_TEST_SUITE_P(
    Files, BrokenLayout,
    testing::Values(Broken{"LacksAColumn", "ALTER TABLE Job DROP COLUMN shown", "it lacks Job.shown"},
                    Broken{"LacksATable", "DROP TABLE Identity", "it lacks Identity.id"},
                    Broken{"HasAViewForATable",
                           "DROP TABLE Service; CREATE VIEW Service AS WITH RECURSIVE n(id) AS "
                           "(SELECT 1 UNION ALL SELECT id + 1 FROM n) SELECT id FROM n",
                           "it lacks Service.id"},
                    Broken{"HasNoRoom", "", "File too large", 8192}),
    RowName());

}  // namespace
}  // namespace pendra
