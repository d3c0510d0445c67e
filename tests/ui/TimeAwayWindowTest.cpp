#include "ui/TimeAwayWindow.h"

#include <gmock/gmock.h>

#include <QComboBox>
#include <QLabel>
#include <QPushButton>

#include "Desk.h"
#include "document/TimeAway.h"
#include "store/UndoStack.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

TEST(TimeAwayAtTheDesk, SaysWhatEachAnswerDoesAndDoesItOnce) {
  Desk desk;
  desk.clock.set("2026-11-24T12:05:00Z");
  TimeEntry* entry = nullptr;
  desk.session.context()->fill([&] {
    entry = &desk.addActivity(&desk.addCustomer(u"Acme"_s), nullptr).startEntry();
    desk.addActivity(&desk.addCustomer(u"Zed"_s), nullptr);
    desk.addActivity(&desk.addCustomer(u"Hollins"_s), nullptr);
  });
  desk.sitDown();
  ObjectContext& context = *desk.session.context();
  desk.clock.set("2026-11-24T13:32:12Z");
  markAway(context, {entry}, {instantOf("2026-11-24T12:24:00Z"), instantOf("2026-11-24T13:01:00Z")});

  NoCommands commands;
  const auto window = std::make_unique<TimeAwayWindow>(WindowFrame{desk.session, commands});
  window->bringToFront();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  const auto deed = [&] { return window->findChild<QPushButton*>(u"deed"_s); };
  EXPECT_EQ(desk.text(u"Away"_s), u"37 minutes away"_s);
  EXPECT_EQ(deed()->text(), u"Take Off"_s);
  EXPECT_EQ(window->findChild<QLabel*>(u"awayExplanation1"_s)->text(),
            u"The entry ends at 13:24, a new one runs from 14:01: 00:50:12 so far."_s);
  EXPECT_FALSE(desk.isEnabled(u"Activity"_s));
  EXPECT_FALSE(desk.session.ports().modals.isModal()) << "it blocks nothing";

  desk.press(u"Keep the time"_s);
  EXPECT_EQ(deed()->text(), u"Keep"_s);
  desk.press(u"Take it off and book it to"_s);
  EXPECT_EQ(deed()->text(), u"Book"_s);
  EXPECT_EQ(desk.offered(u"Activity"_s), (QStringList{u"Zed"_s, u"Hollins"_s}));
  desk.named<QComboBox>(u"Activity"_s).setCurrentIndex(1);
  deed()->click();
  EXPECT_FALSE(window->isVisible());
  const auto lengths = [&context] {
    QStringList all;
    for (const TimeEntry* one : context.all<TimeEntry>()) {
      const double length = one->length();
      all << queries::nameOf(one->activity()->customer()) + u' ' + QString::number(length);
    }
    return all;
  };
  EXPECT_EQ(lengths(), (QStringList{u"Acme 1140"_s, u"Acme 1872"_s, u"Hollins 2220"_s}));
  context.undoStack().undo();
  EXPECT_EQ(lengths(), (QStringList{u"Acme 5232"_s}));
  EXPECT_TRUE(unansweredAway(*entry)) << "it is asked again";
}

}  // namespace
}  // namespace pendra
