#include <gmock/gmock.h>

#include <QAccessible>
#include <QDropEvent>
#include <QMimeData>
#include <csignal>

#include "RunningProgram.h"
#include "document/DocumentClosing.h"
#include "document/Documents.h"
#include "support/Events.h"
#include "ui/Buttons.h"
#include "ui/IntroSheet.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

void fillTwo(ObjectContext& context, DocumentSettings&) {
  for (const char* name : {"Acme", "Zed"}) {
    auto& customer = context.insert<Customer>();
    customer.setName(QString::fromLatin1(name));
    context.insert<Activity>().setCustomer(&customer);
  }
}

/// The visible window of that title.
QWidget* windowTitled(const QString& title) {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->isVisible() && window->windowTitle() == title) return window;
  }
  return nullptr;
}

void settle() {
  QCoreApplication::processEvents();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST(Windows, ADeletionIsAskedAboutOnTheTimerWindowAndDiesWithIt) {
  RunningProgram program(&fillTwo);
  Session& session = program.session();
  std::ignore = program.context().edit({}, [&] {
    Activity& first = *program.context().all<Activity>()[0];
    first.addEntry().setDateSubmitted(program.clock.now());
    first.addEntry().setSendingSince(program.clock.now());
  });
  program.activities().selectRow(0);
  program.choose(u"Preferences"_s);
  QWidget* preferences = windowTitled(u"Preferences"_s);
  ASSERT_TRUE(preferences);
  program.choose(*preferences, u"Delete"_s);
  QMessageBox* question = program.alert();
  ASSERT_TRUE(question);
  EXPECT_EQ(question->parentWidget(), &program.window());
  EXPECT_TRUE(question->informativeText().startsWith(u"Acme: "_s));
  EXPECT_TRUE(
      question->informativeText().endsWith(u". 1 entry was sent and stays in Vantor. 1 entry may be in "
                                           "Vantor, and nobody will ask about it."_s));
  EXPECT_EQ(question->defaultButton()->accessibleName(), u"Cancel"_s);
  EXPECT_EQ(question->escapeButton()->accessibleName(), u"Cancel"_s);
  for (const QPushButton* button : question->findChildren<QPushButton*>()) {
    EXPECT_EQ(button->property(kDestructiveProperty).toBool(), button->accessibleName() == u"Delete"_s);
  }
  program.choose(*preferences, u"Delete"_s);
  EXPECT_EQ(program.alert(), question) << "one at a time";
  // What is selected by the time of the answer is none of the question's business.
  program.activities().selectRow(1);
  EXPECT_TRUE(RunningProgram::press(*question, u"Delete"_s));
  settle();
  ASSERT_EQ(program.context().all<Activity>().size(), 1U);
  EXPECT_EQ(queries::nameOf(program.context().all<Activity>()[0]->customer()), u"Zed"_s);

  program.activities().selectRow(0);
  program.choose(*preferences, u"Delete"_s);
  ASSERT_TRUE(program.alert());
  leaveDocument(session);
  settle();
  EXPECT_FALSE(program.alert());
  program.choose(*preferences, u"Delete"_s);
  EXPECT_FALSE(program.alert()) << "there is nothing to ask about";
}

TEST(Windows, TheTitleAndTheHeaderSayWhatRuns) {
  RunningProgram program([](ObjectContext& context, DocumentSettings& settings) {
    for (int pair = 0; pair < 2; ++pair) fillTwo(context, settings);
  });
  const auto tick = [&](double seconds) {
    program.clock.advance(seconds);
    program.timer().state().updateTimeDisplay();
    return program.window().windowTitle();
  };
  const auto pills = [&] {
    QStringList shown;
    for (const auto* pill :
         program.window().findChild<QWidget*>(u"runningPills"_s)->findChildren<QAbstractButton*>()) {
      if (pill->isVisible()) shown << pill->accessibleName() + u'/' + pill->accessibleDescription();
    }
    return shown.join(u' ');
  };
  const auto pill = [&] {
    return program.window().findChild<QWidget*>(u"runningPills"_s)->findChildren<QAbstractButton*>()[0];
  };
  const auto choose = [&](const char* menuName, int item) {
    auto* menu = program.window().findChild<QMenu*>(QString::fromLatin1(menuName));
    ASSERT_TRUE(menu);
    menu->actions()[item]->trigger();
    menu->close();
    settle();
  };
  EXPECT_EQ(tick(0), u"Work"_s);
  program.activities().selectRow(0);
  program.choose(u"Start or Stop"_s);
  std::raise(SIGXFSZ);  // as a save does where files are limited
  EXPECT_EQ(tick(3632), u"01:00:32 Acme - Work"_s);
  EXPECT_EQ(pills(), QString()) << "the button says it";
  program.activities().selectRow(1);
  EXPECT_EQ(pills(), u"Acme/Stop"_s);
  program.choose(u"Start or Stop"_s);
  EXPECT_EQ(tick(1600), u"01:27:12 Acme and 1 more - Work"_s);
  EXPECT_EQ(program.window().accessibleName(), u"Work"_s);
  QTest::mouseClick(pill(), Qt::LeftButton, {}, pill()->rect().center());
  EXPECT_EQ(program.activities().selectedRow(), 0);
  EXPECT_EQ(pills(), u"Zed/Stop"_s);
  program.activities().selectRow(2);
  program.choose(u"Start or Stop"_s);
  program.activities().selectRow(3);
  EXPECT_EQ(pills(), u"Acme/Stop 2 more running/"_s);
  program.window().findChild<QAbstractButton*>(u"moreRunning"_s)->click();
  choose("moreRunningMenu", 1);
  EXPECT_EQ(program.activities().selectedRow(), 2);
  EXPECT_EQ(pills(), u"Acme/Stop Zed/Stop"_s);

  pill()->setFocus();
  QTest::keyClick(pill(), Qt::Key_Space);
  EXPECT_EQ(program.window().windowTitle(), u"00:26:40 Zed and 1 more - Work"_s)
      << "without waiting for the tick";
  EXPECT_EQ(pills(), u"Zed/Stop"_s);
  QTest::mouseClick(pill(), Qt::LeftButton, {}, QPoint(14, pill()->height() / 2));
  EXPECT_EQ(pills(), QString());
  QTest::keyClick(program.window().findChild<QWidget*>(u"startStopButton"_s), Qt::Key_Down, Qt::AltModifier);
  choose("latestMenu", 0);
  EXPECT_EQ(program.activities().selectedRow(), 1) << "the last that has stopped";
  EXPECT_EQ(program.context().all<TimeEntry>().size(), 4U);
  EXPECT_EQ(pills(), u"Acme/Stop"_s);
  QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(pill());
  EXPECT_EQ(spoken->role(), QAccessible::PushButton);
  spoken->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(QTest::qWaitFor([&] { return pills().isEmpty(); }))
      << "a press by way of the bus takes a moment";
  EXPECT_EQ(tick(1), u"00:00:01 Zed - Work"_s);
  program.choose(u"Mark Complete"_s);
  EXPECT_EQ(program.window().windowTitle(), u"Work"_s);
}

TEST(Windows, WhatWasCompletedIsFoundAgainAndComesBack) {
  RunningProgram program([](ObjectContext& context, DocumentSettings& settings) {
    fillTwo(context, settings);
    fillTwo(context, settings);
    TimeEntry& entry = context.all<Activity>()[1]->addEntry();
    entry.setStart(instantOf("2026-11-23T09:00:00Z"));
    entry.setDuration(3600);
    context.all<Activity>()[2]->setNotes(u"Roof"_s);
  });
  program.choose(u"Completed Activities"_s);
  QWidget* window = windowTitled(u"Completed Activities"_s);
  ASSERT_TRUE(window && QTest::qWaitForWindowActive(window));
  auto& table = *window->findChild<RowTableView*>(u"completedTable"_s);
  auto& search = *window->findChild<QLineEdit*>(u"searchCompleted"_s);
  auto& makeCurrent = *window->findChild<QPushButton*>(u"makeCurrent"_s);
  EXPECT_EQ(table.model()->rowCount(), 0);
  for (int left = 4; left > 1; --left) {
    program.activities().selectRow(0);
    program.choose(u"Mark Complete"_s);
  }
  EXPECT_EQ(table.model()->rowCount(), 3) << "those without an entry, too";
  EXPECT_EQ(table.model()->index(0, 0).data(), u"Zed"_s) << "the last that was timed";
  EXPECT_EQ(table.model()->index(0, 4).data(), u"01:00:00"_s);
  EXPECT_FALSE(makeCurrent.isEnabled());

  QTest::keyClicks(&search, u"roof"_s);
  EXPECT_EQ(table.model()->rowCount(), 1) << "by its notes";
  makeCurrent.click();
  EXPECT_EQ(program.activities().model()->rowCount(), 2);
  EXPECT_EQ(table.model()->rowCount(), 0);
  QTest::keyClick(&search, Qt::Key_Escape);
  EXPECT_EQ(search.text(), QString());
  table.setFocus();
  table.selectAll();
  QTest::keyClick(&table, Qt::Key_Return);
  EXPECT_EQ(program.activities().model()->rowCount(), 4);
  EXPECT_EQ(program.choose(u"Undo"_s), u"Undo Make 2 Activities Current"_s);
  EXPECT_EQ(table.model()->rowCount(), 2);
  QTest::keyClick(&table, Qt::Key_Escape);
  EXPECT_FALSE(window->isVisible());
}

TEST(Windows, FindLeadsToTheSearchOfThePaneThatIsInFocus) {
  RunningProgram program(&fillTwo);
  EXPECT_FALSE(program.window().findChild<QLabel*>(u"lastEntry"_s)->isVisible()) << "nothing is selected";
  const auto whereFindLeads = [](RowTableView& from) {
    from.setFocus();
    QTest::keyClick(&from, Qt::Key_F, Qt::ControlModifier);
    return QApplication::focusWidget()->accessibleName();
  };
  EXPECT_EQ(whereFindLeads(program.activities()), u"Find an activity"_s);
  EXPECT_EQ(whereFindLeads(program.timer().log().table()), u"Find in the log"_s);
  EXPECT_EQ(program.choose(u"Find"_s), u"Find"_s) << "nor is its item grey";
}

TEST(Windows, TheMenuIsAboutTheOpenDocumentAndTheListInFront) {
  RunningProgram program(&fillTwo);
  Session& session = program.session();
  const auto shown = [&](const QString& item) {
    Q_EMIT qobject_cast<QMenu*>(program.item(program.window(), item)->parent())->aboutToShow();
    return program.item(program.window(), item)->isVisible();
  };
  EXPECT_FALSE(shown(u"Send All Time"_s));
  EXPECT_EQ(program.choose(u"Update Lists"_s), u"Update Lists from Vantor (off)"_s);
  program.choose(u"Customers and Jobs"_s);
  QWidget* list = windowTitled(u"Customers and Jobs"_s);
  program.window().activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&program.window()));
  program.choose(u"Mark All Shown"_s);
  EXPECT_TRUE(QTest::qWaitForWindowActive(list)) << "before it shows what becomes of its ticks";
  EXPECT_EQ(program.context().all<Customer>()[1]->shown(), true);

  const QString linked = program.places.path(u"Linked.pdr"_s);
  {
    const auto made = OpenDocument::read(linked, loadObjectModel(), program.clock, Calendar::ofSystem());
    made.value()->context()->fill([&] {
      made.value()->settings().identity()->setEmployeeName(u"Ann"_s);
      made.value()->settings().setStandalone(false);
    });
    ASSERT_TRUE(made.value()->context()->save());
  }
  // Dropped on a field, which would take its address for a text.
  QMimeData dragged;
  dragged.setUrls({QUrl::fromLocalFile(linked)});
  QDragEnterEvent enter({5, 5}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
  QDropEvent drop({5, 5}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
  for (QDropEvent* event : {static_cast<QDropEvent*>(&enter), &drop}) {
    QApplication::sendEvent(program.window().findChild<QLineEdit*>(u"quickEntry"_s), event);
    EXPECT_TRUE(event->isAccepted());
  }
  QTimer answering;
  QObject::connect(&answering, &QTimer::timeout, &answering, [&] {
    if (QMessageBox* const asks = program.alert()) RunningProgram::press(*asks, u"Continue"_s);
  });
  answering.start(20);
  EXPECT_TRUE(eventually([&] { return session.document() && session.document()->path() == linked; }));
  settle();
  EXPECT_TRUE(shown(u"Send All Time"_s));
  leaveDocument(session);
  settle();
  for (const Command command :
       {Command::QuickEntry, Command::Restore, Command::Report, Command::ToggleTimer, Command::UpdateLists}) {
    program.program.commands().perform(command, nullptr);
  }
  EXPECT_FALSE(windowTitled(u"Restore"_s) || windowTitled(u"Report"_s)) << "not by another way either";
  EXPECT_FALSE(session.ports().windows.isOpen(WindowKind::Timer));
}

TEST(Windows, TheIntroductionWaitsForTheTimerWindowToBeInFront) {
  RunningProgram program([](ObjectContext&, DocumentSettings&) {});
  const auto introduction = [] { return dynamic_cast<IntroSheet*>(QApplication::activeModalWidget()); };
  program.choose(u"About"_s);
  QWidget* about = windowTitled(u"About Pendra"_s);
  ASSERT_TRUE(about && QTest::qWaitForWindowActive(about));
  EXPECT_FALSE(eventually([&] { return introduction() != nullptr; }, 700));
  about->close();
  program.window().activateWindow();
  ASSERT_TRUE(eventually([&] { return introduction() != nullptr; }));
  EXPECT_EQ(introduction()->parentWidget(), &program.window());
  introduction()->accept();
  const RunningProgram begun(&fillTwo);
  EXPECT_FALSE(eventually([&] { return introduction() != nullptr; }, 700)) << "to whom has activities";
}

/// The last of the process: the program quits with its last window, and then no further loop begins.
TEST(Windows, AListGoesWithItsDocument) {
  RunningProgram program(&fillTwo);
  Session& session = program.session();
  program.choose(u"Customers and Jobs"_s);
  ASSERT_TRUE(windowTitled(u"Customers and Jobs"_s));
  program.window().close();
  settle();
  EXPECT_FALSE(windowTitled(u"Customers and Jobs"_s));
  EXPECT_FALSE(session.document());
}

}  // namespace

}  // namespace pendra
