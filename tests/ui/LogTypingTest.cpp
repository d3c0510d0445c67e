#include <gmock/gmock.h>

#include <QAbstractItemView>
#include <QLineEdit>

#include "Desk.h"
#include "store/UndoStack.h"
#include "ui/Buttons.h"
#include "ui/LogPaneView.h"
#include "ui/RowTableView.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

const QString kLog = u"Time log"_s;

/// Two entries of "Acme" of this morning, the later one first in the log, and "Zed" with none.
class LogTyping : public testing::Test {
 protected:
  LogTyping() {
    plans = &desk.addActivity(&desk.addCustomer(u"Acme"_s), &desk.addService(u"Design"_s));
    zed = &desk.addActivity(&desk.addCustomer(u"Zed"_s), &desk.addService(u"Travel"_s));
    desk.addEntry(*plans, "2026-11-23T10:00:00Z", 3600);
    entry = &desk.addEntry(*plans, "2026-11-23T12:00:30Z", 3659);
    desk.sitDown();
    desk.select(kLog, 0);
  }
  [[nodiscard]] RowTableView& log() { return desk.timer().log().table(); }
  [[nodiscard]] QLineEdit* field() { return log().findChild<QLineEdit*>(u"cellEditor"_s); }
  void edit(const QString& column, const QString& text, int row = 0) {
    desk.editCell(kLog, row, column);
    desk.type(text);
  }
  [[nodiscard]] QString undoName() { return desk.session.context()->undoStack().undoName(); }

  Desk desk;
  Activity* plans = nullptr;
  Activity* zed = nullptr;
  TimeEntry* entry = nullptr;
};

TEST_F(LogTyping, GoesFromCellToCellAndStoresEachByItself) {
  desk.press(Qt::Key_F2);
  EXPECT_EQ(desk.focus(), "Notes") << "the first cell of the row into which something can be typed";
  desk.type(u"Call"_s);
  desk.press(Qt::Key_Tab);
  EXPECT_EQ(entry->notes(), "Call");
  EXPECT_EQ(desk.focus(), "Start");
  desk.press(Qt::Key_Tab);
  EXPECT_EQ(desk.focus(), "End");
  desk.type(u"14:30"_s);
  EXPECT_EQ(desk.cell(kLog, 0, u"Duration"_s), "01:30:00") << "what follows from it, not stored yet";
  EXPECT_EQ(entry->duration(), 3659);
  EXPECT_EQ(field()->accessibleDescription(),
            "Stored as 01:30:00, was 01:00:59. Return stores, Esc leaves it as it was.");
  desk.press(Qt::Key_Tab);
  EXPECT_EQ(entry->duration(), 5400);
  EXPECT_EQ(desk.focus(), "Duration");
  desk.type(u"2h"_s);
  desk.press(Qt::Key_Escape);
  EXPECT_EQ(desk.focus(), kLog);
  EXPECT_EQ(entry->duration(), 5400);
  EXPECT_EQ(desk.cell(kLog, 0, u"Duration"_s), "01:30:00");
  EXPECT_EQ(undoName(), "Edit of an Entry");
  desk.session.context()->undoStack().undo();
  desk.session.context()->undoStack().undo();
  EXPECT_EQ(entry->duration(), 3659);
  EXPECT_EQ(entry->notes(), std::nullopt);
  EXPECT_EQ(undoName(), "") << "a start that nobody typed into was left alone";
}

TEST_F(LogTyping, OffersWhatWasNotedBefore) {
  std::ignore = desk.session.context()->edit({}, [&] {
    plans->entries()[0]->setNotes(u"Call with Bob\nand Eve"_s);
    zed->setNotes(u"Calls of others"_s);
    desk.addActivity(plans->customer(), nullptr).setNotes(u"call back"_s);
  });
  Desk::settle();
  const auto offered = [] {
    QStringList lines;
    const auto* list = qobject_cast<QAbstractItemView*>(QApplication::activePopupWidget());
    for (int line = 0; list && line < list->model()->rowCount(); ++line) {
      lines << list->model()->index(line, 0).data().toString();
    }
    return lines;
  };
  // An open list has the keys before the field.
  const auto press = [](Qt::Key key) {
    QWidget* list = QApplication::activePopupWidget();
    QTest::keyClick(list ? list : QApplication::focusWidget(), key);
    Desk::settle();
  };
  const QStringList calls{u"Call with Bob and Eve"_s, u"call back"_s};
  edit(u"Notes"_s, u"CALL"_s);
  EXPECT_EQ(offered(), calls) << "of the activity first, then of its customer, and of no other";
  EXPECT_EQ(field()->text(), "CALL") << "nothing is put into the field unasked";
  press(Qt::Key_Down);
  EXPECT_EQ(field()->text(), "Call with Bob\nand Eve");
  press(Qt::Key_Escape);
  EXPECT_EQ(field()->text(), "CALL");
  EXPECT_EQ(offered(), QStringList());
  press(Qt::Key_Down);
  EXPECT_EQ(offered(), calls);
  press(Qt::Key_Down);
  press(Qt::Key_Down);
  press(Qt::Key_Tab);
  EXPECT_EQ(entry->notes(), "call back");
  EXPECT_EQ(desk.focus(), "Start");
  edit(u"Notes"_s, u"call w"_s);
  press(Qt::Key_Down);
  press(Qt::Key_Return);
  EXPECT_FALSE(field());
  EXPECT_EQ(entry->notes(), "Call with Bob\nand Eve");
  edit(u"Notes"_s, u"Callx"_s);
  EXPECT_EQ(offered(), QStringList());
  press(Qt::Key_Escape);
  EXPECT_FALSE(field());
}

TEST_F(LogTyping, KeepsWhatCannotBeStoredUntilItIsMendedOrLeft) {
  edit(u"Duration"_s, u"soon"_s);
  desk.press(Qt::Key_Return);
  ASSERT_TRUE(field());
  EXPECT_TRUE(field()->property(kUnreadableProperty).toBool());
  desk.press(Qt::Key_Tab);
  EXPECT_EQ(desk.focus(), "Duration");
  desk.select(kLog, 1);
  EXPECT_EQ(desk.focus(), "Duration") << "a click into another row";
  EXPECT_EQ(desk.selectedRow(kLog), 0);
  desk.go(u"From date"_s);
  EXPECT_EQ(desk.focus(), "Duration") << "a click on another field";
  EXPECT_FALSE(desk.timer().finishEditing());
  desk.press(Qt::Key_A, Qt::ControlModifier);
  desk.type(u"45m"_s);
  desk.select(kLog, 1);
  EXPECT_EQ(entry->duration(), 2700);
  EXPECT_EQ(desk.selectedRow(kLog), 1);
  edit(u"Start"_s, u"14:00"_s, 1);  // which makes it the first row
  desk.select(kLog, 0);
  EXPECT_EQ(desk.cell(kLog, 0, u"Start"_s).left(2), "14");
  EXPECT_EQ(desk.selectedRow(kLog), 1) << "the row that was meant has moved down";
}

TEST_F(LogTyping, LosesNothingInSilenceWhateverHappensMeanwhile) {
  const auto change = [this](const std::function<void()>& work) {
    std::ignore = desk.session.context()->edit({}, work);
    desk.settle();
  };
  edit(u"Duration"_s, u"2h"_s);
  change([&] { desk.addActivity(&desk.addCustomer(u"New"_s), nullptr); });
  ASSERT_TRUE(field()) << "the log has been listed anew";
  EXPECT_EQ(field()->text(), "2h");
  EXPECT_EQ(desk.cell(kLog, 0, u"End"_s).left(5), "15:00");
  desk.wait(60);
  change([&] { entry->setStart(instantOf("2026-11-23T13:00:30Z")); });
  EXPECT_EQ(desk.cell(kLog, 0, u"End"_s).left(5), "16:00") << "the entry is another one now";
  change([&] { entry->setDateSubmitted(desk.clock.now()); });
  desk.press(Qt::Key_Return);
  ASSERT_TRUE(field());
  EXPECT_THAT(field()->accessibleDescription().toStdString(), testing::HasSubstr("sent keeps its time"));
  change([&] { desk.session.context()->deleteObject(*entry); });
  EXPECT_FALSE(field());
  EXPECT_THAT(desk.notices(),
              testing::Contains(u"“2h” was typed into the time log and has not been stored."_s));
  EXPECT_EQ(desk.rows(kLog), 1);

  desk.select(u"Activities"_s, 0);
  desk.press(u"Start or stop timer"_s);
  desk.wait(90);
  desk.editCell(kLog, 0, u"Duration"_s);
  EXPECT_FALSE(field());
  EXPECT_THAT(desk.notices(), testing::Contains(u"Stop it to correct its length."_s));
  edit(u"Start"_s, u"10:00"_s);
  desk.wait(30);
  EXPECT_EQ(desk.cell(kLog, 0, u"Duration"_s), "00:03:00") << "what follows goes on with the clock";
  EXPECT_EQ(field()->text(), "10:00");
  EXPECT_TRUE(desk.timer().finishEditing());
  Desk::settle();
  EXPECT_FALSE(field());
}

}  // namespace
}  // namespace pendra
