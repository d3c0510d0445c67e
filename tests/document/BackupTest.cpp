#include "document/Backup.h"

#include <gmock/gmock.h>

#include "document/DocumentLoading.h"
#include "document/Saving.h"
#include "platform/Preferences.h"
#include "support/FileSizeLimit.h"
#include "support/OrdinaryUser.h"
#include "support/Rows.h"
#include "support/TestSession.h"

namespace pendra {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A session with "Work.pdr" open in its window.
class Backup : public testing::Test, protected TestSession {
 protected:
  Backup() {
    loadDocument(session, path("Work.pdr"));
    windows.load(Interface::TimerWindow);
    addCustomer(QStringLiteral("Acme"));
    saveAction(session);
    windows.forget();
  }
  [[nodiscard]] QString path(const char* name) const {
    return places.documents + u'/' + QString::fromUtf8(name);
  }
  void backUpTo(const char* name) {
    panels.willChoose(path(name));
    backUpDocument(session);
  }
  std::string noticeText() {
    const auto& standing = session.notices().standing();
    return standing.empty() ? std::string() : standing.back().text.toStdString();
  }
  QStringList files() const { return QDir(places.documents).entryList(QDir::Files | QDir::Hidden); }
  std::size_t customersIn(const QString& at) {
    ObjectContext context(testModel(), clock, calendar);
    EXPECT_TRUE(context.open(at));
    return context.all<Customer>().size();
  }
};

TEST_F(Backup, IsACopyOfWhatWasJustSavedAndTheDocumentGoesOn) {
  addCustomer(QStringLiteral("Not yet saved"));
  backUpTo("Noon.pdrbackup");
  EXPECT_EQ(panels.savePanels()[0].proposedName, "Work 11-24-2026.pdrbackup");
  EXPECT_EQ(contentsOf(path("Noon.pdrbackup")), contentsOf(path("Work.pdr")));
  EXPECT_EQ(customersIn(path("Noon.pdrbackup")), 2U);
  EXPECT_THAT(windows.loaded(), ElementsAre(Interface::TimerWindow)) << "the same document, opened again";
  EXPECT_EQ(session.document()->path(), path("Work.pdr"));
  EXPECT_EQ(lastDocumentPath(session), path("Work.pdr"));
  addCustomer(QStringLiteral("Afternoon"));
  ASSERT_TRUE(saveContext(session));
  EXPECT_EQ(customersIn(path("Noon.pdrbackup")), 2U) << "nothing writes to a backup";
  EXPECT_THAT(alerts.messages(), IsEmpty());
  EXPECT_EQ(noticeText(), "");
}

struct Name {
  const char* name;
  const char* chosen;
  const char* made;
};

class BackupName : public Backup, public testing::WithParamInterface<Name> {};

TEST_P(BackupName, GetsTheBackupsExtension) {
  backUpTo(GetParam().chosen);
  EXPECT_TRUE(QFile::exists(path(GetParam().made))) << files().join(u',').toStdString();
}

INSTANTIATE_TEST_SUITE_P(Chosen, BackupName,
                         testing::Values(Name{"Backup", "a.pdrbackup", "a.pdrbackup"},
                                         Name{"WithoutExtension", "a", "a.pdrbackup"},
                                         Name{"Document", "a.pdr", "a.pdrbackup"},
                                         Name{"LastExtensionOnly", "Work 1.2", "Work 1.pdrbackup"},
                                         Name{"HiddenFile", ".a", ".a.pdrbackup"}),
                         RowName());

TEST_F(Backup, LeavesAFileThatHasTheNameAlone) {
  ASSERT_TRUE(writeFile(path("Noon.pdrbackup"), "older"));
  backUpTo("Noon.pdrbackup");
  EXPECT_EQ(contentsOf(path("Noon.pdrbackup")), "older");
  EXPECT_THAT(noticeText(),
              HasSubstr(path("Noon.pdrbackup").toStdString() + "” exists already and was left alone"));
  EXPECT_EQ(windows.loads(Interface::TimerWindow), 1) << "the document is reopened all the same";
  backUpTo("Evening.pdrbackup");
  EXPECT_EQ(noticeText(), "") << "what was said is over";
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
  panels.whileOpen([&] { activity.startEntry(); });
  backUpTo("Noon.pdrbackup");
  EXPECT_EQ(session.context()->all<TimeEntry>()[0]->duration(), 60);
  EXPECT_EQ(session.context()->all<TimeEntry>()[1]->duration(), 0) << "not lost: stopped, not halted";
}

TEST_F(Backup, IsOfTheDocumentForWhichThePanelWasOpened) {
  panels.whileOpen([&] { loadDocument(session, path("Other.pdr")); });
  backUpTo("Noon.pdrbackup");
  EXPECT_FALSE(files().contains(QStringLiteral("Noon.pdrbackup")));
  EXPECT_THAT(noticeText(), HasSubstr("the document that it was meant for is closed"));
  EXPECT_EQ(session.document()->path(), path("Other.pdr"));
}

TEST_F(Backup, ThatIsCancelledChangesNothing) {
  panels.willCancel();
  backUpDocument(session);
  EXPECT_THAT(files(), ElementsAre("Work.pdr"));
  EXPECT_THAT(windows.loaded(), IsEmpty());
}

TEST_F(Backup, OnADiskThatFillsUpAtAnyWriteLeavesNoHalf) {
  for (rlim_t room = 0; room < 32'768; room += 2048) {
    {
      const FileSizeLimit limit(room);
      backUpTo("Noon.pdrbackup");
    }
    EXPECT_THAT(noticeText(), HasSubstr("File too large")) << room;
    ASSERT_THAT(files(), ElementsAre("Work.pdr")) << room;
    ASSERT_EQ(session.context()->all<Customer>().size(), 1U);
  }
  backUpTo("Noon.pdrbackup");
  EXPECT_EQ(customersIn(path("Noon.pdrbackup")), 1U);
}

struct Replacement {
  const char* name;
  bool (*put)(const QString& path);
  const char* reason;
};

class BackupOfAReplacedFile : public Backup, public testing::WithParamInterface<Replacement> {};

TEST_P(BackupOfAReplacedFile, KeepsOpenWhatCannotBeSaved) {
  QFile::remove(path("Work.pdr"));
  ASSERT_TRUE(GetParam().put(path("Work.pdr")));
  addCustomer(QStringLiteral("Only in memory"));
  backUpTo("Noon.pdrbackup");
  EXPECT_THAT(noticeText(), HasSubstr(GetParam().reason));
  EXPECT_EQ(session.context()->all<Customer>().size(), 2U);
  EXPECT_FALSE(files().contains(QStringLiteral("Noon.pdrbackup")));
  EXPECT_THAT(contentsOf(path("Work.pdr")), testing::AnyOf("", "somebody else's"));
  EXPECT_THAT(windows.loaded(), IsEmpty()) << "the window stays open";
}

INSTANTIATE_TEST_SUITE_P(
    By, BackupOfAReplacedFile,
    testing::Values(Replacement{"File", [](const QString& at) { return writeFile(at, "somebody else's"); },
                                "another file has taken its place"},
                    Replacement{"Folder", [](const QString& at) { return QDir().mkpath(at); },
                                "another file has taken its place"}),
    RowName());

TEST_F(Backup, OfADocumentWhoseFileVanishedHoldsEverything) {
  QFile::remove(path("Work.pdr"));
  addCustomer(QStringLiteral("Zed"));
  backUpTo("Noon.pdrbackup");
  EXPECT_EQ(customersIn(path("Noon.pdrbackup")), 2U);
  EXPECT_EQ(session.context()->all<Customer>().size(), 2U);
}

struct Place {
  const char* name;
  const char* target;
  const char* notice;
};

class BackupTo : public Backup, public testing::WithParamInterface<Place> {};

TEST_P(BackupTo, APlaceThatTakesNoneSaysWhereAndWhy) {
  QDir().mkpath(path("folder.pdrbackup"));
  QDir().mkpath(path("locked"));
  QFile::setPermissions(path("locked"), QFile::ReadOwner | QFile::ExeOwner);
  const OrdinaryUser user;
  backUpTo(GetParam().target);
  EXPECT_THAT(noticeText(), HasSubstr(GetParam().notice));
  EXPECT_THAT(files(), ElementsAre("Work.pdr"));
  EXPECT_EQ(session.context()->all<Customer>().size(), 1U) << "the document is open again";
}

INSTANTIATE_TEST_SUITE_P(Targets, BackupTo,
                         testing::Values(Place{"NoSuchFolder", "No/Such/Noon.pdrbackup",
                                               "No/Such/Noon.pdrbackup”: No such file or directory"},
                                         Place{"ReadOnlyFolder", "locked/Noon.pdrbackup",
                                               "locked/Noon.pdrbackup”: Permission denied"},
                                         Place{"FolderOfThatName", "folder.pdrbackup",
                                               "folder.pdrbackup” exists already and was left alone"}),
                         RowName());

// ---- restoring

class Restore : public Backup {
 protected:
  Restore() { backUpTo("Work 01-02-2026.pdrbackup"); }
  [[nodiscard]] QString backup() const { return path("Work 01-02-2026.pdrbackup"); }
};

TEST_F(Restore, WarnsNumbersAsksAndOpensTheCopy) {
  ASSERT_TRUE(writeFile(path("Work 01-02-2026.pdr"), {}) && writeFile(path("Work 01-02-20261.pdr"), {}));
  const QByteArray before = contentsOf(backup());
  alerts.willAnswer({"Continue", "Continue"});
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
  addCustomer(QStringLiteral("Zed"));
  ASSERT_TRUE(saveContext(session));
  EXPECT_EQ(contentsOf(backup()), before);
}

TEST_F(Restore, OfABackupThatMayNotBeWrittenToMakesADocumentThatMay) {
  QFile::setPermissions(backup(), QFile::ReadOwner | QFile::ReadGroup);
  alerts.willAnswer({"Continue"});
  panels.willChoose(path("Restored.pdr"));
  loadDocument(session, backup());
  EXPECT_TRUE(QFileInfo(path("Restored.pdr")).permissions() & QFile::WriteOwner);
  EXPECT_EQ(session.ports().defaults.texts(preferences::kRecentDocuments).mid(0, 2),
            QStringList({path("Restored.pdr"), backup()}));
}

TEST_F(Restore, DeclinedOrCancelledMakesNothing) {
  const QStringList before = files();
  alerts.willAnswer({"Cancel"});
  EXPECT_FALSE(checkForBackupFile(session, backup()));
  EXPECT_TRUE(checkForBackupFile(session, path("Work.pdr")));
  panels.willCancel();
  EXPECT_EQ(restoreBackup(session, backup()), std::nullopt);
  EXPECT_EQ(files(), before);
}

TEST_F(Restore, ReplacesTheChosenFileOnlyByAWholeCopy) {
  ASSERT_TRUE(writeFile(path("Old.pdr"), "precious") && writeFile(path("Old.pdr-journal"), "stale"));
  for (rlim_t room = 0; room < 32'768; room += 2048) {
    const FileSizeLimit limit(room);
    panels.willChoose(path("Old.pdr"));
    ASSERT_EQ(restoreBackup(session, backup()), std::nullopt);
    ASSERT_EQ(contentsOf(path("Old.pdr")), "precious") << room;
  }
  EXPECT_THAT(noticeText(), HasSubstr(path("Old.pdr").toStdString() + "”: File too large"));
  panels.willChoose(path("Old.pdr"));
  EXPECT_EQ(restoreBackup(session, backup()), path("Old.pdr"));
  EXPECT_EQ(contentsOf(path("Old.pdr")), contentsOf(backup()));
  EXPECT_FALSE(QFile::exists(path("Old.pdr-journal")));
  EXPECT_EQ(noticeText(), "");
}

struct Failure {
  const char* name;
  const char* backup;
  const char* target;
  const char* reason;
};

class FailedRestore : public Restore, public testing::WithParamInterface<Failure> {};

TEST_P(FailedRestore, SaysWhyAndOpensNothing) {
  QDir().mkpath(path("folder.pdr"));
  QDir().mkpath(path("x.pdrbackup"));
  QFile::copy(backup(), path("x.pdrbackup/inside.pdrbackup"));
  ASSERT_TRUE(writeFile(path("letter.pdrbackup"), "Dear all") && writeFile(path("old.pdr"), "precious"));
  QFile::copy(backup(), path("secret.pdrbackup"));
  QFile::setPermissions(path("secret.pdrbackup"), QFile::WriteOwner);
  QDir().mkpath(path("locked"));
  QFile::setPermissions(path("locked"), QFile::ReadOwner | QFile::ExeOwner);
  const OrdinaryUser user;
  alerts.forget();
  panels.willChoose(path(GetParam().target));
  EXPECT_EQ(restoreBackup(session, path(GetParam().backup)), std::nullopt);
  EXPECT_THAT(noticeText(), HasSubstr(GetParam().reason));
  EXPECT_THAT(alerts.messages(), IsEmpty());
  EXPECT_EQ(contentsOf(path("old.pdr")), "precious");
  EXPECT_FALSE(QFile::exists(path("new.pdr")));
}

INSTANTIATE_TEST_SUITE_P(
    Reasons, FailedRestore,
    testing::Values(Failure{"NoSuchBackup", "gone.pdrbackup", "old.pdr", "No such file or directory"},
                    Failure{"FolderWithTheSuffix", "x.pdrbackup/inside.pdrbackup", "old.pdr", "No such file"},
                    Failure{"NotADocument", "letter.pdrbackup", "old.pdr", "not a document of Pendra"},
                    Failure{"FolderInItsPlace", "Work 01-02-2026.pdrbackup", "folder.pdr", "Is a directory"},
                    Failure{"UnreadableBackup", "secret.pdrbackup", "old.pdr", "Permission denied"},
                    Failure{"ReadOnlyFolder", "Work 01-02-2026.pdrbackup", "locked/new.pdr",
                            "Permission denied"},
                    Failure{"NoSuchFolder", "Work 01-02-2026.pdrbackup", "no/new.pdr", "No such file"}),
    RowName());

}  // namespace
}  // namespace pendra
