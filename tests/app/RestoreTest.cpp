#include <gmock/gmock.h>

#include <QClipboard>

#include "RunningProgram.h"
#include "document/Backups.h"
#include "support/CellText.h"
#include "support/Events.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

/// "Acme" with an entry of an hour.
void fillOne(ObjectContext& context, DocumentSettings&) {
  auto& activity = context.insert<Activity>();
  activity.setCustomer(&context.insert<Customer>());
  activity.customer()->setName(u"Acme"_s);
  TimeEntry& entry = activity.addEntry();
  entry.setStart(instantOf("2026-11-23T09:00:00Z"));
  entry.setDuration(3600);
}

QWidget* windowNamed(const QString& name) {
  for (QWidget* top : QApplication::topLevelWidgets()) {
    if (top->objectName() == name && top->isVisible()) return top;
  }
  return nullptr;
}
QStringList buttons(QWidget& in) {
  QStringList titles;
  for (const QPushButton* button : in.findChildren<QPushButton*>()) {
    if (button->isVisible() && !button->text().isEmpty()) titles << button->text().remove(u'&');
  }
  return titles;
}

TEST(Restore, ShowsWhatThereIsLooksInsideAndGoesBackWhileTheWindowsStay) {
  RunningProgram program(&fillOne);
  QWidget* const timerWindow = &program.window();
  EXPECT_EQ(program.choose(u"Restore"_s), u"Restore…"_s);
  QWidget* window = windowNamed(u"restoreWindow"_s);
  ASSERT_TRUE(window);
  EXPECT_THAT(buttons(*window), testing::ElementsAre(u"Cancel"_s)) << "no backup yet";
  EXPECT_TRUE(RunningProgram::press(*window, u"Cancel"_s));

  ASSERT_TRUE(makeBackup(program.session(), BackupReason::Daily));
  program.clock.advance(86'400);
  std::ignore =
      program.context().edit({}, [&] { program.context().all<Activity>()[0]->addEntry().setDuration(60); });
  program.session().notices().post({.key = u"offer"_s, .text = u"Done"_s, .actions = {{u"Undo"_s, [] {}}}});
  program.choose(u"Restore"_s);
  window = windowNamed(u"restoreWindow"_s);
  ASSERT_TRUE(window && QTest::qWaitForWindowActive(window));
  EXPECT_EQ(window->focusWidget()->objectName(), u"backups"_s) << "Space does nothing that a notice offers";
  program.session().notices().withdraw(u"offer"_s);
  auto& table = *window->findChild<RowTableView*>(u"backups"_s);
  ASSERT_EQ(table.model()->rowCount(), 1);
  const auto cell = [&](int column) { return table.model()->index(0, column).data().toString(); };
  ASSERT_TRUE(eventually([&] { return !cell(3).isEmpty(); }));
  EXPECT_EQ(QStringList({cell(0), cell(1), cell(2), cell(3)}),
            QStringList({u"Tue 24 Nov, 10:00"_s, u"Daily"_s, u"1"_s, u"01:00:00"_s}));
  const auto since = [&] { return window->findChild<QLabel*>(u"sinceThen"_s)->accessibleDescription(); };
  EXPECT_EQ(since(), u"1 entry added, 00:01:00"_s);
  std::ignore = program.context().edit({}, [&] { program.context().all<TimeEntry>()[0]->setDuration(1800); });
  EXPECT_TRUE(
      eventually([&] { return since() == u"1 entry added, 00:01:00; 1 entry corrected, 00:30:00"_s; }));

  EXPECT_TRUE(RunningProgram::press(*window, u"Look Inside"_s));
  QWidget* inside = windowNamed(u"backupWindow"_s);
  ASSERT_TRUE(inside && QTest::qWaitForWindowActive(inside));
  EXPECT_EQ(inside->windowTitle(), u"Work (backup of Tue 24 Nov, 10:00)"_s);
  auto& log = *inside->findChild<RowTableView*>(u"entries"_s);
  ASSERT_EQ(log.model()->rowCount(), 1);
  log.selectRow(0);
  log.setFocus();
  QTest::keyClick(&log, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), u"Acme\t\t\t\tMon 23 Nov 2026\t10:00\t01:00:00"_s);
  QTimer::singleShot(0, inside, [&] { EXPECT_TRUE(RunningProgram::press(*program.alert(), u"Restore"_s)); });
  EXPECT_TRUE(RunningProgram::press(*inside, u"Restore…"_s));
  QCoreApplication::processEvents();
  EXPECT_FALSE(windowNamed(u"restoreWindow"_s) || windowNamed(u"backupWindow"_s));
  EXPECT_EQ(&program.window(), timerWindow);
  EXPECT_EQ(program.timer().log().table().model()->rowCount(), 1);
  EXPECT_EQ(program.context().all<TimeEntry>()[0]->duration(), 3600);
  const auto& notices = program.session().notices().standing();
  ASSERT_EQ(notices.size(), 1U);
  EXPECT_EQ(notices[0].text, u"“Work” is as it was on Tue 24 Nov 2026, 10:00."_s);
  EXPECT_EQ(notices[0].actions[0].title, u"Undo"_s);
  EXPECT_EQ(program.choose(u"Undo"_s), u"Undo Restore"_s);
  EXPECT_TRUE(notices.empty() || !notices[0].text.contains(u"is as it was"_s));
  EXPECT_EQ(program.timer().log().table().model()->rowCount(), 2);
}

}  // namespace
}  // namespace pendra
