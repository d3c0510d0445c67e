#include <SQLiteCpp/SQLiteCpp.h>
#include <gmock/gmock.h>

#include "store/PersistentStore.h"
#include "support/ChildProcess.h"
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
  EXPECT_FALSE(context->hasStore());
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

TEST_F(DocumentFile, IsHeldAgainstEveryoneElse) {
  makeDocument();
  const QByteArray before = contentsOf(path());
  ChildProcess other([this](const auto& report) {
    const auto context = emptyContext();
    report(context->open(path()) ? 1 : 0);
    ::pause();
  });
  ASSERT_EQ(other.next(), 1);
  EXPECT_THAT(failureOf(emptyContext()->open(path())), HasSubstr("another program has this document open"));
  EXPECT_EQ(contentsOf(path()), before);
  other.kill();
  EXPECT_EQ(opened()->all<Customer>().size(), 1U);
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

// ---- what happens to the file while it is open

TEST_F(DocumentFile, ThatVanishedIsMadeAnewWithEverything) {
  makeDocument();
  auto context = opened();
  context->insertTemporary<Customer>().setName(QStringLiteral("temporary"));
  ASSERT_TRUE(QFile::rename(path(), path("Moved.pdr")));
  context->insert<Customer>().setName(QStringLiteral("Zed"));
  ASSERT_TRUE(context->save());
  EXPECT_FALSE(emptyContext()->open(path())) << "the new file is held as the old one was";
  context->insert<Job>();
  ASSERT_TRUE(context->save());
  context.reset();
  EXPECT_EQ(queries::customersNamed(*opened(), QStringLiteral("Acme")).size(), 1U);
  EXPECT_EQ(opened()->all<Customer>().size(), 2U);
  EXPECT_EQ(opened()->all<Job>().size(), 1U);
  EXPECT_EQ(opened(path("Moved.pdr"))->all<Customer>().size(), 1U) << "the moved one is left as it was";
  EXPECT_EQ(QDir(places.documents).entryList(QDir::Files).size(), 2);
}

TEST_F(DocumentFile, IsSeenToByASaveWithoutChanges) {
  makeDocument();
  const auto context = opened();
  const QDateTime longAgo(QDate(2020, 1, 1), QTime(0, 0));
  QFile file(path());
  ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.setFileTime(longAgo, QFile::FileModificationTime));
  file.close();
  ASSERT_TRUE(context->save());
  EXPECT_GT(QFileInfo(path()).lastModified(), longAgo) << "its time says that it holds everything";
  QFile::remove(path());
  ASSERT_TRUE(context->save());
  EXPECT_TRUE(QFile::exists(path()));
}

TEST_F(DocumentFile, WhosePlaceAnotherTookIsNotWrittenUntilThePlaceIsFree) {
  makeDocument();
  auto context = opened();
  ASSERT_TRUE(QFile::rename(path(), path("Moved.pdr")));
  ASSERT_TRUE(writeFile(path(), "somebody else's"));
  context->insert<Customer>();
  EXPECT_THAT(failureOf(context->save()), HasSubstr("another file has taken its place"));
  EXPECT_EQ(contentsOf(path()), "somebody else's");
  QFile::remove(path());
  QDir().mkpath(path());
  EXPECT_FALSE(context->save()) << "nor when it is a folder";
  QDir().rmdir(path());
  EXPECT_TRUE(context->save());
  context.reset();
  EXPECT_EQ(opened()->all<Customer>().size(), 2U);
}

TEST_F(DocumentFile, CanBeOpenedAgainOnceItsContextHasLetGo) {
  makeDocument();
  const auto first = opened();
  first->close();
  EXPECT_EQ(opened()->all<Customer>().size(), 1U);
  EXPECT_FALSE(first->save());
}

}  // namespace
}  // namespace pendra
