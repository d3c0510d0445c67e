#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <SQLiteCpp/Database.h>

#include <QThread>
#include <csignal>
#include <future>

#include "DocumentTest.h"
#include "document/ReadAhead.h"
#include "store/PersistentStore.h"
#include "support/FileSizeLimit.h"

namespace pendra {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Opening : public DocumentTest {};

TEST_F(Opening, WhatMayBeInVantorIsOutOfReachOfUndo) {
  write(path("Work.pdr"));
  open("Work.pdr");
  ObjectContext& context = *session.context();
  UndoStack& steps = context.undoStack();
  for (const auto mark : {&TimeEntry::setDateSubmitted, &TimeEntry::setSendingSince}) {
    Activity* activity = nullptr;
    TimeEntry* entry = nullptr;
    std::ignore = context.edit({}, [&] { activity = &addActivity(nullptr, nullptr); });
    std::ignore = context.edit({}, [&] { entry = &activity->addEntry(); });
    std::ignore = context.edit({}, [&] { entry->setDuration(60); });
    std::ignore = context.edit({}, {.undoable = false}, [&] { (entry->*mark)(clock.now()); });
    EXPECT_EQ(steps.undo().at(0).object, entry) << "its length stays,";
    EXPECT_EQ(steps.undo().at(0).object, entry) << "and itself,";
    EXPECT_EQ(steps.undo().at(0).object, activity) << "and its activity, which holds it";
    EXPECT_TRUE(entry->duration() == 60 && entry->activity() == activity);
    EXPECT_FALSE(steps.canUndo());
  }
}

TEST_F(Opening, AFirstLaunchMakesADocumentThatTheSecondRenames) {
  Launch(session).launch();
  EXPECT_TRUE(session.showIntroSheet);
  EXPECT_EQ(lastDocumentPath(session), inFolder("Pendra File.xml"));
  EXPECT_GT(QFileInfo(inFolder("Pendra File.xml")).size(), 0) << "it stands before any save";
  EXPECT_THAT(windows.made(), ElementsAre(WindowKind::Setup)) << "nobody's document has no timer window";
  closeDoc(session);  // setup was cancelled
  EXPECT_FALSE(windows.isOpen(WindowKind::Setup));
  Launch(session).launch();
  EXPECT_TRUE(session.showIntroSheet) << "whoever gave setup up has seen nothing";
  EXPECT_EQ(lastDocumentPath(session), inFolder("Pendra File.pdr"));
  EXPECT_FALSE(QFile::exists(inFolder("Pendra File.xml")));
  closeDoc(session);
  defaults.setBoolean(preferences::kIntroduced, true);
  Launch(session).launch();
  EXPECT_FALSE(session.showIntroSheet);
}

TEST_F(Opening, LaunchHaltsWhatRan) {
  openWithRunningTimer();
  session.close();  // as if the program had been killed
  windows.lose(WindowKind::Timer);
  defaults.setBoolean(preferences::kMergeSubmissions, false);
  SQLite::Database other(path("Work.pdr").toStdString(), SQLite::OPEN_READONLY);
  other.exec("BEGIN");
  other.execAndGet("SELECT count(*) FROM Activity");
  const auto reading = std::async(std::launch::async, [&] {
    QThread::msleep(200);
    other.exec("COMMIT");
  });
  Launch(session).launch();
  EXPECT_TRUE(defaults.boolean(preferences::kMergeSubmissions)) << "true after every launch";
  EXPECT_THAT(windows.made(), ElementsAre(WindowKind::Timer));
  EXPECT_EQ(session.context()->all<TimeEntry>()[0]->running(), false);
  EXPECT_FALSE(session.context()->hasChanges() || session.context()->undoStack().canUndo());
  EXPECT_TRUE(session.isStandalone());
  closeDoc(session);
  EXPECT_EQ(stored(path("Work.pdr"))->all<TimeEntry>()[0]->running(), false);
  EXPECT_EQ(stored(path("Work.pdr"))->all<TimeEntry>()[0]->duration(), std::nullopt) << "nobody knows";
}

TEST_F(Opening, TheSettingsAreThoseOfTheFirstIdentity) {
  write(path("Work.pdr"));
  {
    const auto context = stored(path("Work.pdr"));
    context->fill([&] { queries::firstDocument(*context)->setIdentity(&context->insert<Identity>()); });
    ASSERT_TRUE(context->save());
  }
  open("Work.pdr");
  EXPECT_EQ(session.settings()->identity()->employeeName(), "Me");
}

TEST_F(Opening, ALastDocumentThatIsNoFileGivesTheDefaultOneAndIsNamed) {
  QDir().mkpath(path("folder.pdr"));
  QDir().mkpath(documentFolder(places));
  write(inFolder("Pendra File.pdr"));
  for (const QString& last : {QString(), path("gone.pdr"), path("folder.pdr")}) {
    defaults.setText(preferences::kLastDocument, last);
    loadLastDocument(session);
    EXPECT_EQ(session.document()->path(), inFolder("Pendra File.xml")) << "never asked for as .pdr";
    EXPECT_EQ(notices().size(), last.isEmpty() ? 0 : 1);
    session.close();
  }
  EXPECT_EQ(queries::nameOf(stored(inFolder("Pendra File.pdr"))->all<Customer>()[0]), "Acme");
}

TEST_F(Opening, ALastDocumentOutOfReachIsReplacedByNothingAndCanBeTriedAgain) {
  const QString away = path("stick/Work.pdr");
  defaults.setText(preferences::kLastDocument, away);
  Launch(session).launch();
  EXPECT_EQ(session.document(), nullptr);
  EXPECT_FALSE(QFile::exists(documentFolder(places)));
  EXPECT_THAT(windows.made(), ElementsAre(WindowKind::Welcome));
  EXPECT_EQ(notices(), QStringList{"“" + away + "” could not be opened: No such file or directory."});
  const auto tryAgain = session.notices().standing()[0].actions[0];
  EXPECT_EQ(tryAgain.title, "Try Again");
  tryAgain.run();
  EXPECT_EQ(notices().size(), 1);
  Launch(session).launch(path("typo.pdr"));
  EXPECT_FALSE(session.document() || QFile::exists(path("typo.pdr"))) << "nor is a name that was mistyped";
  QDir().mkpath(path("stick"));
  write(away);
  tryAgain.run();
  EXPECT_EQ(customer(), "Acme");
  EXPECT_THAT(notices(), IsEmpty());
  EXPECT_EQ(windows.made(WindowKind::Timer), 1);
}

TEST_F(Opening, AFirstStartThatIsKilledAtAnyWriteLeavesADocumentThatOpens) {
  int killed = 0;
  for (rlim_t room = 2048; room < 65'536; room += 4096) {
    QDir().mkpath(documentFolder(places));
    const pid_t child = ::fork();
    if (child == 0) {
      const rlimit limited{room, room};
      ::setrlimit(RLIMIT_FSIZE, &limited);
      std::signal(SIGXFSZ, SIG_DFL);
      std::ignore = OpenDocument::read(defaultPath(places), testModel(), clock, calendar);
      ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    killed += WIFSIGNALED(status);
    for (int start = 0; start < 2; ++start) {
      loadLastDocument(session);
      ASSERT_NE(session.document(), nullptr) << room << " at start " << start;
      session.close();
    }
    QDir(documentFolder(places)).removeRecursively();
    defaults.setText(preferences::kLastDocument, {});
  }
  EXPECT_GT(killed, 3);
}

// ---- names

TEST_F(Opening, AnOlderNameIsChangedOnlyOfDocumentsAndWhereTheNewOneIsFree) {
  const auto moved = [&](const char* name) { return movedFromOlderName(path(name), testModel()); };
  write(path("a.xml"), "Old");
  ASSERT_TRUE(writeFile(path("a.pdr-journal"), "of a document that is gone"));
  EXPECT_EQ(moved("a.xml"), path("a.pdr"));
  EXPECT_FALSE(QFile::exists(path("a.pdr-journal")));
  write(path("a.xml"), "Newer");
  EXPECT_EQ(moved("a.xml"), path("a.xml"));
  EXPECT_EQ(queries::nameOf(stored(path("a.pdr"))->all<Customer>()[0]), "Old") << "what has it keeps it";
  QDir().mkpath(path("old.xml"));
  write(path("old.xml/b.xml"));
  EXPECT_EQ(moved("old.xml/b.xml"), path("old.xml/b.xml")) << "the folder's name changes too";
  write(path("c.XML"));
  EXPECT_EQ(moved("c.XML"), path("c.XML"));
  EXPECT_EQ(moved("missing.xml"), path("missing.xml"));
  ASSERT_TRUE(writeFile(path("invoice.xml"), "<?xml version='1.0'?>"));
  EXPECT_FALSE(loadDocument(session, path("invoice.xml")));
  EXPECT_EQ(contentsOf(path("invoice.xml")), "<?xml version='1.0'?>") << "nobody else's file is moved";
  write(path("d.xml"));
  const auto held = stored(path("d.xml"));
  EXPECT_EQ(moved("d.xml"), path("d.xml"));
  EXPECT_EQ(untitledPath(places), path("Untitled.pdr"));
  ASSERT_TRUE(writeFile(path("Untitled.pdr"), {}) && writeFile(path("Untitled1.pdr"), {}));
  EXPECT_EQ(untitledPath(places), path("Untitled2.pdr"));
}

// ---- what cannot be read

TEST_F(Opening, WhatCannotBeReadIsToldNeverOpenAndNeverWrittenTo) {
  ASSERT_TRUE(writeFile(path("Letter.pdr"), "Dear all"));
  windows.show(WindowKind::Setup);
  EXPECT_FALSE(loadDocument(session, path("Letter.pdr")));
  EXPECT_EQ(session.document(), nullptr);
  EXPECT_EQ(session.context(), nullptr);
  EXPECT_EQ(session.settings(), nullptr);
  EXPECT_TRUE(windows.isOpen(WindowKind::Setup)) << "setup is of use all the more";
  EXPECT_THAT(alerts.messages(), IsEmpty());
  EXPECT_EQ(notices(), QStringList{"“Letter.pdr” could not be opened: it is not a document of Pendra."});
  EXPECT_EQ(lastDocumentPath(session), path("Letter.pdr"));
  EXPECT_THAT(Documents(session).recentDocuments(), IsEmpty());
  periodicSave(session);
  EXPECT_EQ(contentsOf(path("Letter.pdr")), "Dear all");
  write(path("Work.pdr"));
  windows.forget();
  EXPECT_TRUE(loadDocument(session, path("Work.pdr")));
  EXPECT_THAT(windows.calls(), ElementsAre("close Setup"));
  EXPECT_THAT(notices(), IsEmpty());
}

TEST_F(Opening, WhatWasReadAheadOpensWhateverIsAskedForAsItIsByThen) {
  write(path("Work.pdr"));
  write(path("Other.pdr"), "Other");
  for (const char* asked : {"Work.pdr", "Other.pdr", "New.pdr"}) {
    ReadAhead ahead(path("Work.pdr"), testModel(), clock, calendar);
    ASSERT_TRUE(loadDocument(session, path(asked), &ahead)) << asked;
    EXPECT_TRUE(session.document()->isAt(path(asked)));
    EXPECT_EQ(stored(path(asked)), nullptr) << "it is held";
    EXPECT_EQ(ahead.take(), nullptr);
    closeDoc(session);
  }
  QByteArray damaged = contentsOf(path("Work.pdr"));
  damaged.replace(4096, 4096, QByteArray(4096, 'x'));
  ASSERT_TRUE(writeFile(path("Work.pdr"), damaged));
  ReadAhead ahead(path("Work.pdr"), testModel(), clock, calendar);
  EXPECT_FALSE(loadDocument(session, path("Work.pdr"), &ahead));
  EXPECT_THAT(notices(), ElementsAre("“Work.pdr” could not be opened: the file is damaged."));
  ASSERT_EQ(::mkfifo(qPrintable(path("Pipe.pdr")), S_IRWXU), 0);
  ReadAhead pipe(path("Pipe.pdr"), testModel(), clock, calendar);
  EXPECT_FALSE(loadDocument(session, path("Pipe.pdr"), &pipe)) << "nor waited for";
  const ReadAhead wanted(path("Other.pdr"), testModel(), clock, calendar);  // and not taken
}

TEST_F(Opening, TheOpenDocumentStaysUntilAnotherHasBeenRead) {
  openWithRunningTimer();
  ASSERT_TRUE(writeFile(path("Letter.pdr"), "Dear all"));
  int changes = 0;
  const auto told = session.documentChanges().observe([&] { ++changes; });
  alerts.willAnswer({"Continue"});
  EXPECT_FALSE(Documents(session).open(path("Letter.pdr")));
  EXPECT_EQ(customer(), "Acme");
  EXPECT_TRUE(windows.isOpen(WindowKind::Timer));
  EXPECT_EQ(changes, 0);
  EXPECT_EQ(lastDocumentPath(session), path("Work.pdr"));
  const std::size_t asked = alerts.shown().size();
  EXPECT_FALSE(Documents(session).open(path("gone.pdr")));
  EXPECT_EQ(alerts.shown().size(), asked) << "nothing is asked for what is not there";
  EXPECT_FALSE(QFile::exists(path("gone.pdr")));
  session.notices().post({.key = "x", .text = "of the document", .actions = {}, .ofDocument = true});
  write(path("Other.pdr"), "Other");
  windows.finishes = false;
  EXPECT_FALSE(Documents(session).open(path("Other.pdr")));
  openFile(session);
  EXPECT_EQ(alerts.shown().size(), asked) << "whoever types is not asked, and loses nothing";
  EXPECT_THAT(notices(), ElementsAre("of the document",
                                     "“Other.pdr” could not be opened: a text that is being "
                                     "typed cannot be stored yet."));
  windows.finishes = true;
  alerts.willAnswer({"Continue"});
  EXPECT_TRUE(Documents(session).open(path("Other.pdr")));
  EXPECT_EQ(customer(), "Other");
  EXPECT_EQ(changes, 2) << "one closed, one opened";
  EXPECT_THAT(notices(), IsEmpty()) << "a document's notices go with it";
  EXPECT_NE(stored(path("Work.pdr")), nullptr) << "its file is let go of";
}

// ---- one document after the other

TEST_F(Opening, AsksFirstAndCancellingAnywhereKeepsTheDocument) {
  Activity& activity = openWithRunningTimer();
  write(path("Other.pdr"), "Other");
  alerts.willAnswer({"Cancel"});
  openFile(session);
  EXPECT_EQ(panels.openPanels(), 0);
  Documents documents(session);
  alerts.willAnswer({"Cancel"});
  const auto declined = documents.open(path("Other.pdr"));
  ASSERT_FALSE(declined);
  EXPECT_EQ(declined.error().domain, "NSURLErrorDomain");
  EXPECT_EQ(declined.error().code, -1);
  EXPECT_TRUE(activity.isRunning());
  EXPECT_EQ(
      alerts.shown()[0].informative,
      "Before you can open another file, Pendra needs to pause any running timers and close the current "
      "file. You can open this file again with File>Open Recent.");
  alerts.forget();
  alerts.willAnswer({"Continue"});
  panels.willChoose(path("Other.pdr"));
  openFile(session);
  EXPECT_EQ(alerts.messages(), QStringList("Close current file?")) << "not once more, about the timers";
  EXPECT_EQ(customer(), "Other");
  EXPECT_EQ(windows.made(WindowKind::Timer), 1);
  EXPECT_THAT(documents.recentDocuments(), ElementsAre(path("Other.pdr"), path("Work.pdr")));
  alerts.willAnswer({"Continue"});
  panels.willCancel();
  openFile(session);
  EXPECT_EQ(session.document(), nullptr);
  EXPECT_TRUE(windows.isOpen(WindowKind::Welcome)) << "there is no program without windows";
  showTimerWindow(session);
  EXPECT_EQ(customer(), "Other") << "the window is that of the last document";
  alerts.willAnswer({"Cancel", "Continue"});
  newDoc(session);
  EXPECT_FALSE(windows.isOpen(WindowKind::Setup));
  newDoc(session);
  newDoc(session);
  EXPECT_EQ(windows.made(WindowKind::Setup), 1);
  EXPECT_EQ(session.document(), nullptr);
}

TEST_F(Opening, TheOpenDocumentComesToTheFrontUnaskedByWhateverName) {
  write(path("Work.xml"));
  ASSERT_TRUE(QFile::link(path("Work.xml"), path("alias.pdr")));
  auto read = OpenDocument::read(path("Work.xml"), testModel(), clock, calendar);
  session.open(std::move(read).value());
  for (const char* name : {"Work.xml", "alias.pdr", "../Documents/Work.xml"}) {
    EXPECT_TRUE(Documents(session).open(path(name)));
    EXPECT_TRUE(loadDocument(session, path(name)));
  }
  EXPECT_THAT(alerts.messages(), IsEmpty());
  EXPECT_THAT(windows.made(), ElementsAre(WindowKind::Timer));
  EXPECT_THAT(windows.calls(), ElementsAre("show Timer", "show Timer"));
  EXPECT_EQ(session.document()->path(), path("Work.xml"));
  EXPECT_FALSE(QFile::exists(path("Work.pdr"))) << "an open document is not renamed";
}

TEST_F(Opening, RecentDocumentsAreTenThatExistNewestFirst) {
  for (int i = 0; i < 12; ++i) {
    ASSERT_TRUE(writeFile(path("r") + QString::number(i), {}));
    noteRecentDocument(session, path("r") + QString::number(i));
  }
  noteRecentDocument(session, path("r5"));
  QFile::remove(path("r11"));
  EXPECT_EQ(Documents(session).recentDocuments().size(), 9);
  EXPECT_EQ(Documents(session).recentDocuments().mid(0, 2), QStringList({path("r5"), path("r10")}));
  Documents(session).clearRecentDocuments();
  EXPECT_THAT(Documents(session).recentDocuments(), IsEmpty());
}

}  // namespace
}  // namespace pendra
