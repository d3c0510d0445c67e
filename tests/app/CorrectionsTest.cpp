#include <gmock/gmock.h>

#include <QClipboard>

#include "RunningProgram.h"
#include "store/UndoStack.h"
#include "support/Events.h"
#include "ui/EchoLine.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

/// "Acme - Design" with an entry of 100 minutes and a bit over the night in which the clocks are set back,
/// and with one of today that was sent; "Zed" with none.
void fillTheNight(ObjectContext& context, DocumentSettings&) {
  for (const char* name : {"Acme", "Zed"}) {
    auto& customer = context.insert<Customer>();
    customer.setName(QString::fromLatin1(name));
    context.insert<Activity>().setCustomer(&customer);
  }
  TimeEntry& night = context.all<Activity>()[0]->addEntry();
  night.setStart(instantOf("2026-10-25T00:20:00Z"));
  night.setDuration(6000.75);
  night.setNotes(u"Move"_s);
  TimeEntry& sent = context.all<Activity>()[0]->addEntry();
  sent.setStart(instantOf("2026-11-24T07:00:00Z"));
  sent.setDuration(600);
  sent.setDateSubmitted(instantOf("2026-11-24T08:00:00Z"));
}

class Corrections : public testing::Test {
 protected:
  RowTableView& log() { return program.timer().log().table(); }
  [[nodiscard]] UndoStack& steps() { return program.context().undoStack(); }
  void select(const std::vector<int>& rows) {
    program.window().activateWindow();
    log().setFocus();
    log().selectRows(rows);
  }
  /// "Acme 02:20 01:00:00 Move", from the first entry to the last.
  [[nodiscard]] QStringList entries() {
    QStringList all;
    for (const TimeEntry* entry : program.context().all<TimeEntry>()) {
      QStringList words{queries::nameOf(entry->activity()->customer()),
                        Calendar(QTimeZone("Europe/Berlin")).local(*entry->start()).toString(u"hh:mm:ss"_s),
                        entry->running() == true ? u"runs"_s : QString::number(entry->storedDuration())};
      if (entry->notes()) words << *entry->notes();
      all << words.join(u' ');
    }
    return all;
  }
  /// Chooses "Split at…", and does this in its window.
  void split(const std::function<void(QDialog& sheet, QLineEdit& time)>& inSheet) {
    QTimer::singleShot(0, &program.window(), [&] {
      auto* sheet = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_TRUE(sheet);
      inSheet(*sheet, *sheet->findChild<QLineEdit*>());
    });
    EXPECT_EQ(program.choose(u"Split at"_s), u"Split at…"_s);
  }
  /// The items of the menu that a right click on a row opens, "-" where they cannot be chosen.
  [[nodiscard]] QStringList menuOf(RowTableView& table, int row) {
    const QPoint place = table.visualRect(table.model()->index(row, 2)).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, table.viewport()->mapToGlobal(place));
    QApplication::sendEvent(table.viewport(), &event);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (!menu) return {};
    QStringList items;
    for (const QAction* item : menu->actions()) {
      items << (item->isSeparator() ? u"|"_s : (item->isEnabled() ? QString() : u"-"_s) + item->text());
    }
    menu->close();
    return items;
  }

  RunningProgram program{&fillTheNight};
};

TEST_F(Corrections, SplitTheNightMergeItAndTakeAllOfItBack) {
  const QStringList before = entries();
  select({1});
  split([](QDialog& sheet, QLineEdit& time) {
    EXPECT_EQ(sheet.windowTitle(), u"Split Entry"_s);
    EXPECT_EQ(time.accessibleName(), u"Time"_s);
    EXPECT_EQ(time.text(), u"02:10"_s) << "the middle, in the hour that comes twice";
    EXPECT_EQ(time.accessibleDescription(), u"00:50:00 until 02:10, then 00:50:00"_s);
    QTest::keyClicks(&time, u"14:30"_s);
    EXPECT_EQ(time.accessibleDescription(), u"Outside of the entry, which lasts from 02:20 to 03:00"_s);
    QTest::keyClick(&sheet, Qt::Key_Return);
    ASSERT_TRUE(sheet.isVisible()) << "it is refused at the field";
    QTest::keyClicks(&time, u"soon"_s);
    EXPECT_EQ(time.accessibleDescription(), u"A time is typed as 14:30 or 2:30 PM"_s);
    time.selectAll();
    QTest::keyClicks(&time, u"2:45 am"_s);
    EXPECT_EQ(time.accessibleDescription(), u"00:25:00 until 02:45, then 01:15:00"_s) << "the first of two";
    QTest::keyClick(&sheet, Qt::Key_Return);
  });
  EXPECT_THAT(entries(),
              testing::ElementsAre(u"Acme 02:20:00 1500 Move"_s, before[1], u"Acme 02:45:00 4500.75 Move"_s));
  EXPECT_EQ(steps().undoName(), u"Split of an Entry"_s);

  select({1, 2});
  program.choose(u"Merge"_s);
  EXPECT_EQ(entries(), before) << "to the second, and the note once";
  EXPECT_EQ(program.notice(), u"2 entries are one of 01:40:00 now."_s);
  EXPECT_TRUE(RunningProgram::press(program.window(), u"Undo"_s));
  EXPECT_EQ(entries().size(), 3);
  program.choose(u"Undo"_s);
  EXPECT_EQ(program.notice(), QString()) << "it took no time away";
  EXPECT_EQ(entries(), before);
  EXPECT_FALSE(steps().canUndo());
}

TEST_F(Corrections, NoHalfOfATimeIsTakenBackWhileTheOtherWasSent) {
  for (const bool merges : {false, true}) {
    merges ? select({1, 2}) : select({1});
    if (merges) program.choose(u"Merge"_s);
    if (!merges) split([](QDialog& sheet, QLineEdit&) { QTest::keyClick(&sheet, Qt::Key_Return); });
    const QStringList done = entries();
    TimeEntry& first = *program.context().all<TimeEntry>()[0];
    const auto stamp = [&](Instant sent) {
      std::ignore = program.context().edit({}, {.undoable = false}, [&] { first.setDateSubmitted(sent); });
    };
    stamp(instantOf("2026-11-24T08:00:00Z"));
    program.choose(u"Undo"_s);
    EXPECT_EQ(entries(), done) << "an hour would be lost or there twice";
    EXPECT_THAT(program.notice().toStdString(), testing::HasSubstr("left alone what has been sent"));
    stamp(kReferenceInstant);
  }
}

TEST_F(Corrections, ACopyIsNeverSentAndItsOverlapIsSaid) {
  select({0});
  EXPECT_EQ(program.choose(u"Split at"_s), u"Split at… (off)"_s) << "it was sent";
  QTest::keyClick(&log(), Qt::Key_D, Qt::ControlModifier);
  EXPECT_EQ(entries().value(2), u"Acme 08:00:00 600"_s);
  EXPECT_FALSE(program.context().all<TimeEntry>()[2]->wasSent());
  EXPECT_EQ(program.notice(), u"A copy was made. Overlaps Acme by 00:10:00."_s);
  EXPECT_TRUE(RunningProgram::press(program.window(), u"Undo"_s));
  EXPECT_EQ(entries().size(), 2);
  program.activities().selectRow(0);
  QTest::keyClick(&log(), Qt::Key_D, Qt::ControlModifier);
  EXPECT_EQ(program.notice(), u"No entry of the time log is selected."_s) << "nothing happens in silence";

  // A running entry: the first part ends, the second runs on, and a copy stands still.
  std::ignore =
      program.context().edit({}, [this] { program.context().all<Activity>()[0]->setCompleted(true); });
  select({0});
  QTest::keyClick(&log(), Qt::Key_Space);
  EXPECT_EQ(program.context().all<Activity>()[0]->completed(), false) << "what runs is listed";
  EXPECT_EQ(program.choose(u"Start Again"_s), u"Start Again (off)"_s);
  program.clock.advance(3600);
  select({0});
  split([](QDialog& sheet, QLineEdit& time) {
    EXPECT_EQ(time.text(), u"11:00"_s);
    QTest::keyClicks(&time, u"10.15"_s);
    EXPECT_EQ(time.accessibleDescription(), u"00:15:00 until 10:15, then it runs on"_s);
    QTest::keyClick(&sheet, Qt::Key_Return);
  });
  EXPECT_EQ(entries().mid(2), QStringList({u"Acme 10:00:00 900"_s, u"Acme 10:15:00 runs"_s}));
  select({0});
  program.choose(u"Duplicate"_s);
  EXPECT_EQ(entries().value(4), u"Acme 10:15:00 2700"_s);
}

TEST_F(Corrections, TheMenuOfARowOffersWhatCanBeDoneAndGreysTheRest) {
  EXPECT_EQ(menuOf(log(), 0).join(u' '),
            u"Edit Selected… Start Again | -Split at… Duplicate -Merge | Copy Make Activity Current "
            u"-Send Selected Time… Mark as Unsent | Delete | Columns"_s);
  EXPECT_EQ(log().selectedRows(), std::vector{0}) << "the row that was meant";
  EXPECT_EQ(menuOf(program.activities(), 1).join(u' '),
            u"Edit Activity… Start or Stop Timer | Copy Favourite Mark Complete | Delete"_s);
  EXPECT_EQ(program.activities().selectedRow(), 1);
  QTest::keyClick(&log(), Qt::Key_F10, Qt::ShiftModifier);
  ASSERT_TRUE(QApplication::activePopupWidget());
  QApplication::activePopupWidget()->close();
  select({0, 1});
  EXPECT_TRUE(menuOf(log(), 1).contains(u"-Split at…"_s));
  EXPECT_EQ(log().selectedRows().size(), 2U) << "a selected row keeps its neighbours";
  program.choose(u"Copy"_s);
  const QStringList lines = QGuiApplication::clipboard()->text().split(u'\n');
  ASSERT_EQ(lines.size(), 3);
  EXPECT_TRUE(lines[0].startsWith(u"Acme\t\t"_s)) << lines[0].toStdString();
  EXPECT_TRUE(lines[0].endsWith(u"\t08:10:00\t00:10:00"_s)) << lines[0].toStdString();
}

}  // namespace
}  // namespace pendra
