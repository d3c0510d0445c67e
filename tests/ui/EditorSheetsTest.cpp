#include <gtest/gtest.h>

#include <QTest>

#include "ui/NotesEdit.h"

namespace pendra {
namespace {

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
