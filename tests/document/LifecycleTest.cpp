#include <gmock/gmock.h>

#include <QCoreApplication>

#include "document/DocumentClosing.h"
#include "document/DocumentFiles.h"
#include "document/Documents.h"
#include "document/Launch.h"
#include "document/RunningTimers.h"
#include "document/Saving.h"
#include "platform/Preferences.h"
#include "support/FileSizeLimit.h"
#include "support/LogCapture.h"
#include "support/Rows.h"
#include "support/TestDocument.h"
#include "support/TestSession.h"

namespace pendra {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Lifecycle : public testing::Test, protected TestSession {
 protected:
  static void SetUpTestSuite() {
    static int argc = 0;
    static const QCoreApplication application(argc, nullptr);  // for the save timer
  }
  QString path(const char* name) const { return places.documents + u'/' + QString::fromUtf8(name); }
  QString inFolder(const char* name) const { return documentFolder(places) + u'/' + QString::fromUtf8(name); }
  /// A document that has an identity and one customer of the given name.
  void makeDocument(const QString& at, const char* customer = "Acme", const char* employee = "Me") {
    ObjectContext context(testModel(), clock, calendar);
    ASSERT_TRUE(context.open(at));
    auto& identity = context.insert<Identity>();
    identity.setEmployeeName(QString::fromUtf8(employee));
    auto& document = context.insert<DocumentSettings>();
    document.setIdentity(&identity);
    document.setStandalone(true);
    context.insert<Customer>().setName(QString::fromUtf8(customer));
    ASSERT_TRUE(context.save());
  }
  QString customerIn(const QString& at) {
    ObjectContext context(testModel(), clock, calendar);
    EXPECT_TRUE(context.open(at));
    return context.all<Customer>().empty() ? QString() : queries::nameOf(context.all<Customer>()[0]);
  }
  QString openCustomer() const { return queries::nameOf(session.context()->all<Customer>()[0]); }
  /// The open document, shown in its window, with a running timer.
  Activity& openWithRunningTimer() {
    makeDocument(path("Work.pdr"));
    loadDocument(session, path("Work.pdr"));
    windows.load(Interface::TimerWindow);
    auto& activity = addActivity(nullptr, nullptr);
    activity.startEntry();
    clock.advance(60);
    windows.forget();
    return activity;
  }
  QStringList noticeKeys() {
    QStringList keys;
    for (const Notice& notice : session.notices().standing()) keys << notice.key;
    return keys;
  }
};

// ---- launch

TEST_F(Lifecycle, TheFirstLaunchMakesADocumentThatTheSecondRenames) {
  Launch(session).launch();
  EXPECT_TRUE(session.showIntroSheet);
  EXPECT_EQ(lastDocumentPath(session), inFolder("Pendra File.xml"));
  EXPECT_TRUE(QFileInfo(inFolder("Pendra File.xml")).size() > 0) << "it stands before any save";
  EXPECT_THAT(windows.loaded(), ElementsAre(Interface::Setup))
      << "without an identity there is no timer window";
  queries::firstIdentity(*session.context())->setEmployeeName(QStringLiteral("Me"));
  closeDoc(session);
  EXPECT_EQ(session.setupController, nullptr);

  TestSession again;
  again.defaults.setText(preferences::kLastDocument, inFolder("Pendra File.xml"));
  Launch(again.session).launch();
  EXPECT_EQ(lastDocumentPath(again.session), inFolder("Pendra File.pdr"));
  EXPECT_FALSE(QFile::exists(inFolder("Pendra File.xml")));
}

TEST_F(Lifecycle, TheIntroductionIsDueUntilItWasGiven) {
  Launch(session).launch();
  closeDoc(session);  // setup was cancelled
  Launch(session).launch();
  EXPECT_TRUE(session.showIntroSheet);
  closeDoc(session);
  defaults.setBoolean(preferences::kIntroduced, true);
  Launch(session).launch();
  EXPECT_FALSE(session.showIntroSheet);
}

TEST_F(Lifecycle, LaunchOpensTheLastDocumentAndHaltsWhatRan) {
  makeDocument(path("Work.pdr"));
  loadDocument(session, path("Work.pdr"));
  addActivity(nullptr, nullptr).startEntry();
  saveAction(session);
  session.context()->close();  // as if the program had been killed
  session.clearDoc();
  session.setSettings(nullptr);
  defaults.setBoolean(preferences::kMergeSubmissions, false);
  Launch launch(session);
  launch.launch();
  EXPECT_TRUE(defaults.boolean(preferences::kMergeSubmissions)) << "true after every launch";
  EXPECT_THAT(windows.loaded(), ElementsAre(Interface::TimerWindow));
  EXPECT_TRUE(session.isStandalone());
  EXPECT_THAT(windows.calls(), testing::Contains("removeVTMenus"));
  const TimeEntry* period = session.context()->all<TimeEntry>()[0];
  EXPECT_EQ(period->running(), false);
  EXPECT_EQ(period->duration(), std::nullopt) << "nobody knows how long it ran";
}

struct Last {
  const char* name;
  const char* last;
};

class LastDocument : public Lifecycle, public testing::WithParamInterface<Last> {};

TEST_P(LastDocument, ThatIsNoFileGivesTheDefaultOne) {
  QDir().mkpath(path("folder.pdr"));
  QDir().mkpath(documentFolder(places));
  makeDocument(inFolder("Pendra File.pdr"));
  const QByteArray other = contentsOf(inFolder("Pendra File.pdr"));
  if (GetParam().last) {
    defaults.setText(preferences::kLastDocument, *GetParam().last ? path(GetParam().last) : QString());
  }
  loadLastDocument(session);
  EXPECT_EQ(session.document()->path(), inFolder("Pendra File.xml")) << "never asked for as .pdr";
  EXPECT_EQ(contentsOf(inFolder("Pendra File.pdr")), other);
}

INSTANTIATE_TEST_SUITE_P(Paths, LastDocument,
                         testing::Values(Last{"Absent", nullptr}, Last{"Empty", ""},
                                         Last{"Missing", "gone.pdr"}, Last{"AFolder", "folder.pdr"}),
                         RowName());

// ---- names

TEST_F(Lifecycle, AnOlderNameIsChangedOnlyWhereTheNewOneIsFree) {
  ASSERT_TRUE(writeFile(path("a.xml"), "old"));
  EXPECT_EQ(movedFromOlderName(path("a.xml")), path("a.pdr"));
  EXPECT_EQ(contentsOf(path("a.pdr")), "old");
  ASSERT_TRUE(writeFile(path("a.xml"), "newer"));
  EXPECT_EQ(movedFromOlderName(path("a.xml")), path("a.xml"));
  EXPECT_EQ(contentsOf(path("a.pdr")), "old") << "what has the name keeps it";
  QDir().mkpath(path("old.xml"));
  ASSERT_TRUE(writeFile(path("old.xml/b.xml"), "x"));
  EXPECT_EQ(movedFromOlderName(path("old.xml/b.xml")), path("old.xml/b.xml"))
      << "the folder's name changes too";
  ASSERT_TRUE(writeFile(path("c.XML"), "x"));
  EXPECT_EQ(movedFromOlderName(path("c.XML")), path("c.XML"));
  EXPECT_EQ(movedFromOlderName(path("missing.xml")), path("missing.xml"));
}

TEST_F(Lifecycle, AnUntitledDocumentTakesTheFirstFreeNumber) {
  EXPECT_EQ(untitledPath(places), path("Untitled.pdr"));
  ASSERT_TRUE(writeFile(path("Untitled.pdr"), {}) && writeFile(path("Untitled1.pdr"), {}));
  EXPECT_EQ(untitledPath(places), path("Untitled2.pdr"));
  loadDocument(session, std::nullopt);
  EXPECT_EQ(session.document()->path(), path("Untitled2.pdr"));
}

// ---- reading

TEST_F(Lifecycle, AFailedReadIsToldAndNeverWrittenTo) {
  ASSERT_TRUE(writeFile(path("Letter.pdr"), "Dear all"));
  loadDocument(session, path("Letter.pdr"));
  EXPECT_THAT(alerts.messages(), IsEmpty());
  ASSERT_THAT(noticeKeys(), ElementsAre("document"));
  EXPECT_TRUE(session.notices().standing()[0].text.contains(u"“Letter.pdr” could not be opened"));
  EXPECT_EQ(lastDocumentPath(session), path("Letter.pdr"));
  EXPECT_NE(session.settings(), nullptr);
  EXPECT_THAT(Documents(session).recentDocuments(), IsEmpty());
  const LogCapture log;
  periodicSave(session);
  EXPECT_THAT(log.lines(), ElementsAre("PENDRA Save Error = the document has no readable file"));
  EXPECT_EQ(contentsOf(path("Letter.pdr")), "Dear all");
  makeDocument(path("Work.pdr"));
  loadDocument(session, path("Work.pdr"));
  EXPECT_THAT(noticeKeys(), testing::Not(testing::Contains("document")));
}

TEST_F(Lifecycle, ReadingClosesTheSetupWindowAndKeepsTheNewDocumentOpen) {
  windows.load(Interface::Setup);
  windows.forget();
  loadDocument(session, path("New.pdr"));
  EXPECT_THAT(windows.calls(), ElementsAre("close Setup"));
  EXPECT_NE(session.settings(), nullptr);
  EXPECT_TRUE(session.context()->hasStore());
  EXPECT_EQ(session.document()->path(), path("New.pdr"));
  EXPECT_EQ(session.context()->all<DocumentSettings>().size(), 1U);
}

TEST_F(Lifecycle, SetupStaysOverAFileThatCannotBeRead) {
  ASSERT_TRUE(writeFile(path("Letter.pdr"), "Dear all"));
  windows.load(Interface::Setup);
  loadDocument(session, path("Letter.pdr"));
  EXPECT_NE(session.setupController, nullptr);
  EXPECT_NE(session.context(), nullptr);
}

TEST_F(Lifecycle, AFileThatCannotBeReadOpensNoWindowToWorkIn) {
  ASSERT_TRUE(writeFile(path("Letter.pdr"), "Dear all"));
  for (const bool fromOutside : {false, true}) {
    makeDocument(path("Work.pdr"));
    loadDocument(session, path("Work.pdr"));
    windows.load(Interface::TimerWindow);
    windows.forget();
    alerts.willAnswer({"Continue"});
    if (fromOutside) {
      EXPECT_TRUE(Documents(session).open(path("Letter.pdr")));
    } else {
      panels.willChoose(path("Letter.pdr"));
      openFile(session);
      EXPECT_THAT(windows.loaded(), ElementsAre(Interface::WelcomeController));
    }
    EXPECT_EQ(session.window, nullptr);
    EXPECT_EQ(session.saveState().notSavedSince, clock.now()) << "not what the document before was";
    EXPECT_TRUE(session.saveState().reason.contains(u"not a document"));
    panels.willChoose(path("Work.pdr"));
    openFile(session);
    EXPECT_EQ(openCustomer(), "Acme") << "without a question: nothing is open";
    QFile::remove(path("Work.pdr"));
    closeDoc(session);
  }
}

TEST_F(Lifecycle, TheOpenDocumentCanBeLoadedOnceMore) {
  makeDocument(path("Work.pdr"));
  loadDocument(session, path("Work.pdr"));
  loadDocument(session, path("Work.pdr"));
  EXPECT_TRUE(session.context()->hasStore());
  EXPECT_EQ(openCustomer(), "Acme");
}

// ---- the guard

TEST_F(Lifecycle, TheGuardStopsAllOrNothing) {
  Activity& activity = openWithRunningTimer();
  alerts.willAnswer({"Cancel"});
  EXPECT_FALSE(mayCloseWindow(session));
  EXPECT_TRUE(activity.isRunning());
  EXPECT_EQ(alerts.last().message, "Pendra needs to stop all timers");
  EXPECT_EQ(alerts.last().informative, "Pendra will stop all timers before continuing.");
  EXPECT_THAT(windows.calls(), IsEmpty());
  alerts.willAnswer({"OK"});
  EXPECT_TRUE(checkForRunningTimers(session));
  EXPECT_EQ(activity.entries()[0]->duration(), 60);
  EXPECT_THAT(windows.calls(), ElementsAre("reloadData", "updateMainButton", "updateTimeDisplay"));
  EXPECT_TRUE(session.context()->hasChanges()) << "the guard itself does not save";
  EXPECT_TRUE(checkForRunningTimers(session)) << "and asks no more";
}

TEST_F(Lifecycle, QuittingIsJudgedByTheDocumentStillBeingOpen) {
  openWithRunningTimer();
  Launch launch(session);
  alerts.willAnswer({"Cancel"});
  EXPECT_FALSE(launch.mayEnd());
  EXPECT_NE(session.settings(), nullptr);
  alerts.willAnswer({"OK"});
  EXPECT_TRUE(launch.mayEnd());
  EXPECT_EQ(session.context(), nullptr);
  EXPECT_THAT(windows.calls().mid(3), ElementsAre("stopTimer", "close", "invalidateTracker", "stopTimer"));
  ObjectContext written(testModel(), clock, calendar);
  ASSERT_TRUE(written.open(path("Work.pdr")));
  EXPECT_EQ(written.all<TimeEntry>()[0]->duration(), 60);
  EXPECT_EQ(written.all<TimeEntry>()[0]->running(), false);
}

// ---- one document after the other

TEST_F(Lifecycle, OpeningAsksFirstAndCancellingAnywhereKeepsTheDocument) {
  Activity& activity = openWithRunningTimer();
  makeDocument(path("Other.pdr"), "Other");
  alerts.willAnswer({"Cancel"});
  openFile(session);
  alerts.willAnswer({"Continue", "Cancel"});
  openFile(session);
  EXPECT_EQ(panels.openPanels(), 0);
  EXPECT_TRUE(activity.isRunning());
  EXPECT_EQ(openCustomer(), "Acme");
  alerts.willAnswer({"Continue", "OK"});
  panels.willChoose(path("Other.pdr"));
  openFile(session);
  EXPECT_EQ(openCustomer(), "Other");
  EXPECT_EQ(windows.loads(Interface::TimerWindow), 1);
  EXPECT_THAT(Documents(session).recentDocuments(), ElementsAre(path("Other.pdr"), path("Work.pdr")));
}

TEST_F(Lifecycle, CancellingThePanelLeavesNoDocumentButAWindow) {
  makeDocument(path("Work.pdr"));
  loadDocument(session, path("Work.pdr"));
  windows.load(Interface::TimerWindow);
  alerts.willAnswer({"Continue"});
  panels.willCancel();
  openFile(session);
  EXPECT_EQ(session.settings(), nullptr);
  EXPECT_NE(session.welcomeController, nullptr);
}

TEST_F(Lifecycle, OpenRecentSavesAsksAndOpens) {
  Activity& activity = openWithRunningTimer();
  makeDocument(path("Other.pdr"), "Other");
  session.context()->all<Customer>()[0]->setName(QStringLiteral("Renamed"));
  Documents controller(session);
  alerts.willAnswer({"Cancel"});
  const auto declined = controller.open(path("Other.pdr"));
  ASSERT_FALSE(declined);
  EXPECT_EQ(declined.error().domain, "NSURLErrorDomain");
  EXPECT_EQ(declined.error().code, -1);
  alerts.willAnswer({"Continue", "Cancel"});
  EXPECT_FALSE(controller.open(path("Other.pdr")));
  EXPECT_TRUE(activity.isRunning());
  EXPECT_FALSE(session.context()->hasChanges()) << "it was saved before the guard";
  alerts.willAnswer({"Continue", "OK"});
  EXPECT_TRUE(controller.open(path("Other.pdr")));
  EXPECT_EQ(openCustomer(), "Other");
  EXPECT_EQ(windows.loads(Interface::TimerWindow), 1);
  EXPECT_EQ(
      alerts.shown()[0].informative,
      "Before you can open another file, Pendra needs to pause any running timers and close the current "
      "file. You can open this file again with File>Open Recent.");
}

TEST_F(Lifecycle, NewClosesTheVisibleDocumentAndShowsSetupOnce) {
  openWithRunningTimer();
  alerts.willAnswer({"Continue", "Cancel"});
  newDoc(session);
  EXPECT_EQ(session.setupController, nullptr);
  alerts.willAnswer({"Continue", "OK"});
  newDoc(session);
  newDoc(session);
  EXPECT_EQ(windows.loads(Interface::Setup), 1);
  EXPECT_EQ(session.settings(), nullptr);
}

TEST_F(Lifecycle, RecentDocumentsAreTenThatExistNewestFirst) {
  for (int i = 0; i < 12; ++i) {
    const QString one = path("r") + QString::number(i);
    ASSERT_TRUE(writeFile(one, {}));
    noteRecentDocument(session, one);
  }
  noteRecentDocument(session, path("r5"));
  QFile::remove(path("r11"));
  const QStringList recent = Documents(session).recentDocuments();
  EXPECT_EQ(recent.size(), 9);
  EXPECT_EQ(recent.mid(0, 2), QStringList({path("r5"), path("r10")}));
  Documents(session).clearRecentDocuments();
  EXPECT_THAT(Documents(session).recentDocuments(), IsEmpty());
}

// ---- saving

TEST_F(Lifecycle, ClosingTheWindowSavesOnceAndIsHarmlessAfterwards) {
  makeDocument(path("Work.pdr"));
  loadDocument(session, path("Work.pdr"));
  windows.load(Interface::TimerWindow);
  session.context()->all<Customer>()[0]->setName(QStringLiteral("Renamed"));
  windows.close();
  closeAfterWindow(session);
  EXPECT_EQ(session.document(), nullptr);
  EXPECT_EQ(customerIn(path("Work.pdr")), "Renamed");
}

TEST_F(Lifecycle, ASaveThatFailsSaysSinceWhenAndWhyUntilOneSucceeds) {
  makeDocument(path("Work.pdr"));
  loadDocument(session, path("Work.pdr"));
  ASSERT_TRUE(saveContext(session));
  const Instant saved = clock.now();
  for (int i = 0; i < 500; ++i) session.context()->insert<Customer>().setName(QString(50, u'x'));
  const LogCapture log;
  for (int tick = 0; tick < 2; ++tick) {
    clock.advance(120);
    const FileSizeLimit limit(4096);
    periodicSave(session);
  }
  EXPECT_EQ(log.lines()[0], "PENDRA Save Error = File too large");
  EXPECT_EQ(session.saveState().notSavedSince, saved);
  EXPECT_EQ(session.saveState().reason, "File too large");
  EXPECT_THAT(noticeKeys(), ElementsAre("save"));
  periodicSave(session);
  EXPECT_EQ(session.saveState().notSavedSince, std::nullopt);
  EXPECT_EQ(session.saveState().savedAt, clock.now());
  EXPECT_THAT(noticeKeys(), IsEmpty());
}

TEST_F(Lifecycle, WhatCannotBeStoredIsClosedOnlyAtTheSecondTry) {
  ObjectContext& context = openDocument();
  windows.load(Interface::TimerWindow);
  addCustomer(QStringLiteral("Not stored"));
  putAnotherFileInItsPlace();
  const LogCapture log;
  closeDoc(session);
  EXPECT_EQ(session.context().get(), &context);
  EXPECT_NE(session.window, nullptr);
  EXPECT_TRUE(session.notices().standing()[0].text.contains("stays open"));
  EXPECT_EQ(log.lines().size(), 1);
  EXPECT_TRUE(mayCloseWindow(session)) << "the second try knows";
  QFile::remove(places.path("Test.pdr"));
  EXPECT_TRUE(mayCloseWindow(session)) << "and a save that succeeds";
  EXPECT_THAT(noticeKeys(), IsEmpty());
  putAnotherFileInItsPlace();
  addCustomer(QStringLiteral("Not stored either"));
  EXPECT_FALSE(mayCloseWindow(session)) << "is the end of what the user knew";
  addCustomer(QStringLiteral("Typed after that"));
  EXPECT_FALSE(mayCloseWindow(session)) << "and so is new work";
  closeDoc(session);
  EXPECT_EQ(session.context(), nullptr);
}

}  // namespace
}  // namespace pendra
