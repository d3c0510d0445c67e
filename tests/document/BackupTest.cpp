#include "document/Backup.h"

#include "DocumentTest.h"
#include "support/FileSizeLimit.h"
#include "support/OrdinaryUser.h"

namespace pendra {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// "Work.pdr" open in its window.
class Backup : public DocumentTest {
 protected:
  Backup() {
    write(path("Work.pdr"));
    open("Work.pdr");
  }
  void backUpTo(const QString& at) {
    panels.willChoose(at);
    backUpDocument(session);
  }
  void backUpTo(const char* name) { backUpTo(path(name)); }
  [[nodiscard]] std::string notice() { return notices().join(u'\n').toStdString(); }
  [[nodiscard]] std::size_t customersIn(const char* name) const {
    return stored(path(name))->all<Customer>().size();
  }
};

TEST_F(Backup, IsACopyOfWhatWasJustSavedAndTheDocumentGoesOn) {
  const OpenDocument* document = session.document();
  addCustomer(QStringLiteral("Not yet saved"));
  backUpTo("Noon.pdrbackup");
  EXPECT_EQ(panels.savePanels()[0].proposedName, "Work 11-24-2026.pdrbackup");
  EXPECT_EQ(contentsOf(path("Noon.pdrbackup")), contentsOf(path("Work.pdr")));
  EXPECT_EQ(session.document(), document) << "document, windows and steps go on";
  EXPECT_THAT(windows.calls(), IsEmpty());
  addCustomer(QStringLiteral("Afternoon"));
  ASSERT_TRUE(saveContext(session));
  EXPECT_EQ(customersIn("Noon.pdrbackup"), 2U) << "nothing writes to a backup";
  QFile::remove(path("Work.pdr"));
  backUpTo("Vanished.pdrbackup");
  EXPECT_EQ(customersIn("Vanished.pdrbackup"), 3U) << "also where the document's file is gone";
  EXPECT_THAT(notice(), HasSubstr("Written to “" + path("Vanished.pdrbackup").toStdString() + "”."));
  session.notices().standing().back().actions[0].run();
  EXPECT_THAT(workspace.revealed(), ElementsAre(path("Vanished.pdrbackup")));
  for (const auto& [chosen, made] :
       {std::pair("a", "a.pdrbackup"), std::pair("b.pdr", "b.pdrbackup"),
        std::pair("Work 1.2", "Work 1.pdrbackup"), std::pair(".c", ".c.pdrbackup")}) {
    backUpTo(chosen);
    EXPECT_TRUE(QFile::exists(path(made))) << made;
  }
}

TEST_F(Backup, StopsTimersFirstOrDoesNothing) {
  auto& activity = addActivity(nullptr, nullptr);
  activity.startEntry();
  clock.advance(60);
  alerts.willAnswer({"Cancel"});
  backUpDocument(session);
  EXPECT_THAT(panels.savePanels(), IsEmpty());
  EXPECT_TRUE(activity.isRunning());
  alerts.willAnswer({"OK"});
  panels.willCancel();
  backUpDocument(session);
  EXPECT_THAT(files(places.documents), ElementsAre("Work.pdr"));
  panels.whileOpen([&] { activity.startEntry(); });
  backUpTo("Noon.pdrbackup");
  EXPECT_EQ(session.context()->all<TimeEntry>()[0]->duration(), 60);
  EXPECT_EQ(session.context()->all<TimeEntry>()[1]->duration(), 0) << "not lost: stopped, not halted";
  panels.whileOpen([&] { loadDocument(session, path("Other.pdr")); });
  backUpTo("Other.pdrbackup");
  EXPECT_FALSE(QFile::exists(path("Other.pdrbackup")));
  EXPECT_THAT(notice(), HasSubstr("the document that it was meant for is closed"));
}

TEST_F(Backup, ThatCannotBeMadeSaysWhereAndWhyAndLeavesNoHalf) {
  QDir().mkpath(path("folder.pdrbackup"));
  QDir().mkpath(path("locked"));
  QFile::setPermissions(path("locked"), QFile::ReadOwner | QFile::ExeOwner);
  {
    const OrdinaryUser user;
    for (const auto& [target, reason] :
         {std::pair("No/Noon.pdrbackup", "No/Noon.pdrbackup”: No such file or directory"),
          std::pair("locked/Noon.pdrbackup", "locked/Noon.pdrbackup”: Permission denied"),
          std::pair("folder.pdrbackup", "folder.pdrbackup” exists already and was left alone")}) {
      backUpTo(target);
      EXPECT_THAT(notice(), HasSubstr(reason));
    }
  }
  for (rlim_t room = 0; room < 32'768; room += 4096) {
    {
      const FileSizeLimit limit(room);
      backUpTo("Noon.pdrbackup");
    }
    ASSERT_THAT(notice(), HasSubstr("File too large")) << room;
    ASSERT_THAT(files(places.documents), ElementsAre("Work.pdr")) << room;
  }
  backUpTo("Noon.pdrbackup");
  EXPECT_THAT(notice(), Not(HasSubstr("No backup"))) << "what was said is over";
  QFile::remove(path("Work.pdr"));
  ASSERT_TRUE(writeFile(path("Work.pdr"), "somebody else's"));
  addCustomer(QStringLiteral("Only in memory"));
  backUpTo("Evening.pdrbackup");
  EXPECT_EQ(customersIn("Evening.pdrbackup"), 2U) << "from memory, where nothing can be saved";
  EXPECT_EQ(contentsOf(path("Work.pdr")), "somebody else's");
}

// ---- restoring

class Restore : public Backup {
 protected:
  Restore() { backUpTo(backup()); }
  [[nodiscard]] QString backup() const { return path("Work 01-02-2026.pdrbackup"); }
};

TEST_F(Restore, WarnsNumbersAsksAndOpensTheCopy) {
  ASSERT_TRUE(writeFile(path("Work 01-02-2026.pdr"), {}) && writeFile(path("Work 01-02-20261.pdr"), {}));
  QFile::setPermissions(backup(), QFile::ReadOwner | QFile::ReadGroup);
  const QByteArray before = contentsOf(backup());
  alerts.willAnswer({"Continue", "Cancel"});
  panels.willChoose(backup());
  openFile(session);
  EXPECT_EQ(session.document(), nullptr) << "the panel had closed the one before";
  alerts.willAnswer({"Continue"});
  panels.willChoose(backup());
  panels.willChoose(path("Restored.pdr"));
  openFile(session);
  const Alert& warning = alerts.shown()[1];
  EXPECT_EQ(warning.style, Alert::Style::Informational);
  EXPECT_EQ(warning.message, "Open Backup File?");
  EXPECT_EQ(warning.informative,
            "You are opening a backup file. If this is not a recent backup, you may not see  your latest "
            "activities or notes.");
  EXPECT_EQ(warning.buttons, QStringList({"Continue", "Cancel"}));
  const SavePanel& panel = panels.savePanels().back();
  EXPECT_EQ(panel.title, "Save the restored backup");
  EXPECT_EQ(panel.requiredType, "pdr");
  EXPECT_EQ(panel.proposedName, "Work 01-02-20262.pdr");
  EXPECT_EQ(alerts.last().message, "File restored");
  EXPECT_EQ(alerts.last().informative, "Your restored file is named Restored.pdr");
  EXPECT_EQ(lastDocumentPath(session), path("Restored.pdr"));
  EXPECT_EQ(Documents(session).recentDocuments().mid(0, 2), QStringList({path("Restored.pdr"), backup()}));
  addCustomer(QStringLiteral("Zed"));
  ASSERT_TRUE(saveContext(session)) << "a copy of what may not be written to may be";
  EXPECT_EQ(contentsOf(backup()), before);
}

TEST_F(Restore, ReplacesTheChosenFileOnlyByAWholeCopyWithoutItsJournal) {
  ASSERT_TRUE(writeFile(path("Old.pdr"), "precious") && writeFile(path("Old.pdr-journal"), "stale"));
  for (rlim_t room = 0; room < 32'768; room += 4096) {
    const FileSizeLimit limit(room);
    panels.willChoose(path("Old.pdr"));
    ASSERT_EQ(restoreBackup(session, backup()), std::nullopt);
    ASSERT_EQ(contentsOf(path("Old.pdr")), "precious") << room;
  }
  EXPECT_THAT(notice(), HasSubstr(path("Old.pdr").toStdString() + "”: File too large"));
  panels.willChoose(path("Old.pdr"));
  EXPECT_EQ(restoreBackup(session, backup()), path("Old.pdr"));
  EXPECT_EQ(contentsOf(path("Old.pdr")), contentsOf(backup()));
  EXPECT_FALSE(QFile::exists(path("Old.pdr-journal")));
  EXPECT_THAT(notice(), Not(HasSubstr("was not restored"))) << "what was said is over";
  ASSERT_TRUE(writeFile(path("Old.pdr"), "precious"));
  QDir().mkpath(path("Old.pdr-journal"));  // no file, so that it cannot be removed
  panels.willChoose(path("Old.pdr"));
  EXPECT_EQ(restoreBackup(session, backup()), std::nullopt);
  EXPECT_EQ(contentsOf(path("Old.pdr")), "precious") << "the journal would be read as the new document's";
  addCustomer(QStringLiteral("After the backup"));
  panels.willChoose(path("Work.pdr"));
  alerts.willAnswer({"Continue", "Continue"});
  EXPECT_TRUE(Documents(session).open(backup()));
  EXPECT_EQ(session.context()->all<Customer>().size(), 1U) << "over the open document, which is closed first";
  EXPECT_TRUE(saveContext(session));
}

TEST_F(Restore, ThatCannotBeMadeSaysWhyAndOpensNothing) {
  QDir().mkpath(path("folder.pdr"));
  ASSERT_TRUE(writeFile(path("letter.pdrbackup"), "Dear all") && writeFile(path("old.pdr"), "precious"));
  for (const auto& [source, target, reason] :
       {std::tuple("gone.pdrbackup", "old.pdr", "No such file or directory"),
        std::tuple("letter.pdrbackup", "old.pdr", "not a document of Pendra"),
        std::tuple("Work 01-02-2026.pdrbackup", "folder.pdr", "Is a directory"),
        std::tuple("Work 01-02-2026.pdrbackup", "no/new.pdr", "No such file")}) {
    panels.willChoose(path(target));
    EXPECT_EQ(restoreBackup(session, path(source)), std::nullopt);
    EXPECT_THAT(notice(), HasSubstr(reason));
  }
  EXPECT_EQ(contentsOf(path("old.pdr")), "precious");
  EXPECT_THAT(alerts.messages(), IsEmpty());
}

}  // namespace
}  // namespace pendra
