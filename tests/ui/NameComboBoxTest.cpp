#include "ui/NameComboBox.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include "ui/Buttons.h"
#include "ui/LeaveGuard.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

class NameField : public testing::Test {
 protected:
  NameField() {
    auto* column = new QVBoxLayout(&sheet);
    column->addWidget(&box);
    column->addWidget(&other);
    column->addWidget(&cancel);
    makeSheetButton(cancel);
    box.setRules({.names = [this] { return names; }});
    guard.watch(box, {.mayLeave =
                          [this] {
                            ++asked;
                            const bool may = answer();
                            if (may) box.accept();
                            return may;
                          },
                      .isTyped = [this] { return box.isTyped(); }});
    sheet.show();
    sheet.activateWindow();
    box.setFocus();
    std::ignore = QTest::qWaitForWindowActive(&sheet);
  }
  void type(const QString& text) { QTest::keyClicks(sheet.focusWidget(), text); }
  void key(Qt::Key key) { QTest::keyClick(sheet.focusWidget(), key); }
  void settle() { QCoreApplication::processEvents(); }

  QStringList names{u"Acme"_s, u"Ärger GmbH"_s, u"Bäckerei"_s};
  int asked = 0;
  QDialog sheet;
  NameComboBox box{&sheet};
  QLineEdit other{&sheet};
  QPushButton cancel{u"Cancel"_s, &sheet};
  LeaveGuard& guard = *new LeaveGuard(sheet);
  std::function<bool()> answer = [this] { return box.text().isEmpty() || names.contains(box.text()); };
};

TEST_F(NameField, CompletesWithTheRestSelected) {
  type(u"ac"_s);
  EXPECT_EQ(box.text(), u"Acme"_s);
  EXPECT_EQ(box.lineEdit()->selectedText(), u"me"_s);
  type(u"x"_s);
  EXPECT_EQ(box.text(), u"Acx"_s);
  box.setText({});
  type(u"ac"_s);
  key(Qt::Key_Backspace);
  EXPECT_EQ(box.text(), u"Ac"_s) << "deleting does not complete again";
}

TEST_F(NameField, AnAcceptedTabAsksOnceAndReportsTheName) {
  QSignalSpy picks(&box, &NameComboBox::picked);
  type(u"ac"_s);
  key(Qt::Key_Tab);
  settle();
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(picks.count(), 1);
  EXPECT_TRUE(other.hasFocus());
}

TEST_F(NameField, TabReachesAFieldThatTheAnswerEnablesAlsoFromTheOpenList) {
  for (const bool listOpens : {false, true}) {
    box.setRules({.names = [this] { return names; }, .opensListWhileTyping = listOpens});
    other.setEnabled(false);
    answer = [this] {
      other.setEnabled(true);
      return true;
    };
    box.setFocus();
    box.setText({});
    type(u"nobody"_s);
    QWidget* list = QApplication::activePopupWidget();
    EXPECT_EQ(list != nullptr, listOpens);
    QTest::keyClick(list ? list : sheet.focusWidget(), Qt::Key_Tab);
    settle();
    EXPECT_TRUE(other.hasFocus());
  }
  EXPECT_EQ(asked, 2);
}

TEST_F(NameField, AClickElsewhereIsRefusedAndTheFocusComesBack) {
  type(u"nobody"_s);
  other.setFocus(Qt::MouseFocusReason);
  settle();
  EXPECT_EQ(asked, 1);
  EXPECT_TRUE(box.lineEdit()->hasFocus());
}

TEST_F(NameField, AWindowIsFinishedOnceWhatWasTypedIsAccepted) {
  EXPECT_TRUE(guard.mayFinish());
  EXPECT_EQ(asked, 0) << "nothing was typed";
  type(u"nobody"_s);
  cancel.setFocus(Qt::ActiveWindowFocusReason);
  EXPECT_FALSE(guard.mayFinish());
  EXPECT_TRUE(box.lineEdit()->hasFocus());
  EXPECT_EQ(box.lineEdit()->selectedText(), u"nobody"_s);
  answer = [] { return true; };
  EXPECT_TRUE(guard.mayFinish());
  EXPECT_TRUE(guard.mayFinish());
  EXPECT_EQ(asked, 2) << "not again about what was accepted";
}

TEST_F(NameField, AQuestionWithinTheQuestionIsNotAsked) {
  answer = [this] {
    other.setFocus();
    QCoreApplication::processEvents();
    return guard.mayFinish();
  };
  type(u"nobody"_s);
  key(Qt::Key_Tab);
  settle();
  EXPECT_EQ(asked, 1);
}

TEST_F(NameField, WritingATextTellsNobody) {
  QSignalSpy edits(&box, &NameComboBox::textEdited);
  QSignalSpy picks(&box, &NameComboBox::picked);
  box.setText(u"Acme"_s);
  key(Qt::Key_Tab);
  settle();
  EXPECT_EQ(edits.count() + picks.count(), 0);
}

TEST_F(NameField, BackspaceOnTheLastCharacterClosesTheOpenList) {
  box.setRules({.names = [this] { return names; }, .opensListWhileTyping = true});
  type(u"x"_s);
  QWidget* list = QApplication::activePopupWidget();
  ASSERT_NE(list, nullptr);
  QTest::keyClick(list, Qt::Key_Backspace);
  EXPECT_FALSE(list->isVisible());
  EXPECT_EQ(box.text(), u""_s);
}

}  // namespace
}  // namespace pendra
