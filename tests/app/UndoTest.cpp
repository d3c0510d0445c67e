#include <gmock/gmock.h>

#include "RunningProgram.h"
#include "support/Events.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

/// "Acme - Design" with three entries of an hour, of which the first was sent, and "Zed" with none.
void fillTwo(ObjectContext& context, DocumentSettings&) {
  for (const char* name : {"Acme", "Zed"}) {
    auto& customer = context.insert<Customer>();
    customer.setName(QString::fromLatin1(name));
    auto& activity = context.insert<Activity>();
    activity.setCustomer(&customer);
  }
  Activity& first = *context.all<Activity>()[0];
  auto& service = context.insert<Service>();
  service.setName(u"Design"_s);
  first.setService(&service);
  for (int hour = 0; hour < 3; ++hour) {
    TimeEntry& entry = first.addEntry();
    entry.setStart(instantOf("2026-11-23T09:00:00Z") + hour * 3600.0);
    entry.setDuration(3600);
  }
}

class Undo : public testing::Test {
 protected:
  void key(Qt::KeyboardModifiers modifiers = Qt::ControlModifier) {
    comeBack();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Z, modifiers);
  }
  /// The window is the active one again, and the keyboard is in it.
  void comeBack() {
    program.window().activateWindow();
    ASSERT_TRUE(eventually([this] { return program.window().isAncestorOf(QApplication::focusWidget()); }));
  }
  void redoByKey() { key(Qt::ControlModifier | Qt::ShiftModifier); }
  Objects<TimeEntry> entries() { return program.context().all<TimeEntry>(); }
  int rowsOfLog() { return program.timer().log().table().model()->rowCount(); }
  void answer(const QString& button) {
    ASSERT_TRUE(program.alert());
    EXPECT_TRUE(RunningProgram::press(*program.alert(), button));
  }
  void answerWhenAsked(const QString& button) {
    QTimer::singleShot(0, &program.window(), [this, button] { answer(button); });
  }

  RunningProgram program{&fillTwo, false};
};

TEST_F(Undo, TakesBackWhatAHandDidByMenuByKeyAndByNotice) {
  EXPECT_EQ(program.item(program.window(), u"Undo"_s)->text(), u"&Undo"_s);
  EXPECT_FALSE(program.item(program.window(), u"Undo"_s)->isEnabled());
  EXPECT_EQ(program.choose(u"Redo"_s), u"Redo (off)"_s);

  // A timer that was stopped by mistake runs on as if it had not been stopped.
  program.activities().selectRow(0);
  program.choose(u"Start or Stop"_s);
  program.clock.advance(600);
  program.choose(u"Start or Stop"_s);
  EXPECT_EQ(entries()[3]->duration(), 600);
  program.clock.advance(60);
  EXPECT_EQ(program.choose(u"Undo"_s), u"Undo Stop"_s);
  EXPECT_EQ(entries()[3]->running(), true);
  EXPECT_EQ(entries()[3]->length(), 660);
  EXPECT_EQ(program.label("elapsedTimeDisplay"), u"00:11:00"_s);
  EXPECT_EQ(program.notice(), u"“Acme - Design” runs on, 00:11:00 by now."_s);
  redoByKey();
  EXPECT_EQ(entries()[3]->duration(), 600) << "redone as it was, not stopped anew";
  key();
  key();
  EXPECT_EQ(entries().size(), 3U);
  EXPECT_EQ(rowsOfLog(), 3);
  EXPECT_EQ(program.item(program.window(), u"Redo"_s)->text(), u"&Redo Start"_s);
  EXPECT_EQ(program.notice(), u"“Undo Start” took 00:11:00 of “Acme - Design” away."_s);
  EXPECT_TRUE(RunningProgram::press(program.window(), u"Redo"_s));
  EXPECT_EQ(entries()[3]->length(), 660);
  key();

  program.choose(u"Mark Complete"_s);
  EXPECT_EQ(program.notice(),
            u"“Acme - Design” is complete. You find it again under Activity > Completed Activities."_s);
  EXPECT_EQ(program.activities().model()->rowCount(), 1);
  EXPECT_EQ(program.choose(u"Redo"_s), u"Redo (off)"_s);
  EXPECT_TRUE(RunningProgram::press(program.window(), u"Undo"_s));
  EXPECT_EQ(program.activities().model()->rowCount(), 2);
  EXPECT_TRUE(program.notice().isEmpty());

  program.timer().log().table().setFocus();
  program.timer().log().table().selectAll();
  program.choose(u"Delete"_s);
  program.choose(u"Redo"_s);
  EXPECT_EQ(entries().size(), 3U) << "nothing is done again while a question stands";
  EXPECT_EQ(program.activities().model()->rowCount(), 2);
  answer(u"Delete"_s);
  EXPECT_EQ(rowsOfLog(), 0);
  EXPECT_EQ(program.notice(), u"3 time entries were deleted."_s);
  EXPECT_EQ(program.choose(u"Undo"_s), u"Undo Delete of 3 Entries"_s);
  EXPECT_EQ(rowsOfLog(), 3);
  EXPECT_EQ(entries()[2]->storedDuration(), 3600);

  program.timer().state().log().selectEntry(entries()[1]);
  QTimer::singleShot(0, &program.window(), [this] {
    QWidget& sheet = *QApplication::activeModalWidget();
    for (QLineEdit* field : sheet.findChildren<QLineEdit*>()) {
      if (field->accessibleName() != u"Duration"_s || !field->isVisible()) continue;
      field->setFocus();
      field->selectAll();
      QTest::keyClicks(field, u"02:30:00"_s);
    }
    EXPECT_TRUE(RunningProgram::press(sheet, u"OK"_s));
  });
  program.choose(u"Edit Selected"_s);
  EXPECT_EQ(entries()[1]->storedDuration(), 9000);
  key();
  EXPECT_EQ(entries()[1]->storedDuration(), 3600) << "a correction goes back too";

  comeBack();
  program.activities().setFocus();
  program.activities().selectRow(0);
  program.choose(u"Delete"_s);
  answer(u"Delete"_s);
  EXPECT_EQ(program.notice(), u"“Acme - Design” was deleted with all its time entries."_s);
  key();
  EXPECT_EQ(program.activities().model()->rowCount(), 2);
  EXPECT_EQ(rowsOfLog(), 3);
  EXPECT_FALSE(program.context().hasChanges()) << "each step back is stored like an edit";
}

TEST_F(Undo, LeavesAloneWhatWasSentSince) {
  const Instant sent = instantOf("2026-11-23T18:00:00Z");
  std::ignore =
      program.context().edit({}, {.undoable = false}, [&] { entries()[0]->setDateSubmitted(sent); });
  program.timer().log().table().setFocus();
  program.timer().state().log().selectEntry(entries()[0]);
  answerWhenAsked(u"Continue"_s);
  program.choose(u"Mark as Unsent"_s);
  EXPECT_EQ(entries()[0]->dateSubmitted(), kReferenceInstant);
  EXPECT_EQ(program.choose(u"Undo"_s), u"Undo Mark as Unsent"_s);
  EXPECT_EQ(entries()[0]->dateSubmitted(), sent);
  redoByKey();
  EXPECT_EQ(entries()[0]->dateSubmitted(), kReferenceInstant) << "what was agreed to holds again";
  key();

  answerWhenAsked(u"Continue"_s);
  program.choose(u"Mark as Unsent"_s);
  std::ignore =
      program.context().edit({}, {.undoable = false}, [&] { entries()[0]->setDateSubmitted(sent + 60); });
  key();
  EXPECT_EQ(entries()[0]->dateSubmitted(), sent + 60);
  EXPECT_EQ(program.notice(),
            u"“Undo Mark as Unsent” left alone what has been sent or changed since: a time "
            "entry of “Acme - Design”."_s);
}

TEST_F(Undo, MarksWhatCameBackWithoutAName) {
  ObjectContext& context = program.context();
  program.activities().selectRow(0);
  program.choose(u"Delete"_s);
  answer(u"Delete"_s);
  std::ignore =
      context.edit({}, {.undoable = false}, [&] { context.deleteObject(*context.all<Customer>()[0]); });
  key();
  EXPECT_EQ(rowsOfLog(), 3);
  const Activity& back = *context.all<Activity>()[0];
  EXPECT_TRUE(back.loss().customer && !back.loss().service);
  EXPECT_EQ(program.notice(),
            u"“Undo Delete of an Activity” left alone what has been sent or changed since: “Design”."_s);
  EXPECT_FALSE(context.hasChanges());
}

TEST_F(Undo, TakesBackWhatWasDoneInASheetThatWasCancelled) {
  program.activities().selectRow(0);
  QTimer::singleShot(0, &program.window(), [] {
    QWidget* sheet = QApplication::activeModalWidget();
    ASSERT_TRUE(sheet);
    EXPECT_TRUE(RunningProgram::press(*sheet, u"Add time entry"_s));
    EXPECT_TRUE(RunningProgram::press(*sheet, u"Cancel"_s));
  });
  program.timer().editActivity();
  EXPECT_EQ(entries().size(), 4U);
  program.item(program.window(), u"Undo"_s)->trigger();  // as its key does, with no menu open
  EXPECT_EQ(entries().size(), 3U);
}

TEST_F(Undo, LeavesAFieldItsOwnTextFirst) {
  program.activities().selectRow(0);
  program.choose(u"Start or Stop"_s);
  auto* from = program.window().findChild<QLineEdit*>(u"startDateField"_s);
  ASSERT_TRUE(from);
  from->setFocus();
  QTest::keyClicks(from, u"today"_s);
  EXPECT_EQ(program.choose(u"Undo"_s), u"Undo Typing"_s);
  while (from->isUndoAvailable()) key();
  EXPECT_TRUE(from->text().isEmpty());
  EXPECT_EQ(entries().size(), 4U);
  key();
  EXPECT_EQ(entries().size(), 3U) << "a field without text of its own leaves the key to the document";
}

}  // namespace
}  // namespace pendra
