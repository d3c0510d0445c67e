#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "support/CellText.h"
#include "support/Rows.h"
#include "support/TestSession.h"
#include "ui/EditorSheets.h"
#include "ui/NameComboBox.h"
#include "ui/NotesEdit.h"
#include "ui/TimeEntriesTable.h"

namespace pendra {
namespace {

/// Finds a control by the name that assistive technology knows it by.
template <class Widget>
Widget& named(const QWidget& sheet, const char* accessibleName) {
  for (auto* widget : sheet.findChildren<Widget*>()) {
    if (widget->accessibleName() == accessibleName) return *widget;
  }
  throw std::runtime_error(accessibleName);
}

class ActivitySheetInAWindow : public testing::Test {
 protected:
  ActivitySheetInAWindow() {
    test.openDocument();
    acme = &test.addCustomer("Acme");
    activity = &test.addActivity(acme, &test.addService("Design"), &test.addJob(*acme, "Roof"));
    test.addPeriod(*activity, "2026-11-23T12:00:00Z", 3600);
    sheet = std::make_unique<ActivitySheet>(test.session, nullptr);
    ended = -1;
    QObject::connect(sheet.get(), &QDialog::finished, sheet.get(), [this](int code) { ended = code; });
  }
  void edit() {
    ActivityEditor& controller = sheet->controller();
    controller.setCurrentActivity(activity);
    controller.reloadNames();
    controller.reloadData();
    controller.setShouldDisplayPastTimeEntries(true);
    controller.setLabels(false);
    show();
  }
  void show() {
    sheet->show();
    sheet->activateWindow();
    std::ignore = QTest::qWaitForWindowActive(sheet.get());
  }
  /// Types into whatever has the focus, as a keyboard does.
  void key(Qt::Key key) { QTest::keyClick(sheet->focusWidget(), key); }
  void type(const QString& text) { QTest::keyClicks(sheet->focusWidget(), text); }
  NameComboBox& popup(const char* name) { return named<NameComboBox>(*sheet, name); }
  QLineEdit& field(const char* name) { return named<QLineEdit>(*sheet, name); }
  QPushButton& button(const char* name) { return named<QPushButton>(*sheet, name); }
  static void settle() { QCoreApplication::processEvents(); }

  TestSession test;
  Customer* acme = nullptr;
  Activity* activity = nullptr;
  std::unique_ptr<ActivitySheet> sheet;
  int ended = -1;
};

TEST_F(ActivitySheetInAWindow, AnUnknownNameIsAskedAboutOnceAndKeepsTheFocus) {
  edit();
  popup("Customer").setFocus();
  popup("Customer").lineEdit()->selectAll();
  type("Nobody");
  test.alerts.willAnswer({"Cancel"});
  key(Qt::Key_Tab);
  settle();
  EXPECT_EQ(test.alerts.messages(), QStringList{"Add \"Nobody\" to the Customers list?"});
  EXPECT_TRUE(popup("Customer").hasFocus());
  test.alerts.willAnswer({"OK"});
  key(Qt::Key_Tab);
  settle();
  EXPECT_EQ(sheet->focusWidget(), &popup("Job"));
  EXPECT_EQ(popup("Job").text(), "") << "another customer has other jobs";
  EXPECT_EQ(test.alerts.unasked(), 0u);
}

TEST_F(ActivitySheetInAWindow, LeavingAnyFieldAsksAboutTheJob) {
  edit();
  popup("Job").setText("Attic");
  for (QWidget* left : {static_cast<QWidget*>(&field("Start date")),
                        static_cast<QWidget*>(&named<NotesEdit>(*sheet, "Activity notes"))}) {
    sheet->controller().enableTimeEditFields(true);
    left->setFocus();
    settle();
    test.alerts.forget();
    test.alerts.willAnswer({"Cancel"});
    key(Qt::Key_Tab);
    settle();
    EXPECT_EQ(test.alerts.messages(), QStringList{"Add \"Attic\" to the Jobs list?"});
    EXPECT_TRUE(left->hasFocus());
    popup("Job").setText("Roof");
    button("Cancel").setFocus();
    settle();
    popup("Job").setText("Attic");
  }
}

TEST_F(ActivitySheetInAWindow, CancelAndEscapeAskNothing) {
  for (const bool byKey : {true, false}) {
    edit();
    popup("Customer").setFocus();
    popup("Customer").lineEdit()->selectAll();
    type("Nobody");
    if (byKey) {
      key(Qt::Key_Escape);
    } else {
      QTest::mouseClick(&button("Cancel"), Qt::LeftButton);
    }
    settle();
    EXPECT_EQ(ended, EditorSheet::kCancelled);
    EXPECT_TRUE(test.alerts.shown().empty());
    ended = -1;
  }
}

TEST_F(ActivitySheetInAWindow, ReturnIsOKOnlyWhereOKIsEnabled) {
  sheet->controller().setLabels(true);
  show();
  popup("Customer").setFocus();
  type("Acme");
  key(Qt::Key_Return);
  EXPECT_EQ(ended, -1);
  popup("Service").setFocus();
  settle();
  type("Des");
  EXPECT_EQ(popup("Service").text(), "Design");
  EXPECT_FALSE(button("Add").isEnabled());
  key(Qt::Key_Tab);
  settle();
  EXPECT_TRUE(button("Add").isEnabled());
  key(Qt::Key_Return);
  EXPECT_EQ(ended, EditorSheet::kAccepted);
}

TEST_F(ActivitySheetInAWindow, AServiceThatCameBeforeTheCustomerIsLookedAtAgain) {
  sheet->controller().setLabels(true);
  test.addCustomer("Without jobs");
  sheet->controller().reloadNames();
  show();
  popup("Service").setText("Design");
  popup("Customer").setFocus();
  type("Without jobs");
  key(Qt::Key_Tab);
  settle();
  EXPECT_FALSE(button("Add").isEnabled()) << "a customer without jobs does not look at the service";
  popup("Service").setFocus();
  settle();
  key(Qt::Key_Tab);
  settle();
  EXPECT_TRUE(button("Add").isEnabled());
}

TEST_F(ActivitySheetInAWindow, OnlyAPersonsEditsEnableApply) {
  edit();
  auto& table = named<TimeEntriesTable>(*sheet, "Time entries");
  table.selectRow(0);
  EXPECT_EQ(field("Start time").text(), "1:00");
  EXPECT_FALSE(button("Apply").isEnabled());
  named<NotesEdit>(*sheet, "Activity notes").setFocus();
  type("x");
  EXPECT_FALSE(button("Apply").isEnabled());
  field("Duration").setFocus();
  type("3");
  EXPECT_TRUE(button("Apply").isEnabled());
}

TEST_F(ActivitySheetInAWindow, ANoteIsTypedOverInItsCell) {
  edit();
  auto& table = named<TimeEntriesTable>(*sheet, "Time entries");
  EXPECT_EQ(cellText(sheet->controller().rows(), u"notes", 0), "Double-click to edit...");
  table.editCell("notes", 0);
  auto* editor = table.viewport()->findChild<QLineEdit*>();
  ASSERT_NE(editor, nullptr);
  EXPECT_EQ(editor->text(), "");
  QTest::keyClicks(editor, "Call");
  QTest::keyClick(editor, Qt::Key_Return);
  settle();
  EXPECT_EQ(activity->entries()[0]->notes(), "Call");
  EXPECT_EQ(ended, -1) << "the Return of a cell is not the sheet's";
}

TEST_F(ActivitySheetInAWindow, OKTakesTheNoteThatIsStillBeingTyped) {
  edit();
  auto& table = named<TimeEntriesTable>(*sheet, "Time entries");
  table.editCell("notes", 0);
  QTest::keyClicks(table.viewport()->findChild<QLineEdit*>(), "Call");
  QTest::mouseClick(&button("Save"), Qt::LeftButton);
  settle();
  EXPECT_EQ(activity->entries()[0]->notes(), "Call");
  EXPECT_EQ(ended, EditorSheet::kAccepted);
}

TEST_F(ActivitySheetInAWindow, TheAreaOfEntriesKeepsTheTopEdge) {
  sheet->controller().setLabels(true);
  show();
  const QRect shrunk = sheet->geometry();
  sheet->controller().setShouldDisplayPastTimeEntries(true);
  EXPECT_GT(sheet->height(), shrunk.height() + 150);
  EXPECT_EQ(sheet->geometry().topLeft(), shrunk.topLeft());
  sheet->controller().setShouldDisplayPastTimeEntries(false);
  EXPECT_EQ(sheet->geometry(), shrunk);
}

TEST(NotesEdit, BreaksLinesAlikeHoweverTheyWereTyped) {
  NotesEdit edit;
  edit.setNote("one");
  QTest::keyClick(&edit, Qt::Key_Return, Qt::ShiftModifier);
  QTest::keyClicks(&edit, "two");
  EXPECT_EQ(edit.note(), "one\ntwo");
}

TEST(NotesEdit, GivesBackToTheCharacterWhatNobodyEdited) {
  NotesEdit edit;
  const QString note = u"a\u00a0b\r\nc\td\u2029e"_qs;
  edit.setNote(note);
  EXPECT_EQ(edit.note(), note);
  QTest::keyClicks(&edit, "x");
  EXPECT_EQ(edit.note(), u"a\u00a0b\nc\td\nex"_qs);
}

}  // namespace
}  // namespace pendra
