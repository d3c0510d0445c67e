#include "document/Backups.h"

#include <sys/stat.h>

#include "DocumentTest.h"
#include "document/BackupKeeper.h"
#include "support/Disk.h"
#include "support/Events.h"
#include "support/FileSizeLimit.h"
#include "support/OrdinaryUser.h"

namespace pendra {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr double kDay = 86'400;

/// "Work.pdr" open, with backups that make themselves at once.
class Backups : public DocumentTest {
 protected:
  Backups() {
    write(path("Work.pdr"));
    keeper.start();
    open("Work.pdr");
  }
  void addCustomer(const char* name) {
    std::ignore = session.context()->edit(
        {}, [&] { session.context()->insert<Customer>().setName(QString::fromUtf8(name)); });
  }
  void closeAndOpen() {
    leaveDocument(session);
    open("Work.pdr");
  }
  /// The names without their last part, the newest first, after whatever was about to happen.
  [[nodiscard]] QStringList backups() {
    processEvents();
    QStringList names;
    for (const BackupFile& one : backupsOf(session)) names << QFileInfo(one.path).completeBaseName();
    return names;
  }
  static void processEvents() {
    for (int turn = 0; turn < 3; ++turn) QCoreApplication::processEvents();
  }

  BackupKeeper keeper{session, {.afterChange = std::chrono::milliseconds(0)}};
};

TEST_F(Backups, AreMadeAtTheFirstChangeOfADayAndAtTheEndAndOnlyOfWhatChanged) {
  EXPECT_THAT(backups(), IsEmpty()) << "a look is no change";
  addCustomer("Bolt");
  EXPECT_THAT(backupsOf(session), IsEmpty()) << "not inside the edit";
  EXPECT_THAT(backups(), ElementsAre("2026-11-24 100000 daily"));
  clock.advance(60);
  addCustomer("Cole");
  EXPECT_EQ(backups().size(), 1) << "the day has its one";
  closeAndOpen();
  EXPECT_THAT(backups(), ElementsAre("2026-11-24 100100 daily", "2026-11-24 100000 daily"));
  const QString newest = backupsOf(session).front().path;
  EXPECT_EQ((*readBackup(session, newest).value()).all<Customer>().size(), 3U);
  EXPECT_EQ(QFile::permissions(newest) & ~QFile::Permissions(0x7000), QFile::ReadUser | QFile::WriteUser);
  struct stat folder {};
  ASSERT_EQ(::stat(QFile::encodeName(backupFolderOf(session)).constData(), &folder), 0);
  EXPECT_EQ(folder.st_mode & 0777, 0700U);
  clock.advance(60);
  closeAndOpen();
  EXPECT_EQ(backups().size(), 2) << "nothing changed, in a session that only looked";
  clock.advance(kDay);
  std::ignore = session.context()->edit({}, [&] { session.settings()->setAliveAt(clock.now()); });
  EXPECT_EQ(backups().size(), 2) << "a sign of life is no change";
  addCustomer("Dash");
  EXPECT_EQ(backups().front(), "2026-11-25 100200 daily");
  addCustomer("Eve");
  for (int i = 0; i < 2; ++i) ASSERT_TRUE(makeBackup(session, BackupReason::UpdatingLists));
  addCustomer("Fay");
  ASSERT_TRUE(makeBackup(session, BackupReason::Restoring));
  EXPECT_THAT(backups().mid(0, 2), ElementsAre("2026-11-25 100202 restore", "2026-11-25 100201 lists"))
      << "two in one second stand beside each other, and none is made twice";
  std::ignore = session.context()->edit({}, [&] {
    for (Customer* customer : session.context()->fetch<Customer>())
      session.context()->deleteObject(*customer);
  });
  leaveDocument(session);
  open("Work.pdr");
  EXPECT_EQ(backups().size(), 5) << "what has nothing in it is not worth one";
}

TEST_F(Backups, ThatCannotBeMadeAreSpokenOfOnceAndKeepTheOldOnes) {
  for (int change = 0; change < 11; ++change) {
    addCustomer("More");
    ASSERT_TRUE(makeBackup(session, BackupReason::UpdatingLists));
  }
  const QStringList before = backups();
  ASSERT_EQ(before.size(), 10) << "the next one makes the oldest go";
  clock.advance(kDay);
  const auto failsFor = [&](const char* why, const std::function<Result<void>()>& make) {
    addCustomer("More");
    EXPECT_FALSE(session.context()->hasChanges()) << "the document is stored all the same";
    for (int said : {1, 0}) {
      EXPECT_FALSE(make()) << why;
      ASSERT_EQ(notices().size(), said) << why;
      EXPECT_THAT(notices().join(u'\n').toStdString(), HasSubstr(said ? why : ""));
      session.notices().withdraw("backups");
    }
    EXPECT_EQ(files(backupFolderOf(session)).size(), 10)
        << why << ": no half is left, and no old one is gone";
  };
  const auto make = [&] { return makeBackup(session, BackupReason::Daily); };
  failsFor("disk I/O error", [&] {
    const FileSizeLimit full(8192);
    return make();
  });
  addCustomer("More");
  int syncs = 0;
  for (bool made = false; !made; ++syncs) {
    Disk disk;
    disk.syncs = syncs;
    ASSERT_EQ(files(backupFolderOf(session)).size(), 10) << syncs;
    made = bool(make());
  }
  EXPECT_GT(syncs, 3) << "the file and the folder that it stands in";
  const QString folder = backupFolderOf(session);
  QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner);
  failsFor("Permission denied", [&] {
    const OrdinaryUser user;
    return make();
  });
  QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  ASSERT_TRUE(make());
  EXPECT_EQ(files(folder).size(), 10) << "only now the oldest one goes";
}

TEST_F(Backups, KeepWhatADocumentWasBeforeItGotANewerLayout) {
  ObjectModel older = testModel();
  older.upgrades.clear();
  ASSERT_TRUE(OpenDocument::read(path("Old.pdr"), older, clock, calendar));
  const QByteArray before = contentsOf(path("Old.pdr"));
  ASSERT_TRUE(loadDocument(session, path("Old.pdr")));
  ASSERT_THAT(backups(), ElementsAre("2026-11-24 100000 upgrade"));
  EXPECT_EQ(contentsOf(backupsOf(session)[0].path), before);
  EXPECT_TRUE(readBackup(session, backupsOf(session)[0].path)) << "in the newest layout";
  EXPECT_EQ(contentsOf(backupsOf(session)[0].path), before) << "and untouched";
}

TEST_F(Backups, InAFolderOfTheUsersLeaveEverythingElseThere) {
  defaults.setText(preferences::kBackupFolder, places.path("Stick"));
  addCustomer("Bolt");
  EXPECT_THAT(backups(), IsEmpty());
  EXPECT_FALSE(QFile::exists(places.path("Stick"))) << "nothing is made where a disk was taken out";
  EXPECT_THAT(notices().join(u'\n').toStdString(), HasSubstr("Stick"));
  QDir().mkpath(places.path("Stick"));
  ASSERT_TRUE(makeBackup(session, BackupReason::Daily));
  EXPECT_THAT(notices(), IsEmpty()) << "what was said is over";
  const QString folder = backupFolderOf(session) + u'/';
  const QStringList others{"2020-01-01 100000 mine.pdrbackup", "2020-01-01 1000 daily.pdrbackup",
                           "2020-13-01 100000 daily.pdrbackup", "2020-01-01 100000 daily.pdr", "notes.txt"};
  for (const QString& one : others) ASSERT_TRUE(writeFile(folder + one, "mine"));
  QFile::link(places.path("Documents/Work.pdr"), folder + "2020-01-02 100000 daily.pdrbackup");
  QDir().mkpath(folder + "2020-01-03 100000 daily.pdrbackup");
  for (int day = 0; day < 3; ++day) {
    clock.advance(kDay);
    for (int change = 0; change < 6; ++change) {
      addCustomer("More");
      ASSERT_TRUE(makeBackup(session, BackupReason::UpdatingLists));
    }
  }
  EXPECT_EQ(backups().size(), 12) << "ten, and one each of the two days before them";
  for (const QString& one : others) EXPECT_EQ(contentsOf(folder + one), "mine") << one.toStdString();
  EXPECT_TRUE(QFileInfo(folder + "2020-01-02 100000 daily.pdrbackup").isSymLink());
  EXPECT_TRUE(QFileInfo(folder + "2020-01-03 100000 daily.pdrbackup").isDir());
}

/// How a user works for two years, and what is left of it.
struct TwoYears {
  const char* name;
  int perDay;
  int everyDays;
  double clockJumps;  ///< in the middle, in days
  std::size_t kept;   ///< in the end
};
void PrintTo(const TwoYears& years, std::ostream* out) { *out << years.name; }
class Thinning : public testing::TestWithParam<TwoYears> {};

TEST_P(Thinning, KeepsTheLastTenADayForThirtyDaysAndAMonthForGood) {
  const Calendar calendar{QTimeZone("Europe/Berlin")};
  ManualClock clock;
  std::vector<BackupFile> files;
  int count = 0;
  for (int day = 0; day < 730; day += GetParam().everyDays) {
    clock.advance(GetParam().everyDays * kDay);
    if (day / GetParam().everyDays == 365 / GetParam().everyDays) clock.advance(GetParam().clockJumps * kDay);
    for (int one = 0; one < GetParam().perDay; ++one) {
      const Instant made = clock.now() + one * 600;
      const auto place = std::find_if(files.begin(), files.end(),
                                      [&](const BackupFile& other) { return other.madeAt < made; });
      files.insert(place, {.path = QString::number(++count), .madeAt = made});
      const QDate today = calendar.day(made);
      QMap<QDate, QString> lastOfDay;
      for (const BackupFile& file : files) {
        const QDate its = calendar.day(file.madeAt);
        if (its.daysTo(today) <= 30 && !lastOfDay.contains(its)) lastOfDay[its] = file.path;
      }
      const QString oldestMonth = calendar.day(files.back().madeAt).toString("yyyy-MM");
      for (const BackupFile& gone : superfluous(files, today, calendar)) {
        ASSERT_NE(gone.path, files.front().path) << "the last one";
        ASSERT_FALSE(lastOfDay.values().contains(gone.path)) << "the last of a day";
        std::erase_if(files, [&](const BackupFile& file) { return file.path == gone.path; });
      }
      ASSERT_GE(files.size(), std::min<std::size_t>(10, files.size()));
      ASSERT_EQ(calendar.day(files.back().madeAt).toString("yyyy-MM"), oldestMonth)
          << "a month keeps its one";
    }
  }
  EXPECT_EQ(files.size(), GetParam().kept);
}

INSTANTIATE_TEST_SUITE_P(Users, Thinning,
                         testing::Values(TwoYears{"TwiceADay", 2, 1, 0, 60}, TwoYears{"Often", 5, 1, 0, 63},
                                         TwoYears{"OnceAMonth", 1, 31, 0, 24},
                                         TwoYears{"ClockSetBackByAYear", 2, 1, -365, 50},
                                         TwoYears{"ClockSetForwardByAYear", 2, 1, 365, 61}),
                         RowName());

}  // namespace
}  // namespace pendra
