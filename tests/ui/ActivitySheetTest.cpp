#include <gtest/gtest.h>

#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>

#include "Desk.h"
#include "store/UndoStack.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

const QString kActivities = u"Activities"_s;
const QString kEntries = u"Time entries"_s;
const QString kCustomer = u"Customer"_s;
const QString kJob = u"Job"_s;
const QString kService = u"Service"_s;
const QString kNotes = u"Activity notes"_s;
const QString kDuration = u"Duration"_s;
const QString kAdd = u"Add"_s;
const QString kSave = u"Save"_s;
const QString kCancel = u"Cancel"_s;

class ActivitySheetAtTheDesk : public testing::Test {
 protected:
  explicit ActivitySheetAtTheDesk(bool standalone = true) : desk(standalone) {
    acme = &desk.addCustomer(u"Acme"_s);
    desk.addCustomer(u"Zenith"_s);
    plans =
        &desk.addActivity(acme, &desk.addService(u"Design"_s), &desk.addJob(*acme, u"Roof"_s), u"Plans"_s);
    entry = &desk.addEntry(*plans, "2026-11-23T12:00:30Z", 3659);
    desk.sitDown();
  }
  void add(Desk::Steps steps) { desk.press(u"Add activity"_s, std::move(steps)); }
  void edit(Desk::Steps steps, int row = 0) { desk.pressCell(kActivities, row, u"Edit"_s, std::move(steps)); }
  [[nodiscard]] QString activity(int row = 0) { return desk.row(kActivities, row); }
  [[nodiscard]] std::size_t activitiesOnDisk() {
    std::size_t count = 0;
    desk.onDisk([&](const ObjectContext& file) { count = file.all<Activity>().size(); });
    return count;
  }

  Desk desk;
  Customer* acme = nullptr;
  Activity* plans = nullptr;
  TimeEntry* entry = nullptr;
};

class LinkedActivitySheetAtTheDesk : public ActivitySheetAtTheDesk {
 protected:
  LinkedActivitySheetAtTheDesk() : ActivitySheetAtTheDesk(false) {}
};

TEST_F(ActivitySheetAtTheDesk, IsFilledFromTheActivityAndCancelLeavesIt) {
  const QString before = activity();
  edit([&] {
    EXPECT_EQ(desk.front().windowTitle(), "Edit Activity");
    EXPECT_EQ(desk.text(kCustomer), "Acme");
    EXPECT_EQ(desk.text(kJob), "Roof");
    EXPECT_EQ(desk.text(kService), "Design");
    EXPECT_EQ(desk.text(kNotes), "Plans");
    EXPECT_FALSE(desk.sees(u"Notes length"_s)) << "nothing limits them without Vantor";
    EXPECT_EQ(desk.focus(), kNotes);
    EXPECT_EQ(desk.row(kEntries, 0), "11/23/2026 13:00 01:00:59 Double-click to edit...");
    desk.type(u" and more"_s);
    desk.press(u"Billable"_s);
    desk.typeInto(kCustomer, u"Nobody"_s);
    desk.press(Qt::Key_Escape);
  });
  EXPECT_EQ(activity(), before);
  EXPECT_EQ(plans->billable(), true);
  EXPECT_TRUE(desk.alerts.shown().empty()) << "Cancel asks nothing";
}

TEST_F(ActivitySheetAtTheDesk, ANewActivityIsInTheDocumentFromOKOnAndRuns) {
  desk.select(kActivities, 0);
  add([&] {
    EXPECT_EQ(desk.focus(), kCustomer);
    EXPECT_EQ(desk.text(kNotes), "");
    EXPECT_FALSE(desk.sees(kEntries)) << "there are none yet";
    desk.typeInto(kCustomer, u"Acme"_s);
    desk.typeInto(kService, u"Design"_s);
    std::ignore = desk.session.context()->save();  // as at a signal
    EXPECT_EQ(activitiesOnDisk(), 1U) << "nothing half-made is stored";
    desk.press(kCancel);
  });
  EXPECT_EQ(desk.rows(kActivities), 1);
  EXPECT_EQ(desk.selectedRow(kActivities), 0);
  add([&] {
    EXPECT_EQ(desk.text(kCustomer), "");
    desk.typeInto(kCustomer, u"Zenith"_s);
    desk.typeInto(kService, u"Design"_s);
    desk.typeInto(kNotes, u"Tower"_s);
    desk.press(u"Billable"_s);
    desk.press(kAdd);
  });
  EXPECT_EQ(activity(1), "Stop Favourite Zenith Design Tower Edit Activity Complete 00:00:00 00:00:00");
  EXPECT_EQ(desk.selectedRow(kActivities), 1);
  EXPECT_EQ(desk.text(u"Selected activity"_s), "Zenith - Design");
  EXPECT_EQ(desk.rows(u"Time log"_s), 2);
  desk.onDisk([](const ObjectContext& file) {
    ASSERT_EQ(file.all<Activity>().size(), 2U);
    EXPECT_TRUE(file.all<Activity>()[1]->isRunning());
    EXPECT_EQ(file.all<Activity>()[1]->billable(), false);
  });
  desk.session.context()->undoStack().undo();
  EXPECT_EQ(desk.rows(kActivities), 1) << "one click is one step";
  EXPECT_EQ(desk.rows(u"Time log"_s), 1);
}

TEST_F(ActivitySheetAtTheDesk, AddSaysWhatIsMissing) {
  add([&] {
    EXPECT_EQ(desk.description(kAdd), "A customer and a service item are missing.");
    EXPECT_FALSE(desk.isEnabled(kAdd));
    desk.typeInto(kService, u"Design"_s);
    EXPECT_EQ(desk.text(u"What is missing"_s), "The customer is missing.");
    desk.press(Qt::Key_Return);
    desk.typeInto(kCustomer, u"Acme"_s);
    EXPECT_EQ(desk.description(kAdd), "");
    desk.typeInto(kService, u" "_s);
    EXPECT_EQ(desk.description(kAdd), "The service item is missing.");
    desk.press(kCancel);
  });
}

TEST_F(ActivitySheetAtTheDesk, ATypedLengthIsAppliedBeforeAnotherEntryIsShown) {
  TimeEntry* other = nullptr;
  std::ignore =
      desk.session.context()->edit({}, [&] { other = &desk.addEntry(*plans, "2026-11-24T07:00:00Z", 600); });
  edit([&] {
    desk.select(kEntries, 0);
    desk.typeInto(kDuration, u"2h"_s);
    desk.select(kEntries, 1);
    EXPECT_EQ(entry->duration(), 7200);
    EXPECT_EQ(desk.text(kDuration), "00:10:00");
    desk.typeInto(u"Start date"_s, u"13/45/26"_s);
    desk.select(kEntries, 0);
    EXPECT_EQ(desk.alerts.shown().back().message, "Please enter a valid date.");
    EXPECT_EQ(desk.selectedRow(kEntries), 1) << "what cannot be applied stays where it was typed";
    EXPECT_EQ(desk.text(u"Start date"_s), "13/45/26");
    desk.press(kCancel);
  });
  EXPECT_EQ(other->duration(), 600);
  EXPECT_EQ(desk.session.context()->undoStack().undoName(), "Edit of an Entry");
}

/// How a person finishes the sheet.
class EveryWayToFinish : public ActivitySheetAtTheDesk, public testing::WithParamInterface<const char*> {
 protected:
  void finish(const QString& button) {
    if (GetParam() == QByteArrayView("Click")) desk.press(button);
    if (GetParam() == QByteArrayView("Return")) desk.press(Qt::Key_Return);
    if (GetParam() != QByteArrayView("Tab")) return;
    desk.press(Qt::Key_Tab);
    if (desk.focus() != kCustomer) desk.press(button);  // else it was refused
  }
};

TEST_P(EveryWayToFinish, AsksAboutTheNameThatIsBeingTyped) {
  edit([&] {
    desk.typeInto(kCustomer, u"Nobody"_s);
    desk.alerts.willAnswer({kCancel});
    finish(kSave);
    EXPECT_EQ(desk.alerts.messages(), QStringList{u"Add \"Nobody\" to the Customers list?"_s});
    EXPECT_EQ(desk.focus(), kCustomer) << "and the keyboard stays in it";
    EXPECT_EQ(desk.text(kJob), "Roof");
    desk.alerts.willAnswer({u"OK"_s});
    finish(kSave);
  });
  EXPECT_EQ(desk.alerts.shown().size(), 2U);
  EXPECT_EQ(activity(), "Start Favourite Nobody Design Plans Edit Activity Complete 00:00:00 01:00:59");
}

INSTANTIATE_TEST_SUITE_P(Ways, EveryWayToFinish, testing::Values("Click", "Return", "Tab"),
                         [](const auto& row) { return std::string(row.param); });

TEST_F(LinkedActivitySheetAtTheDesk, ALinkedDocumentTakesNoNameThatVantorDoesNotHave) {
  add([&] {
    desk.typeInto(kService, u"Design"_s);
    desk.typeInto(kCustomer, u"Nobody"_s);
    desk.press(kAdd);
    EXPECT_EQ(desk.alerts.messages(), QStringList{u"Choose an existing customer"_s});
    desk.typeInto(kCustomer, u"Acme"_s);
    desk.press(kAdd);
  });
  EXPECT_EQ(desk.alerts.shown().size(), 1U);
  EXPECT_TRUE(queries::customersNamed(*desk.session.context(), u"Nobody"_s).empty());
  EXPECT_EQ(desk.cell(kActivities, 1, kCustomer), "Acme");
}

TEST_F(ActivitySheetAtTheDesk, AServiceItemThatIsNotOfferedSaysSoAndLeadsToTheList) {
  add([&] {
    EXPECT_FALSE(desk.sees(u"Service hint"_s));
    desk.typeInto(kCustomer, u"Acme"_s);
    desk.typeInto(kService, u"Work"_s);
    desk.alerts.willAnswer({u"OK"_s});
    desk.press(Qt::Key_Tab);
    EXPECT_EQ(desk.description(u"Service hint"_s), "“Work” is not offered in this list.");
    EXPECT_EQ(desk.focus(), kNotes) << "the hint does not stand in the way of who types on";
    EXPECT_EQ(desk.offered(kService), QStringList{u"Design"_s});
    desk.press(u"Service items"_s, [&] {
      EXPECT_EQ(desk.front().windowTitle(), "Service Items");
      desk.press(Qt::Key_N, Qt::ControlModifier);  // a command of its menus would fail the test
      desk.pressCell(u"Service items"_s, 1, u"Shown"_s);
      desk.front().close();
    });
    EXPECT_EQ(desk.front().windowTitle(), "Add Activity");
    EXPECT_FALSE(desk.sees(u"Service hint"_s));
    EXPECT_EQ(desk.offered(kService), (QStringList{u"Design"_s, u"Work"_s}));
    desk.press(kAdd);
  });
  EXPECT_EQ(desk.cell(kActivities, 1, kService), "Work");
}

TEST(AnEmptyDesk, SaysWhyAListIsEmpty) {
  Desk desk(false);
  desk.sitDown();
  desk.press(u"Add activity"_s, [&] {
    EXPECT_EQ(desk.description(u"Service hint"_s), "No service item is offered yet.");
    EXPECT_EQ(desk.offered(kService), QStringList{u"No service item is offered yet"_s});
    EXPECT_EQ(desk.text(kService), "");
    desk.press(kCancel);
  });
}

TEST_F(ActivitySheetAtTheDesk, AnActivityWithoutNamesIsNotShownWithThoseOfTheOneBefore) {
  Activity* bare = nullptr;
  desk.session.context()->fill([&] { bare = &desk.addActivity(nullptr, nullptr); });
  desk.timer().state().rebuild();
  edit([&] { desk.press(kCancel); });
  edit(
      [&] {
        EXPECT_EQ(desk.text(kCustomer) + desk.text(kJob) + desk.text(kService), "");
        EXPECT_FALSE(desk.isEnabled(kJob));
        EXPECT_EQ(desk.rows(kEntries), 0);
        EXPECT_FALSE(desk.isEnabled(kSave));
        desk.press(kCancel);
      },
      1);
  EXPECT_EQ(bare->customer(), nullptr);
}

TEST_F(ActivitySheetAtTheDesk, ANameThatTwoBearKeepsItsMeaning) {
  Activity* second = nullptr;
  desk.session.context()->fill(
      [&] { second = &desk.addActivity(&desk.addCustomer(u"Acme"_s), plans->service()); });
  desk.timer().state().rebuild();
  const Customer* other = second->customer();
  edit(
      [&] {
        desk.typeInto(kNotes, u"Typed"_s);
        desk.press(kSave);
      },
      1);
  EXPECT_EQ(second->notes(), "Typed");
  EXPECT_EQ(second->customer(), other);
}

TEST_F(ActivitySheetAtTheDesk, WhatIsDoneToEntriesStaysAfterCancelAndIsSeenBehind) {
  desk.select(kActivities, 0);
  desk.press(u"Start or stop timer"_s);
  desk.clock.advance(60);
  edit([&] {
    desk.select(kEntries, 0);
    EXPECT_EQ(desk.text(u"Start date"_s) + desk.text(u"Start time"_s) + desk.text(u"AM/PM"_s),
              "11/23/261:00PM");
    EXPECT_EQ(desk.text(kDuration), "01:00:59");
    EXPECT_FALSE(desk.isEnabled(u"Apply"_s));
    EXPECT_EQ(desk.description(kDuration), "") << "nothing is applied yet";
    desk.typeInto(kDuration, u"12:75:59"_s);
    EXPECT_EQ(desk.description(kDuration), "stored as 13 h 15 min, 59 s dropped. Ends Tue 24 Nov, 2:15.");
    EXPECT_EQ(desk.description(u"Start time"_s), "starts 13:00:00, 30 s dropped");
    desk.press(u"Apply"_s);
    EXPECT_EQ(desk.description(kDuration), "");
    EXPECT_EQ(desk.row(kEntries, 0), "11/23/2026 13:00 13:15:00 Double-click to edit...");
    EXPECT_EQ(desk.selectedRow(kEntries), 0);
    EXPECT_FALSE(desk.isEnabled(u"Apply"_s));
    desk.select(kEntries, 1);
    desk.alerts.willAnswer({kCancel, u"Delete"_s});
    desk.press(u"Delete time entry"_s);
    EXPECT_EQ(desk.rows(kEntries), 2);
    desk.press(Qt::Key_Delete);
    desk.press(u"Delete time entry"_s);
    EXPECT_EQ(desk.alerts.last().message, "Are you sure you want to delete this time event?");
    EXPECT_EQ(desk.rows(kEntries), 1);
    EXPECT_FALSE(desk.isEnabled(u"Delete time entry"_s));
    EXPECT_EQ(desk.text(kDuration), "");
    desk.press(kCancel);
  });
  EXPECT_EQ(activity(), "Start Favourite Acme Roof Design Plans Edit Activity Complete 00:00:00 13:15:00");
  EXPECT_EQ(desk.description(u"Start or stop timer"_s), "Start") << "the entry that ran has gone";
  EXPECT_EQ(desk.rows(u"Time log"_s), 1);
  EXPECT_EQ(desk.cell(u"Time log"_s, 0, kDuration), "13:15:00");
}

TEST_F(ActivitySheetAtTheDesk, ANewOrDeletedEntryTakesNothingAwayThatIsBeingTyped) {
  edit([&] {
    desk.typeInto(kCustomer, u"Zenith"_s);
    desk.editCell(kEntries, 0, u"Notes"_s);
    desk.type(u"Call"_s);
    desk.press(u"Add time entry"_s);
    EXPECT_EQ(desk.cell(kEntries, 0, u"Notes"_s), "Call");
    EXPECT_EQ(desk.selectedRow(kEntries), 1);
    EXPECT_EQ(desk.focus(), "Start date");
    EXPECT_EQ(desk.text(kCustomer), "Zenith");
    desk.typeInto(kDuration, u"2h30"_s);
    EXPECT_EQ(desk.description(u"Start time"_s), "starts 07:30:00") << "so that it ends now";
    desk.press(u"Add time entry"_s);
    EXPECT_EQ(desk.text(u"Start time"_s), "10:00") << "where the last one ends";
    EXPECT_EQ(desk.cell(kEntries, 1, kDuration), "02:30:00") << "what was typed is that entry's";
    desk.typeInto(kDuration, u"-1"_s);
    desk.press(u"Add time entry"_s);
    EXPECT_EQ(desk.rows(kEntries), 3) << "none before that is mended";
    desk.alerts.willAnswer({u"Delete"_s});
    desk.press(u"Delete time entry"_s);
    EXPECT_EQ(desk.rows(kEntries), 2);
    EXPECT_EQ(desk.text(kCustomer), "Zenith");
    desk.editCell(kEntries, 1, u"Notes"_s);
    desk.press(Qt::Key_Return);
    EXPECT_EQ(plans->entries()[1]->notes().value_or(""), "") << "the hint in the cell is no note";
    desk.editCell(kEntries, 1, u"Notes"_s);
    desk.type(u"Mail"_s);
    desk.press(Qt::Key_Return);
    EXPECT_TRUE(desk.front().isModal()) << "the Return of a cell is not the sheet's";
    desk.editCell(kEntries, 1, u"Notes"_s);
    desk.type(u"Letter"_s);
    desk.press(kSave);
  });
  EXPECT_EQ(activity(), "Start Favourite Zenith Design Plans Edit Activity Complete 02:30:00 03:30:59");
  desk.onDisk([](const ObjectContext& file) {
    EXPECT_EQ(file.all<TimeEntry>()[0]->notes(), "Call");
    EXPECT_EQ(file.all<TimeEntry>()[1]->notes(), "Letter");
  });
}

TEST_F(ActivitySheetAtTheDesk, OKAppliesThePendingTimesAndAFailedCheckKeepsTheSheetOpen) {
  edit([&] {
    desk.select(kEntries, 0);
    desk.typeInto(kDuration, u"-1"_s);
    desk.press(kSave);
    desk.typeInto(kDuration, u"2"_s);
    desk.typeInto(kJob, u" "_s);
    desk.press(kSave);
    EXPECT_EQ(desk.alerts.messages(),
              (QStringList{u"Time durations must be positive"_s, u"Please enter a proper job name."_s}));
    desk.typeInto(kJob, u"Roof"_s);
    desk.press(kSave);
  });
  EXPECT_EQ(entry->duration(), 7200);
  EXPECT_EQ(entry->start(), instantOf("2026-11-23T12:00:00Z"));
  EXPECT_EQ(desk.cell(u"Time log"_s, 0, kDuration), "02:00:00");
}

TEST_F(ActivitySheetAtTheDesk, ASentEntryKeepsItsTimesAndAnUnreadableStartKeepsTheOneBefore) {
  desk.session.context()->fill([&] {
    desk.addEntry(*plans, "2026-11-22T08:05:00Z", 60).setDateSubmitted(instantOf("2026-11-23T00:00:00Z"));
  });
  edit([&] {
    desk.select(kEntries, 1);
    EXPECT_FALSE(desk.isEnabled(kDuration));
    desk.select(kEntries, 0);
    desk.typeInto(u"AM/PM"_s, u"XX"_s);
    desk.press(u"Apply"_s);
    desk.press(kCancel);
  });
  EXPECT_EQ(entry->start(), instantOf("2026-11-23T12:00:30Z"));
  EXPECT_TRUE(desk.notices().last().contains(u"“11/23/26 1:00 XX”"_s)) << desk.notices().last().toStdString();
}

TEST_F(ActivitySheetAtTheDesk, NothingComesOfPastingOrDroppingWhatHasNoWords) {
  edit([&] {
    QGuiApplication::clipboard()->setMimeData(new QMimeData);
    for (const QString& field : {kCustomer, kNotes, kDuration}) {
      desk.named(field).setEnabled(true);
      desk.go(field);
      const QString before = desk.text(field);
      desk.press(Qt::Key_V, Qt::ControlModifier);
      QMimeData picture;
      picture.setImageData(QImage(2, 2, QImage::Format_RGB32));
      QDropEvent drop({3, 3}, Qt::CopyAction, &picture, Qt::LeftButton, Qt::NoModifier);
      QInputMethodEvent input;
      QApplication::sendEvent(QApplication::focusWidget(), &drop);
      QApplication::sendEvent(QApplication::focusWidget(), &input);
      EXPECT_EQ(desk.text(field), before);
    }
    desk.press(kCancel);
  });
}

TEST_F(LinkedActivitySheetAtTheDesk, CountsTheNoteAndWarnsOnceEver) {
  edit([&] {
    desk.typeInto(kNotes, QString(98, u'x'));
    desk.type(u"y"_s);
    EXPECT_EQ(desk.description(u"Notes length"_s), "99");
    EXPECT_TRUE(desk.alerts.shown().empty());
    desk.type(u"zz"_s);
    EXPECT_EQ(desk.alerts.messages(), QStringList{u"Note exceeds Vantor limits."_s});
    EXPECT_EQ(desk.defaults.text(u" PendraNoteLengthWarning"_s), "YES");
    desk.press(kCancel);
  });
}

}  // namespace
}  // namespace pendra
