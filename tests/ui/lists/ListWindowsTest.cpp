#include "ui/ListWindows.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTest>

#include "../NoCommands.h"
#include "support/TestSession.h"
#include "ui/RowTableView.h"
#include "ui_core/ListEditor.h"

namespace pendra {
namespace {

class ListWindows : public testing::Test, protected TestSession {
 protected:
  void open(bool standalone = true, bool services = false) {
    openDocument(standalone);
    for (const char* name : {"Acme", "Best", "Zed"}) {
      addJob(addCustomer(QString::fromUtf8(name)), QString("Job of " + QString::fromUtf8(name)));
      addService(QString::fromUtf8(name));
    }
    window = (services ? makeServicesList : makeCustomerList)({session, commands});
    window->bringToFront();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
  }
  template <class T>
  T* named(const char* accessibleName) const {
    for (T* child : window->findChildren<T*>()) {
      if (child->accessibleName() == QString::fromUtf8(accessibleName)) return child;
    }
    ADD_FAILURE() << "nothing is called " << accessibleName;
    return nullptr;
  }
  RowTableView* table() const { return window->findChild<RowTableView*>(); }
  QString cell(int row, int column) const { return table()->model()->index(row, column).data().toString(); }
  /// Presses a key where the keyboard is, and waits for what it sets off: the editor closes, its text is
  /// stored, a refused one is opened again, each in a turn of its own.
  void press(Qt::Key key) {
    QTest::keyClick(QApplication::focusWidget(), key);
    for (int turn = 0; turn < 3; ++turn) QCoreApplication::processEvents();
  }
  void type(const QString& text) { QTest::keyClicks(QApplication::focusWidget(), text); }

  NoCommands commands;
  std::unique_ptr<ListEditorWindow> window;
};

TEST_F(ListWindows, AreKeptByKeyboardAlone) {
  open();
  QTest::mouseClick(named<QPushButton>("Add customer"), Qt::LeftButton);
  type(QStringLiteral("Moon"));
  press(Qt::Key_Return);
  EXPECT_EQ(queries::customersNamed(*session.context(), QStringLiteral("Moon")).size(), 1U);
  table()->setFocus();
  EXPECT_EQ(cell(table()->selectedRow(), 0), "Moon") << "the selection follows it to its place";
  press(Qt::Key_Space);
  EXPECT_EQ(queries::customersNamed(*session.context(), QStringLiteral("Moon"))[0]->shown(), false);
  QTest::mouseClick(named<QPushButton>("Add job"), Qt::LeftButton);
  type(QStringLiteral("Landing"));
  press(Qt::Key_Return);
  EXPECT_EQ(session.context()->all<Job>()[3]->name(), "Landing");
  table()->setFocus();
  press(Qt::Key_F2);
  type(QStringLiteral("Start"));
  press(Qt::Key_Return);
  EXPECT_EQ(session.context()->all<Job>()[3]->name(), "Start");
}

TEST_F(ListWindows, TakeEveryNameHoweverFastTheKeysCome) {
  open();
  const auto strike = [](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  };
  strike(Qt::Key_C, Qt::AltModifier);
  type(QStringLiteral("Moon"));
  strike(Qt::Key_Return);
  strike(Qt::Key_C, Qt::AltModifier);
  type(QStringLiteral("Aster"));
  strike(Qt::Key_C, Qt::AltModifier);  // with the editor still open
  type(QStringLiteral("Nova"));
  strike(Qt::Key_Return);
  strike(Qt::Key_J, Qt::AltModifier);
  type(QStringLiteral("Landing"));
  window->closeUnasked();
  QStringList names;
  for (const Customer* customer : session.context()->all<Customer>()) names << *customer->name();
  EXPECT_EQ(names, QStringList({"Acme", "Best", "Zed", "Moon", "Aster", "Nova"}));
  const Job* job = session.context()->all<Job>()[3];
  EXPECT_EQ(job->name(), "Landing");
  EXPECT_EQ(job->customer()->name(), "Nova");
}

TEST_F(ListWindows, ANameThatIsRefusedHoldsUpWhatWasToFollow) {
  open();
  table()->selectRow(1);
  table()->setFocus();
  press(Qt::Key_F2);
  type(QStringLiteral("Zed"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_C, Qt::AltModifier);
  press(Qt::Key_Shift);
  EXPECT_EQ(alerts.messages(), QStringList("Zed already exists!"));
  EXPECT_EQ(session.context()->all<Customer>().size(), 3U) << "none was added";
}

TEST_F(ListWindows, StoreWhatIsBeingTypedWhenTheyAreAsked) {
  open();
  const std::shared_ptr<ObjectContext> context = session.context();
  table()->selectRow(0);
  table()->setFocus();
  press(Qt::Key_F2);
  type(QStringLiteral("Zed"));
  EXPECT_FALSE(window->finishEditing()) << "the name is yet to be mended";
  EXPECT_EQ(alerts.messages(), QStringList("Zed already exists!"));
  press(Qt::Key_Shift);
  type(QStringLiteral("Moon"));
  EXPECT_TRUE(window->finishEditing());
  EXPECT_EQ(queries::customersNamed(*context, QStringLiteral("Moon")).size(), 1U);
  press(Qt::Key_Escape);
  EXPECT_FALSE(window->isVisible());
}

TEST_F(ListWindows, TickTheBoxThatWasPressedThoughANameIsStoredMeanwhile) {
  open();
  QTest::mouseClick(named<QPushButton>("Add customer"), Qt::LeftButton);
  type(QStringLiteral("Moon"));
  const QPoint box = table()->visualRect(table()->model()->index(1, 2)).center();
  const QString pressed = cell(1, 0);
  QTest::mousePress(table()->viewport(), Qt::LeftButton, {}, box);
  for (int turn = 0; turn < 3; ++turn) QCoreApplication::processEvents();
  QTest::mouseRelease(table()->viewport(), Qt::LeftButton, {}, box);
  EXPECT_EQ(queries::customersNamed(*session.context(), QStringLiteral("Moon")).size(), 1U);
  EXPECT_EQ(queries::customersNamed(*session.context(), pressed)[0]->shown(), false);
}

TEST_F(ListWindows, GoOnAtTheNextRowAfterADeletion) {
  open();
  table()->selectRow(0);
  table()->setFocus();
  alerts.willAnswer({"Delete", "Delete"});
  press(Qt::Key_Delete);
  EXPECT_EQ(cell(table()->selectedRow(), 0), "Best");
  table()->selectRow(3);
  press(Qt::Key_Delete);
  EXPECT_EQ(table()->selectedRow(), 2) << "the last one";
}

TEST_F(ListWindows, AskOnceAboutATakenNameAndNothingWhenTheEditorIsLeft) {
  open();
  table()->selectRow(0);
  table()->setFocus();
  press(Qt::Key_Return);
  named<QLineEdit>("Search")->setFocus();
  table()->setFocus();
  press(Qt::Key_Return);
  press(Qt::Key_Backspace);
  press(Qt::Key_Return);
  EXPECT_EQ(alerts.shown().size(), 0U) << "left unchanged";
  EXPECT_EQ(cell(0, 0), "Acme");
  table()->setFocus();
  press(Qt::Key_Return);
  type(QStringLiteral("Zed"));
  press(Qt::Key_Return);
  EXPECT_EQ(alerts.messages(), QStringList("Zed already exists!"));
  EXPECT_EQ(cell(0, 0), "Acme");
  EXPECT_TRUE(qobject_cast<QLineEdit*>(QApplication::focusWidget())) << "the editor is open again";
}

TEST_F(ListWindows, SearchAsTypedAndSayWhenNothingMatches) {
  open();
  auto* search = named<QLineEdit>("Search");
  search->setFocus();
  type(QStringLiteral("be"));
  EXPECT_EQ(table()->model()->rowCount(), 2);
  type(QStringLiteral("x"));
  EXPECT_EQ(table()->model()->rowCount(), 0);
  press(Qt::Key_Escape);
  press(Qt::Key_Down);
  EXPECT_EQ(QApplication::focusWidget(), table());
  EXPECT_EQ(table()->selectedRow(), 0);
}

TEST_F(ListWindows, OfALinkedDocumentOnlyOfferAndChoose) {
  open(false, true);
  EXPECT_FALSE(named<QPushButton>("Add service item")->isVisible());
  EXPECT_TRUE(window->findChild<QLabel*>(QStringLiteral("linkedText"))->isVisible());
  table()->selectRow(1);
  table()->setFocus();
  press(Qt::Key_Space);
  EXPECT_EQ(queries::servicesNamed(*session.context(), QStringLiteral("Best"))[0]->shown(), false);
  press(Qt::Key_F2);
  EXPECT_EQ(QApplication::focusWidget(), table());
  const auto other = makeCustomerList({session, commands});
  other->bringToFront();
  EXPECT_TRUE(QTest::qWaitForWindowActive(other.get()));
  EXPECT_NE(other->pos(), window->pos()) << "not exactly on each other";
  window->markNoneShown();
  EXPECT_TRUE(QTest::qWaitForWindowActive(window.get())) << "it is seen to be changed";
  EXPECT_TRUE(queries::shownServices(*session.context()).empty());
}

}  // namespace
}  // namespace pendra
