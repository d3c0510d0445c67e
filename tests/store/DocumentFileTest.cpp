#include <SQLiteCpp/SQLiteCpp.h>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <QtEndian>

#include "store/PersistentStore.h"
#include "support/ChildProcess.h"
#include "support/Disk.h"
#include "support/FileSizeLimit.h"
#include "support/Rows.h"
#include "support/TestDocument.h"

namespace pendra {
namespace {

using testing::HasSubstr;

class DocumentFile : public testing::Test, protected TestWorld {
 protected:
  /// A document with one customer.
  void makeDocument() { makeDocument(path()); }
  void makeDocument(const QString& at) {
    const auto context = opened(at);
    context->insert<Customer>().setName(QStringLiteral("Acme"));
    ASSERT_TRUE(context->save());
  }
  [[nodiscard]] QStringList files(const QString& folder = {}) const {
    return QDir(path(folder)).entryList(QDir::Files | QDir::Hidden);
  }
  /// Why a save could not write to the document's place; none when it did.
  static std::optional<Displaced> displacement(ObjectContext& context) {
    const auto saved = context.save();
    return saved ? std::nullopt : displaced(saved.error());
  }
  std::string failureOf(const Result<void>& result) {
    return result ? std::string() : result.error().text.toStdString();
  }
};

// ---- files that are no documents

struct Unreadable {
  const char* name;
  void (*make)(const QString& path);
  const char* reason;
};

void alter(const QString& path, const char* text) {
  SQLite::Database(path.toStdString(), SQLite::OPEN_READWRITE).exec(text);
}

class UnreadableFile : public DocumentFile, public testing::WithParamInterface<Unreadable> {};

TEST_P(UnreadableFile, IsAFailedReadAndIsNeverWrittenTo) {
  makeDocument();
  GetParam().make(path());
  const QByteArray before = contentsOf(path());
  const auto context = emptyContext();
  EXPECT_THAT(failureOf(context->open(path())), HasSubstr(GetParam().reason));
  EXPECT_FALSE(context->store());
  EXPECT_TRUE(context->all<Customer>().empty()) << "half a document is none";
  context->insert<Customer>();
  EXPECT_FALSE(context->save());
  EXPECT_FALSE(PersistentStore::check(path(), testModel()));
  EXPECT_EQ(contentsOf(path()), before);
  EXPECT_THAT(QDir(places.documents).entryList(QDir::Files).size(), testing::Le(1)) << "no file beside it";
}

INSTANTIATE_TEST_SUITE_P(
    Files, UnreadableFile,
    testing::Values(
        Unreadable{"AText", [](const QString& path) { writeFile(path, "<?xml version=\"1.0\"?><plist/>"); },
                   "not a document of Pendra"},
        Unreadable{"AnotherProgramsDatabase",
                   [](const QString& path) { alter(path, "PRAGMA application_id=7"); }, "another program"},
        Unreadable{"ANewerLayout", [](const QString& path) { alter(path, "PRAGMA user_version=99"); },
                   "newer version of Pendra"},
        Unreadable{"NoLayout", [](const QString& path) { alter(path, "PRAGMA user_version=0"); },
                   "layout is unknown"},
        Unreadable{"CutShort", [](const QString& path) { QFile::resize(path, 4096 * 3 + 100); }, "damaged"},
        Unreadable{"OnlyItsHead", [](const QString& path) { QFile::resize(path, 60); }, "not a document"},
        Unreadable{"OverwrittenInside",
                   [](const QString& path) {
                     QByteArray bytes = contentsOf(path);
                     writeFile(path, bytes.replace(4096, 8192, QByteArray(8192, 'x')));
                   },
                   "damaged"},
        Unreadable{"AFolder",
                   [](const QString& path) {
                     QFile::remove(path);
                     QDir().mkpath(path);
                   },
                   "not a file"}),
    RowName());

TEST_F(DocumentFile, WithoutItsTablesOrWithImpossibleRowsIsAFailedRead) {
  makeDocument();
  alter(path(), "INSERT INTO Activity(id, customer) VALUES (1, 77)");
  EXPECT_EQ(opened()->all<Activity>()[0]->customer(), nullptr) << "a link to no row is none";
  alter(path(), "INSERT INTO Customer(id) VALUES (-4)");
  auto context = emptyContext();
  EXPECT_THAT(failureOf(context->open(path())), HasSubstr("damaged"));
  EXPECT_TRUE(context->all<Customer>().empty());
  alter(path(), "DELETE FROM Customer; INSERT INTO Customer(id) VALUES (9223372036854775807)");
  EXPECT_THAT(failureOf(context->open(path())), HasSubstr("damaged")) << "nothing could be inserted any more";
  alter(path(), "DROP TABLE Customer");
  EXPECT_THAT(failureOf(context->open(path())), HasSubstr("lacks Customer.id"));
}

TEST_F(DocumentFile, MissingOrWithoutBytesIsANewDocumentAtOnce) {
  ASSERT_TRUE(writeFile(path(), {}));
  for (const QString& one : {path(), path("Missing.pdr")}) {
    ASSERT_TRUE(emptyContext()->open(one));
    EXPECT_TRUE(PersistentStore::check(one, testModel())) << "it stands on the disk before any save";
  }
  EXPECT_THAT(failureOf(emptyContext()->open(path("No/Such/Folder.pdr"))), HasSubstr("No such file"));
}

TEST_F(DocumentFile, IsHeldAgainstEveryoneElseWhereverAnyLockWorks) {
  makeDocument();
  const QByteArray before = contentsOf(path());
  for (const auto locks : {Disk::Locks::All, Disk::Locks::OnlyOfFilesToWrite, Disk::Locks::None}) {
    Disk disk;
    disk.locks = locks;
    const bool works = locks != Disk::Locks::None;
    ChildProcess other([this](const auto& report) {
      const auto context = emptyContext();
      report(context->open(path()) ? context->store()->isLocked() : -1);
      ::pause();
    });
    ASSERT_EQ(other.next(), works);
    EXPECT_EQ(failureOf(emptyContext()->open(path())), works ? "another program has this document open" : "");
    EXPECT_EQ(contentsOf(path()), before);
    other.kill();
    EXPECT_EQ(opened()->all<Customer>().size(), 1U) << "a lock goes with its process";
  }
  EXPECT_EQ(files(), QStringList("Work.pdr"));
  QFile file(path());
  ASSERT_TRUE(file.open(QIODevice::ReadOnly) && ::flock(file.handle(), LOCK_EX) == 0);
  EXPECT_FALSE(emptyContext()->open(path())) << "a program of before knows one lock only";
  Disk disk;
  disk.locksRefuseOthers = true;
  EXPECT_TRUE(opened()->store()->isLocked())
      << "by the file beside it alone, or the database could not write";
}

TEST_F(DocumentFile, RunsNothingThatItBrings) {
  makeDocument();
  alter(path(),
        "CREATE TRIGGER endless BEFORE UPDATE ON Customer BEGIN WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL "
        "SELECT x + 1 FROM n) SELECT count(*) FROM n; END;"
        "CREATE TRIGGER theft AFTER INSERT ON Customer BEGIN DELETE FROM Customer WHERE id = 1; END");
  auto context = opened();
  context->all<Customer>()[0]->setName(QStringLiteral("Acme Ltd"));
  context->insert<Customer>();
  ASSERT_TRUE(context->save());
  context.reset();
  EXPECT_EQ(opened()->all<Customer>().size(), 2U);
}

/// A page of a table whose many branches are one and the same page.
QByteArray knot(quint32 page) {
  constexpr qsizetype kPage = 4096;
  constexpr quint16 kBranches = 600;
  constexpr quint16 kBranchAt = kPage - 5;
  QByteArray bytes(kPage, '\0');
  bytes[0] = 5;
  qToBigEndian<quint16>(kBranches, bytes.data() + 3);
  qToBigEndian<quint16>(kBranchAt, bytes.data() + 5);
  qToBigEndian<quint32>(page, bytes.data() + 8);
  for (int i = 0; i < kBranches; ++i) qToBigEndian<quint16>(kBranchAt, bytes.data() + 12 + 2 * i);
  qToBigEndian<quint32>(page, bytes.data() + kBranchAt);
  return bytes;
}

TEST_F(DocumentFile, IsNotReadForEver) {
  {
    const auto context = opened();
    context->insert<TimeEntry>();
    ASSERT_TRUE(context->save());
  }
  EXPECT_TRUE(PersistentStore::tally(path(), TimeEntry::descriptor(), "duration"));
  const int root = SQLite::Database(path().toStdString())
                       .execAndGet("SELECT rootpage FROM sqlite_schema WHERE name = 'TimePeriod'")
                       .getInt();
  QByteArray bytes = contentsOf(path());
  const auto pages = static_cast<quint32>(bytes.size() / 4096);
  const qsizetype at = (root - 1) * qsizetype{4096};
  bytes += bytes.mid(at, 4096) + knot(pages + 1) + knot(pages + 2);
  bytes.replace(at, 4096, knot(pages + 3));
  qToBigEndian<quint32>(pages + 3, bytes.data() + 28);
  ASSERT_TRUE(writeFile(path(), bytes));
  const auto tally = PersistentStore::tally(path(), TimeEntry::descriptor(), "duration");
  ASSERT_FALSE(tally);
  EXPECT_THAT(tally.error().text.toStdString(), HasSubstr("does not come to an end"));
}

// ---- reading ahead

bool replaceFile(const QString& path, const QByteArray& bytes) {
  const QString beside = path + ".new";
  return writeFile(beside, bytes) && ::rename(qPrintable(beside), qPrintable(path)) == 0;
}

TEST_F(DocumentFile, ThatWasReadAheadIsReadAgainUnlessItIsStillThat) {
  makeDocument();
  const QByteArray copy = contentsOf(path());
  const std::vector<std::pair<bool, std::function<void()>>> meanwhile{
      {true, [] {}},
      {false, [&] { replaceFile(path(), copy); }},
      {false, [&] { alter(path(), "INSERT INTO Customer(name) VALUES ('Zed')"); }},
      {false, [&] {
         const timespec longAgo[2]{{1, 0}, {1, 0}};  // the clock of files may stand for some milliseconds
         ::utimensat(AT_FDCWD, qPrintable(path()), longAgo, 0);
       }}};
  for (const auto& [isStill, happens] : meanwhile) {
    const auto context = emptyContext();
    ASSERT_TRUE(context->readAhead(path(), {}));
    const Ref<Customer> ahead(context->all<Customer>()[0]);
    EXPECT_FALSE(context->save()) << "it has no file yet";
    happens();
    ASSERT_TRUE(context->open(path()));
    EXPECT_EQ(static_cast<bool>(ahead), isStill);
    EXPECT_FALSE(emptyContext()->open(path())) << "it is held as any other";
    const auto rows = static_cast<std::size_t>(
        SQLite::Database(path().toStdString()).execAndGet("SELECT count(*) FROM Customer").getInt());
    EXPECT_EQ(context->all<Customer>().size(), rows);
    context->insert<Customer>();
    ASSERT_TRUE(context->save());
  }
  EXPECT_EQ(opened()->all<Customer>().size(), 5U);
}

TEST_F(DocumentFile, IsNotReadAheadWhereOpeningHasMoreToDo) {
  makeDocument();
  makeDocument(path("Older.pdr"));
  alter(path("Older.pdr"), "PRAGMA user_version=1");
  makeDocument(path("Held.pdr"));
  const auto held = opened(path("Held.pdr"));
  std::stop_source stopped;
  stopped.request_stop();
  writeFile(path("Large.pdr"), contentsOf(path()));
  alter(path("Large.pdr"),
        "INSERT INTO Customer(name) WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 "
        "FROM n WHERE i < 50000) SELECT i FROM n");
  const QStringList before = files();
  for (const char* name : {"Older.pdr", "Held.pdr", "Missing.pdr", "Large.pdr"}) {
    const auto context = emptyContext();
    EXPECT_FALSE(context->readAhead(path(name), stopped.get_token())) << name;
    EXPECT_TRUE(context->all<Customer>().empty()) << name;
  }
  EXPECT_EQ(files(), before);
}

// ---- what happens to the file while it is open

TEST_F(DocumentFile, ThatWasDeletedIsMadeAnewWithEverythingWhereItLay) {
  QDir().mkpath(path("real"));
  makeDocument(path("real/Work.pdr"));
  ASSERT_EQ(::chmod(path("real/Work.pdr").toUtf8().constData(), 0640), 0);
  ASSERT_TRUE(QFile::link(path("real/Work.pdr"), path()));
  auto context = opened();
  context->insertTemporary<Customer>().setName(QStringLiteral("temporary"));
  context->insert<Customer>().setName(QStringLiteral("Zed"));
  Disk disk;
  disk.isAnother = true;
  EXPECT_EQ(displacement(*context), Displaced::Replaced) << "its number alone does not make it the file";
  QFile::remove(path("real/Work.pdr"));
  EXPECT_EQ(displacement(*context), Displaced::OutOfReach) << "not on a disk that took the place of its own";
  QDir().rename(path("real"), path("away"));
  EXPECT_EQ(displacement(*context), Displaced::OutOfReach);
  QDir().rename(path("away"), path("real"));
  EXPECT_FALSE(QFile::exists(path("real/Work.pdr"))) << "and nothing was written";
  disk.isAnother = false;
  {
    const FileSizeLimit limit(8192);
    EXPECT_FALSE(context->save());
  }
  EXPECT_FALSE(QFile::exists(path("real/Work.pdr"))) << "half a file is none";
  disk.synced.clear();
  EXPECT_EQ(displacement(*context), std::nullopt);
  EXPECT_EQ(context->store()->story().madeAnew, 1);
  const qsizetype nextSave = disk.synced.indexOf(path("real/Work.pdr-journal"));
  EXPECT_EQ(disk.synced.value(nextSave - 1), path("real"))
      << "its name is on the disk before anything follows";
  struct stat made {};
  ASSERT_EQ(::stat(path("real/Work.pdr").toUtf8().constData(), &made), 0);
  EXPECT_EQ(made.st_mode & 07777, 0640U);
  EXPECT_TRUE(QFileInfo(path()).isSymLink());
  EXPECT_FALSE(emptyContext()->open(path())) << "the new file is held as the old one was";
  context->insert<Job>();
  ASSERT_TRUE(context->save());
  context.reset();
  EXPECT_EQ(opened()->all<Customer>().size(), 2U);
  EXPECT_EQ(opened()->all<Job>().size(), 1U);
  EXPECT_EQ(files("real"), QStringList("Work.pdr")) << "nor are there drafts and locks";
}

/// What another program does to the file, having a copy of it from before.
struct Interference {
  const char* name;
  void (*interfere)(const QString& path, const QByteArray& copy);
  bool goesOn;
};

class Interfered : public DocumentFile, public testing::WithParamInterface<Interference> {};

TEST_P(Interfered, IsGoneOnWithOrNotWrittenToUntilTheUserHasDecided) {
  for (const bool over : {true, false}) {
    makeDocument();
    const QByteArray copy = contentsOf(path());
    auto context = opened();
    context->insert<Customer>();
    ASSERT_TRUE(context->save());
    GetParam().interfere(path(), copy);
    const QByteArray theirs = contentsOf(path());
    EXPECT_EQ(displacement(*context) == std::nullopt, GetParam().goesOn) << "seen without a change, too";
    context->insert<Customer>();
    if (!GetParam().goesOn) {
      EXPECT_EQ(displacement(*context), Displaced::Replaced);
      EXPECT_EQ(displacement(*context), Displaced::Replaced) << "still";
      EXPECT_EQ(contentsOf(path()), theirs);
      ASSERT_TRUE(context->store()->moveTo(*context, over ? path() : path("Work1.pdr"),
                                           over ? Existing::Replace : Existing::Keep));
      EXPECT_EQ(contentsOf(path()) == theirs, !over);
    }
    context->insert<Job>();
    EXPECT_EQ(displacement(*context), std::nullopt);
    const QString at = context->store()->path();
    EXPECT_EQ(at, path(over || GetParam().goesOn ? "Work.pdr" : "Work1.pdr"));
    context.reset();
    EXPECT_EQ(opened(at)->all<Customer>().size(), 3U);
    EXPECT_EQ(opened(at)->all<Job>().size(), 1U);
    QFile::remove(at);
    QFile::remove(path());
  }
}

INSTANTIATE_TEST_SUITE_P(
    Files, Interfered,
    testing::Values(
        Interference{"PutsACopyInItsPlace",
                     [](const QString& path, const QByteArray&) { replaceFile(path, contentsOf(path)); },
                     true},
        Interference{"WritesACopyIntoIt",
                     [](const QString& path, const QByteArray&) { writeFile(path, contentsOf(path)); }, true},
        Interference{"PutsAnOlderCopyInItsPlace",
                     [](const QString& path, const QByteArray& copy) { replaceFile(path, copy); }, false},
        Interference{"WritesAnOlderCopyIntoIt",
                     [](const QString& path, const QByteArray& copy) { writeFile(path, copy); }, false},
        Interference{"ChangesARow",
                     [](const QString& path, const QByteArray&) { alter(path, "DELETE FROM Customer"); },
                     false},
        Interference{"CutsItShort", [](const QString& path, const QByteArray&) { QFile::resize(path, 5000); },
                     false},
        Interference{"EmptiesIt", [](const QString& path, const QByteArray&) { writeFile(path, {}); }, false},
        Interference{"PutsALetterInItsPlace",
                     [](const QString& path, const QByteArray&) { replaceFile(path, "Dear all"); }, false}),
    RowName());

TEST_F(DocumentFile, IsSeenToByASaveWithoutChanges) {
  makeDocument();
  const auto context = opened();
  const QDateTime longAgo(QDate(2020, 1, 1), QTime(0, 0));
  QFile file(path());
  ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.setFileTime(longAgo, QFile::FileModificationTime));
  file.close();
  ASSERT_TRUE(context->save());
  EXPECT_GT(QFileInfo(path()).lastModified(), longAgo) << "its time says that it holds everything";
}

}  // namespace
}  // namespace pendra
