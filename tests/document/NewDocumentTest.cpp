#include "document/NewDocument.h"

#include "DocumentTest.h"

namespace pendra {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MakingADocument : public DocumentTest {
 protected:
  bool make(const QString& at) {
    return makeDocument(session, {.path = at, .employeeName = "Clerk", .companyFileName = "/B/Acme.cmp"});
  }
};

TEST_F(MakingADocument, LeavesTheOneBeforeAndTheEmptyDefaultGoes) {
  Launch(session).launch();
  const QString before = inFolder("Pendra File.xml");
  ASSERT_EQ(documentOfNobody(session), before);
  EXPECT_TRUE(make(inFolder("Acme-Clerk.pdr")));
  EXPECT_EQ(session.document()->path(), inFolder("Acme-Clerk.pdr"));
  EXPECT_EQ(session.settings()->identity()->employeeName(), "Clerk");
  EXPECT_EQ(session.settings()->identity()->companyFileName(), "/B/Acme.cmp");
  EXPECT_EQ(session.settings()->standalone(), false);
  EXPECT_FALSE(session.context()->hasChanges() || session.context()->undoStack().canUndo());
  EXPECT_EQ(documentOfNobody(session), "");
  EXPECT_THAT(files(documentFolder(places)), ElementsAre("Acme-Clerk.pdr"));
  EXPECT_EQ(defaults.texts(preferences::kRecentDocuments), QStringList{inFolder("Acme-Clerk.pdr")});
  EXPECT_TRUE(QFileInfo(inFolder("Acme-Clerk.pdr")).permissions() & QFile::ReadGroup);
  write(inFolder("Pendra File.pdr"));
  for (const QString& kept : {inFolder("Pendra File.pdr"), path("Empty.pdr")}) {
    ASSERT_TRUE(loadDocument(session, kept));
    EXPECT_TRUE(make(path("Next.pdr")));
    EXPECT_TRUE(QFile::exists(kept)) << "somebody's default stays, and so does what the user named";
  }
}

TEST_F(MakingADocument, MayReplaceADocumentAlsoTheOneThatIsOpen) {
  write(path("Old.pdr"), "Old");
  ASSERT_TRUE(writeFile(path("Old.pdr-journal"), "stale"));
  openWithRunningTimer();
  EXPECT_TRUE(make(path("Old.pdr")));
  EXPECT_FALSE(QFile::exists(path("Old.pdr-journal")));
  EXPECT_EQ(stored(path("Work.pdr"))->all<TimeEntry>()[0]->duration(), 60)
      << "what was left is stopped and stored";
  addCustomer(QStringLiteral("Left over"));
  EXPECT_TRUE(make(path("Old.pdr")));
  EXPECT_THAT(session.context()->all<Customer>().copy(), IsEmpty());
  addCustomer(QStringLiteral("New"));
  EXPECT_TRUE(saveContext(session));
}

TEST_F(MakingADocument, ThatIsRefusedLeavesEverythingAsItWas) {
  Activity& activity = openWithRunningTimer();
  ASSERT_TRUE(writeFile(path("letter.pdr"), "Dear all"));
  QDir().mkpath(path("folder.pdr"));
  write(path("held.pdr"));
  const auto held = stored(path("held.pdr"));
  const QStringList before = QDir(places.documents).entryList(QDir::AllEntries | QDir::Hidden);
  for (const auto& [name, reason] : {std::pair("letter.pdr", "it is not a document of Pendra"),
                                     std::pair("folder.pdr", "it is not a file"),
                                     std::pair("held.pdr", "another program has this document open"),
                                     std::pair("no/new.pdr", "No such file or directory")}) {
    EXPECT_FALSE(make(path(name)));
    EXPECT_EQ(notices(), QStringList{QString("“%1” could not be created: %2.")
                                         .arg(QFileInfo(path(name)).fileName(), QString(reason))});
  }
  EXPECT_TRUE(activity.isRunning());
  EXPECT_EQ(session.document()->path(), path("Work.pdr"));
  EXPECT_EQ(contentsOf(path("letter.pdr")), "Dear all") << "what could not be read is never emptied";
  EXPECT_EQ(QDir(places.documents).entryList(QDir::AllEntries | QDir::Hidden), before);
  EXPECT_TRUE(make(path("free.pdr")));
  EXPECT_THAT(notices(), IsEmpty());
}

TEST_F(MakingADocument, ProposesTheFirstFreeNameButForTheDocumentOfNobody) {
  EXPECT_EQ(freeNameIn(places.documents, "Pendra File.pdr", {}), "Pendra File.pdr");
  ASSERT_TRUE(writeFile(path("Pendra File.pdr"), "damaged"));
  EXPECT_EQ(freeNameIn(places.documents, "Pendra File.pdr", path("Other.pdr")), "Pendra File1.pdr");
  EXPECT_EQ(freeNameIn(places.documents, "Pendra File.pdr", path("Pendra File.pdr")), "Pendra File.pdr");
}

}  // namespace
}  // namespace pendra
