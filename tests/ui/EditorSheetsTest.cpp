#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTest>

#include "support/TestSession.h"
#include "ui/EditorSheets.h"
#include "ui/NotesEdit.h"

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
