#include <QDateTime>

#include "DocumentTest.h"
#include "support/Disk.h"
#include "support/Events.h"
#include "support/FileSizeLimit.h"
#include "support/LogCapture.h"
#include "support/OrdinaryUser.h"

namespace pendra {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Saving : public DocumentTest {
 protected:
  void addManyCustomers() {
    for (int i = 0; i < 500; ++i) addCustomer(QString(50, u'x'));
  }
  /// The titles of what the newest notice offers.
  [[nodiscard]] QStringList actions() {
    QStringList titles;
    for (const NoticeAction& action : session.notices().standing().back().actions) titles << action.title;
    return titles;
  }
  /// Presses a button of the newest notice; dismisses it without a title.
  void press(const QString& title) {
    const QString key = session.notices().standing().back().key;
    if (title.isEmpty()) return session.notices().withdraw(key);
    session.notices().press(key, static_cast<std::size_t>(actions().indexOf(title)));
  }
  void putAnotherFileInPlaceOfWork() {
    QFile::remove(path("Work.pdr"));
    ASSERT_TRUE(writeFile(path("Work.pdr"), "another program's file"));
  }
};

TEST_F(Saving, TheGuardStopsAllInOneStepOrNothing) {
  Activity& activity = openWithRunningTimer();
  alerts.willAnswer({"Cancel"});
  EXPECT_FALSE(mayCloseWindow(session));
  EXPECT_TRUE(activity.isRunning());
  EXPECT_EQ(alerts.last().message, "Pendra needs to stop all timers");
  EXPECT_EQ(alerts.last().informative, "Pendra will stop all timers before continuing.");
  alerts.willAnswer({"OK"});
  EXPECT_TRUE(checkForRunningTimers(session));
  EXPECT_EQ(activity.entries()[0]->duration(), 60);
  EXPECT_FALSE(session.context()->hasChanges());
  EXPECT_TRUE(checkForRunningTimers(session)) << "and asks no more";
  EXPECT_EQ(session.context()->undoStack().undoName(), "Stop");
  EXPECT_TRUE(session.context()->undoStack().undo().empty());
  EXPECT_EQ(activity.entries()[0]->running(), true);
}

TEST_F(Saving, QuittingIsJudgedByTheDocumentStillBeingOpen) {
  openWithRunningTimer();
  Launch launch(session, {.between = std::chrono::milliseconds(1)});
  launch.launch();
  windows.forget();
  alerts.willAnswer({"Cancel"});
  EXPECT_FALSE(launch.mayEnd());
  EXPECT_NE(session.document(), nullptr);
  alerts.willAnswer({"OK"});
  EXPECT_TRUE(launch.mayEnd());
  EXPECT_EQ(session.document(), nullptr);
  EXPECT_THAT(windows.calls(), ElementsAre("close Timer"));
  EXPECT_EQ(stored(path("Work.pdr"))->all<TimeEntry>()[0]->duration(), 60);
  open("Work.pdr");
  addCustomer(QStringLiteral("Unsaved"));
  EXPECT_FALSE(eventually([&] { return !session.context()->hasChanges(); }, 30)) << "nothing saves any more";
}

TEST_F(Saving, ClosingLetsGoOfTheFileWithAndWithoutAWindow) {
  write(path("Work.pdr"));
  for (const bool hasWindow : {true, false}) {
    open("Work.pdr");
    if (!hasWindow) windows.lose(WindowKind::Timer);
    EXPECT_EQ(stored(path("Work.pdr")), nullptr) << "it is held";
    session.context()->all<Customer>()[0]->setName(hasWindow ? "In a window" : "In none");
    if (hasWindow) {
      windows.close(WindowKind::Timer);
      closeAfterWindow(session);
    } else {
      closeDoc(session);
    }
    EXPECT_EQ(session.document(), nullptr);
    EXPECT_EQ(queries::nameOf(stored(path("Work.pdr"))->all<Customer>()[0]),
              hasWindow ? "In a window" : "In none");
    QFile::rename(path("Work.pdr"), path("Moved.pdr"));
    periodicSave(session);
    EXPECT_FALSE(QFile::exists(path("Work.pdr"))) << "what was closed is not made anew";
    QFile::rename(path("Moved.pdr"), path("Work.pdr"));
  }
}

TEST_F(Saving, AFailureIsSaidOnceAndTriedAgainUntilOneSucceeds) {
  write(path("Work.pdr"));
  open("Work.pdr");
  const Instant opened = clock.now();
  EXPECT_EQ(session.saveState().savedAt, opened);
  int posted = 0;
  const auto told = session.notices().changes().observe([&] { ++posted; });
  const LogCapture log;
  Launch launch(session, {.between = std::chrono::hours(1), .untilAnotherTry = std::chrono::milliseconds(5)});
  launch.launch();
  {
    const FileSizeLimit limit(4096);
    for (int command = 0; command < 3; ++command) {
      clock.advance(60);
      EXPECT_TRUE(session.context()->edit({}, [&] { addManyCustomers(); })) << "the command itself succeeds";
    }
    periodicSave(session);
    EXPECT_THAT(log.lines(), ElementsAre("PENDRA Save Error = File too large"));
    EXPECT_EQ(session.saveState().notSavedSince, opened);
    EXPECT_EQ(session.saveState().reason, "File too large");
    EXPECT_EQ(notices(), QStringList{"“" + path("Work.pdr") +
                                     "” could not be saved: File too large. Pendra keeps trying."});
    EXPECT_EQ(posted, 1) << "not at every command";
  }
  EXPECT_TRUE(eventually([&] { return !session.saveState().notSavedSince; })) << "tried again unasked";
  EXPECT_EQ(session.saveState().savedAt, clock.now());
  EXPECT_THAT(notices(), IsEmpty());
  EXPECT_FALSE(session.context()->hasChanges());
}

TEST_F(Saving, AClosingThatWouldLoseWorkSaysHowMuchAndIsRefusedOnce) {
  Activity& activity = openWithRunningTimer();
  const auto context = session.context();
  putAnotherFileInPlaceOfWork();
  const LogCapture log;
  stopAllActivities(session);
  closeDoc(session);
  EXPECT_EQ(session.context(), context);
  EXPECT_TRUE(windows.isOpen(WindowKind::Timer));
  EXPECT_EQ(notices(), QStringList{"“" + path("Work.pdr") +
                                   "” stays open, because it could not be saved: another version has taken "
                                   "its place. Closing it again loses 1 time entry (00:01:00)."});
  EXPECT_THAT(actions(), ElementsAre("Save Over It", "Keep Both", "Save a Copy…"));
  EXPECT_EQ(log.lines().size(), 1);
  EXPECT_TRUE(mayCloseWindow(session)) << "the second try knows";
  QFile::remove(path("Work.pdr"));
  EXPECT_TRUE(saveContext(session)) << "and a save that succeeds is the end of what the user knew";
  EXPECT_FALSE(notices().join(u' ').contains("stays open"));
  putAnotherFileInPlaceOfWork();
  EXPECT_FALSE(mayCloseWindow(session));
  EXPECT_TRUE(notices().join(u' ').contains("Closing it again loses what the other version lacks."))
      << "the file is gone";
  std::ignore = context->edit({}, [&] { activity.setNotes(QStringLiteral("Typed after that")); });
  EXPECT_FALSE(mayCloseWindow(session)) << "and so is new work";
  closeDoc(session);
  EXPECT_EQ(session.document(), nullptr);
  EXPECT_THAT(notices(), IsEmpty()) << "nothing is said of a document that is closed";
}

TEST_F(Saving, WhatCannotBeSavedToItsPlaceGoesWhereTheUserSays) {
  for (const char* way : {"Save Over It", "Keep Both", "Save a Copy…"}) {
    SCOPED_TRACE(way);
    write(path("Work.pdr"));
    open("Work.pdr");
    putAnotherFileInPlaceOfWork();
    std::ignore = session.context()->edit({}, [&] { addManyCustomers(); });
    EXPECT_TRUE(notices().contains("“" + path("Work.pdr") +
                                   "” is not saved: another version has taken its place. Nothing is written "
                                   "there until you decide."));
    if (way == QStringLiteral("Save a Copy…")) panels.willChoose(path("Copy.pdr"));
    press(way);
    const bool over = contentsOf(path("Work.pdr")) != "another program's file";
    EXPECT_EQ(over, way == QStringLiteral("Save Over It"));
    const QString at = path(over                                 ? "Work.pdr"
                            : way == QStringLiteral("Keep Both") ? "Work1.pdr"
                                                                 : "Copy.pdr");
    if (at.endsWith("Copy.pdr")) {
      EXPECT_EQ(notices().back(), "Written to “" + at + "”.");
      press("Show");
      EXPECT_THAT(workspace.revealed(), ElementsAre(at));
      EXPECT_TRUE(session.saveState().notSavedSince) << "a copy is not the document";
    } else {
      EXPECT_FALSE(session.saveState().notSavedSince);
      EXPECT_EQ(notices(), over ? QStringList() : QStringList("Your work goes on in “" + at + "”."));
      EXPECT_EQ(session.document()->path(), at);
      EXPECT_EQ(lastDocumentPath(session), at);
      EXPECT_EQ(Documents(session).recentDocuments().front(), at);
    }
    closeDoc(session);
    ASSERT_EQ(session.document(), nullptr) << "nothing is lost any more";
    EXPECT_EQ(stored(at)->all<Customer>().size(), 501U);
    for (const QString& file : {at, path("Work.pdr")}) QFile::remove(file);
  }
  EXPECT_EQ(panels.savePanels().size(), 1U);
}

TEST_F(Saving, AMovedDocumentIsFollowedOnlyWhenAsked) {
  write(path("Work.pdr"));
  open("Work.pdr");
  ASSERT_TRUE(QFile::rename(path("Work.pdr"), path("Moved.pdr")));
  std::ignore = session.context()->edit({}, [&] { addManyCustomers(); });
  EXPECT_EQ(notices(), QStringList{"“" + path("Work.pdr") + "” was moved to “" + path("Moved.pdr") +
                                   "” and is not saved until you decide."});
  EXPECT_THAT(actions(), ElementsAre("Follow It", "Save a Copy…"));
  EXPECT_FALSE(QFile::exists(path("Work.pdr")));
  press("Follow It");
  EXPECT_EQ(session.document()->path(), path("Moved.pdr"));
  EXPECT_EQ(stored(path("Moved.pdr")), nullptr) << "held under its new name";
  EXPECT_THAT(notices(), IsEmpty());
  closeDoc(session);
  EXPECT_THAT(files(places.documents), ElementsAre("Moved.pdr"));
  EXPECT_EQ(stored(path("Moved.pdr"))->all<Customer>().size(), 501U);
}

TEST_F(Saving, WhatOthersDoToTheFileIsSaidOnce) {
  write(path("Work.pdr"));
  open("Work.pdr");
  QFile::remove(path("Work.pdr"));
  std::ignore = session.context()->edit({}, [&] { addManyCustomers(); });
  EXPECT_EQ(notices(),
            QStringList{"“" + path("Work.pdr") +
                        "” was deleted by another program and has been made anew. Nothing is lost."});
  press("");
  int said = 0;
  const auto told = session.notices().changes().observe([&] { said += !notices().isEmpty(); });
  for (int copy = 0; copy < 20; ++copy) {
    ASSERT_TRUE(QFile::copy(path("Work.pdr"), path("beside")));
    ASSERT_EQ(::rename(qPrintable(path("beside")), qPrintable(path("Work.pdr"))), 0);
    ASSERT_TRUE(session.context()->edit({}, [&] { addCustomer(QString::number(copy)); }));
  }
  EXPECT_EQ(said, 1);
  EXPECT_TRUE(notices()[0].contains("Another program keeps putting copies"));
  closeDoc(session);
  EXPECT_EQ(stored(path("Work.pdr"))->all<Customer>().size(), 521U);
  QFile::setPermissions(path("Work.pdr"), QFile::ReadOwner);
  Disk disk;
  disk.locks = Disk::Locks::None;
  open("Work.pdr");
  EXPECT_TRUE(notices()[0].contains("lies where no program can keep others out"));
  closeDoc(session);
  const OrdinaryUser user;
  open("Work.pdr");
  EXPECT_EQ(notices(), QStringList{"“" + path("Work.pdr") +
                                   "” may only be read. What you change here is not stored in it."});
  EXPECT_THAT(actions(), ElementsAre("Save a Copy…"));
}

TEST_F(Saving, WhileTimeRunsASignOfLifeIsStoredAndNeverALength) {
  write(path("Work.pdr"));
  open("Work.pdr");
  periodicSave(session);
  EXPECT_EQ(session.settings()->aliveAt(), std::nullopt) << "no time runs";
  closeDoc(session);
  Activity& activity = openWithRunningTimer();
  {
    Launch launch(session, {.between = std::chrono::hours(1)});
    launch.launch();
    std::ignore = session.context()->edit({}, [&] { activity.addEntry(); });
    EXPECT_TRUE(eventually([&] { return session.settings()->aliveAt() == clock.now(); })) << "at once";
    clock.advance(3600);
    std::ignore = session.context()->edit({}, [&] { activity.addEntry(); });
    EXPECT_FALSE(eventually([&] { return session.settings()->aliveAt() == clock.now(); }, 30)) << "and then";
  }
  EXPECT_EQ(SavePace().between, std::chrono::seconds(120));
  EXPECT_EQ(SavePace().untilAnotherTry, std::chrono::seconds(1));
  Launch launch(session, {.between = std::chrono::milliseconds(5)});
  launch.launch();
  const ModalDepth::Run asking(modals);
  EXPECT_TRUE(eventually([&] { return session.settings()->aliveAt() == clock.now(); }))
      << "also beside a question";
  EXPECT_EQ(session.context()->undoStack().undoName(), "") << "no step of anybody's";
  EXPECT_FALSE(session.context()->hasChanges());
  session.close();  // as if the program had been killed
  const auto left = stored(path("Work.pdr"));
  EXPECT_EQ(left->all<TimeEntry>()[0]->duration(), std::nullopt);
  EXPECT_EQ(left->all<TimeEntry>()[0]->running(), true);
}

}  // namespace
}  // namespace pendra
