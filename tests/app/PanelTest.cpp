#include <gmock/gmock.h>

#include "CommandLine.h"
#include "RunningProgram.h"
#include "document/TimeAway.h"
#include "support/Events.h"
#include "ui/PanelIcon.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

void fillThree(ObjectContext& context, DocumentSettings&) {
  double day = 0;
  for (const char* name : {"Acme & Co_1", "Zed", "Old"}) {
    auto& customer = context.insert<Customer>();
    customer.setName(QString::fromLatin1(name));
    auto& activity = context.insert<Activity>();
    activity.setCustomer(&customer);
    activity.setCompleted(name == "Old"_L1);
    activity.addEntry().setStart(instantOf("2013-01-01T09:00:00Z") + 86400 * ++day);
  }
}

/// A title as a panel shows it: Qt's first ampersand goes over the bus as an underscore, which marks a key.
QString shown(QString title) {
  if (const auto key = title.indexOf(u'&'); key >= 0 && key < title.size() - 1) title[key] = u'_';
  static const QRegularExpression mark(u"_(.)"_s);
  return title.replace(mark, u"\\1"_s).replace(u'\t', u'|');
}

/// The panel's menu as a person sees it when it opens: an item a line, in brackets what cannot be chosen.
std::string menu(QMenu& menu) {
  Q_EMIT menu.aboutToShow();
  QStringList lines;
  for (const QAction* item : menu.actions()) {
    if (item->isSeparator()) continue;
    const QString title = shown(item->text());
    lines << (item->isEnabled() ? title : u'(' + title + u')');
  }
  Q_EMIT menu.aboutToHide();
  return lines.join(u'\n').toStdString();
}

QMenu& panelMenu() {
  for (QWidget* widget : QApplication::allWidgets()) {
    if (widget->objectName() == u"panelMenu") return *qobject_cast<QMenu*>(widget);
  }
  throw std::runtime_error("there is no menu");
}

void choose(const QString& beginning) {
  QMenu& menu = panelMenu();
  Q_EMIT menu.aboutToShow();
  for (QAction* item : menu.actions()) {
    if (shown(item->text()).startsWith(beginning)) return item->trigger();
  }
  ADD_FAILURE() << beginning.toStdString();
}

TEST(Panel, StartsAndStopsAsTheWindowsDoAndNothingUnderAQuestion) {
  RunningProgram program(&fillThree);
  program.panel.set(true);
  EXPECT_EQ(menu(panelMenu()), "Zed\nAcme & Co_1\n(Stop All)\nQuick Entry…\nOpen Pendra\nQuit Pendra");
  choose(u"Acme"_s);
  program.clock.advance(3672);
  EXPECT_EQ(menu(panelMenu()), "Acme & Co_1|01:01:12\nZed\nStop All\nQuick Entry…\nOpen Pendra\nQuit Pendra");
  PanelState state(program.session(), [] { return QString(); });
  EXPECT_EQ(state.toolTip(), u"Acme & Co_1: 1 hour 1 minute"_s);
  EXPECT_DOUBLE_EQ(*state.nextMinute(), 48);
  choose(u"Zed"_s);
  EXPECT_EQ(state.toolTip(), u"2 running\nAcme & Co_1: 1 hour 1 minute\nZed: less than a minute"_s);
  choose(u"Acme"_s);
  EXPECT_EQ(program.window().windowTitle(), u"00:00:00 Zed - Work"_s);
  choose(u"Stop All"_s);
  EXPECT_EQ(state.sign(), (PanelSign{.hasDocument = true}));
  EXPECT_EQ(state.nextMinute(), std::nullopt) << "nothing wakes the machine";
  program.choose(u"Undo"_s);
  EXPECT_EQ(state.sign().running, 1) << "a step like any other";

  program.activities().selectRow(0);
  program.choose(u"Delete"_s);
  ASSERT_TRUE(program.alert());
  EXPECT_THAT(menu(panelMenu()), testing::HasSubstr("(Nothing can be changed: a question waits in Pendra’s"));
  EXPECT_THAT(menu(panelMenu()), testing::HasSubstr("(Stop All)"));
  state.stopAll();  // of a panel that shows an older menu
  EXPECT_EQ(state.sign().running, 0) << "this one knows of no question";
  choose(u"Quit"_s);
  EXPECT_TRUE(program.session().document());
  EXPECT_TRUE(RunningProgram::press(*program.alert(), u"Cancel"_s));
  state.startOrStop();
  EXPECT_EQ(state.toolTip(), u"Zed: less than a minute"_s) << "what ran last runs again";
  state.startOrStop();
  EXPECT_EQ(state.sign().running, 0);
}

TEST(Panel, TellsWhatIsAskedWhileNobodyLooksOnceAndUntilItIsAnswered) {
  RunningProgram program(&fillThree);
  program.session().ports().defaults.setBoolean(preferences::kKeepInPanel, true);
  program.panel.set(true);
  choose(u"Zed"_s);
  TimeEntry* entry = program.context().flagged<TimeEntry>("running")[0];
  const auto away = [&](double from) {
    program.clock.advance(3600);
    markAway(program.context(), {entry}, {*entry->start() + from, *entry->start() + from + 1800});
  };
  const auto isTold = [&] { return eventually([&] { return !program.notes.standing.empty(); }, 1500); };
  away(60);
  EXPECT_FALSE(isTold()) << "it is to be seen in the window";
  EXPECT_EQ(RunningProgram::press(program.window(), u"Keep"_s), true);
  program.window().close();
  away(3600);
  ASSERT_TRUE(isTold());
  const DesktopNote note = program.notes.standing.begin()->second;
  EXPECT_TRUE(note.text.startsWith(u"You were away for 30 minutes"_s)) << note.text.toStdString();
  EXPECT_EQ(note.actions, QStringList({u"Keep"_s, u"Take Off"_s, u"Decide…"_s}));
  EXPECT_TRUE(PanelState(program.session(), [] { return QString(); }).sign().asks);
  program.notes.standing.clear();  // swept away
  program.session().notices().post({.key = u"other"_s, .text = u"News"_s, .actions = {}});
  EXPECT_FALSE(isTold()) << "once, and nothing that asks nothing";
  program.notes.pressed(note.key, 1);
  EXPECT_EQ(program.context().all<Activity>()[1]->entries().size(), 3U) << "the time is off";
  program.notes.pressed(note.key, 1);
  EXPECT_FALSE(program.window().isVisible()) << "what has gone cannot be answered";
}

TEST(Panel, KeepsTheWindowOnlyWhereItCanBeFoundAgain) {
  RunningProgram program(&fillThree);
  program.session().ports().defaults.setBoolean(preferences::kKeepInPanel, true);
  program.panel.set(true);
  choose(u"Zed"_s);
  const auto closeWindow = [&] {
    program.window().close();
    QCoreApplication::processEvents();
    return program.session().document() && !program.window().isVisible();
  };
  ASSERT_TRUE(closeWindow()) << "nothing was asked, and it goes on";
  EXPECT_EQ(program.context().flagged<TimeEntry>("running").size(), 1U);
  choose(u"Open Pendra"_s);
  EXPECT_TRUE(program.window().isVisible());
  ASSERT_TRUE(closeWindow());
  program.program.openFromOutside({});  // a second start
  EXPECT_TRUE(program.window().isVisible());
  ASSERT_TRUE(closeWindow());
  program.panel.set(false);
  EXPECT_TRUE(program.window().isVisible()) << "what cannot be found is shown";
  program.program.openFromOutside({.action = actions::kQuickEntry});
  EXPECT_EQ(program.window().focusWidget(), program.window().findChild<QWidget*>(u"quickEntry"_s));
  program.program.openFromOutside({.action = actions::kStopAll});
  EXPECT_TRUE(program.context().flagged<TimeEntry>("running").empty());
  program.choose(u"Preferences"_s);  // with the last window the program would end
  program.window().close();
  QCoreApplication::processEvents();
  EXPECT_FALSE(program.program.session().document());
}

}  // namespace
}  // namespace pendra
