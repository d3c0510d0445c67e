#include <QDateTime>

#include "DocumentTest.h"
#include "support/Events.h"
#include "support/FileSizeLimit.h"
#include "support/LogCapture.h"

namespace pendra {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Saving : public DocumentTest {
 protected:
  void addManyCustomers() {
    for (int i = 0; i < 500; ++i) addCustomer(QString(50, u'x'));
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
  EXPECT_THAT(windows.calls().mid(3), ElementsAre("close", "invalidateTracker"));
  EXPECT_EQ(stored(path("Work.pdr"))->all<TimeEntry>()[0]->duration(), 60);
  open("Work.pdr");
  addCustomer(QStringLiteral("Unsaved"));
  EXPECT_FALSE(eventually([&] { return !session.context()->hasChanges(); }, 30)) << "nothing saves any more";
}

TEST_F(Saving, ClosingLetsGoOfTheFileWithAndWithoutAWindow) {
  write(path("Work.pdr"));
  for (const bool hasWindow : {true, false}) {
    open("Work.pdr");
    if (!hasWindow) session.window = nullptr;
    EXPECT_EQ(stored(path("Work.pdr")), nullptr) << "it is held";
    session.context()->all<Customer>()[0]->setName(hasWindow ? "In a window" : "In none");
    if (hasWindow) {
      windows.close();
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
                                     "” could not be saved: File too large. It is tried again."});
    EXPECT_EQ(posted, 1) << "not at every command";
  }
  EXPECT_TRUE(eventually([&] { return !session.saveState().notSavedSince; })) << "tried again unasked";
  EXPECT_EQ(session.saveState().savedAt, clock.now());
  EXPECT_THAT(notices(), IsEmpty());
  EXPECT_FALSE(session.context()->hasChanges());
}

TEST_F(Saving, WhatCannotBeStoredIsClosedOnlyAtTheSecondTry) {
  write(path("Work.pdr"));
  open("Work.pdr");
  const auto context = session.context();
  addCustomer(QStringLiteral("Not stored"));
  putAnotherFileInPlaceOfWork();
  const LogCapture log;
  closeDoc(session);
  EXPECT_EQ(session.context(), context);
  EXPECT_NE(session.window, nullptr);
  EXPECT_TRUE(notices()[0].contains("stays open"));
  EXPECT_EQ(log.lines().size(), 1);
  EXPECT_TRUE(mayCloseWindow(session)) << "the second try knows";
  QFile::remove(path("Work.pdr"));
  EXPECT_TRUE(mayCloseWindow(session)) << "and a save that succeeds";
  EXPECT_THAT(notices(), IsEmpty());
  putAnotherFileInPlaceOfWork();
  addCustomer(QStringLiteral("Not stored either"));
  EXPECT_FALSE(mayCloseWindow(session)) << "is the end of what the user knew";
  addCustomer(QStringLiteral("Typed after that"));
  EXPECT_FALSE(mayCloseWindow(session)) << "and so is new work";
  closeDoc(session);
  EXPECT_EQ(session.document(), nullptr);
  EXPECT_THAT(notices(), IsEmpty()) << "nothing is said of a document that is closed";
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
