#include "ui/PreferencesWindow.h"

#include <gmock/gmock.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTabBar>

#include "Desk.h"
#include "model/Hours.h"
#include "platform/Preferences.h"
#include "ui/Theme.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

class Preferences : public testing::Test {
 protected:
  void SetUp() override {
    desk.sitDown();
    window = std::make_unique<PreferencesWindow>(WindowFrame{desk.session, commands});
    window->bringToFront();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  }
  void TearDown() override { Theme::force(Appearance::System); }
  void turnTo(const QString& page) {
    auto& tabs = *window->findChild<QTabBar*>();
    for (int tab = 0; tab < tabs.count(); ++tab) {
      if (tabs.tabText(tab) == page) return tabs.setCurrentIndex(tab);
    }
    FAIL() << "no page " << page.toStdString();
  }

  class Pressed final : public NoCommands {
   public:
    QList<Command> all;

   private:
    void perform(Command command, QWidget*) override { all << command; }
  };
  Desk desk{false};
  Pressed commands;
  std::unique_ptr<PreferencesWindow> window;
};

TEST_F(Preferences, ActAtOnceOnEveryPage) {
  const QSize size = window->size();
  const struct {
    const char* page;
    const char* box;
    const char* key;
    bool before;
  } boxes[] = {
      {"General", "Hide sent entries in the time log", "PendraHideSubmitted", false},
      {"Timing", "Starting an activity stops the others", "PendraOneAtATime", false},
      {"Backups", "Make a backup on every day that changed something", "PendraDailyBackups", true},
      {"Vantor", "Merge a day's entries of an activity when sending", "PendraMergeSubmissions", false},
      {"Statistics", "Send usage statistics", "VTAnalyticsTracker", true},
  };
  for (const auto& [page, box, key, before] : boxes) {
    turnTo(QString::fromLatin1(page));
    EXPECT_EQ(window->size(), size) << page;
    EXPECT_EQ(desk.isChecked(QString::fromLatin1(box)), before) << box;
    EXPECT_FALSE(desk.defaults.contains(QString::fromLatin1(key))) << box;
    desk.press(QString::fromLatin1(box));
    EXPECT_EQ(desk.defaults.boolean(QString::fromLatin1(key)), !before) << box;
    desk.defaults.setBoolean(QString::fromLatin1(key), before);
    EXPECT_EQ(desk.isChecked(QString::fromLatin1(box)), before) << "changed elsewhere: " << box;
  }
}

TEST_F(Preferences, FieldsInASentenceGoWithItsBox) {
  turnTo(u"Timing"_s);
  EXPECT_EQ(desk.named<QSpinBox>(u"Ask after minutes"_s).value(), 10);
  desk.named<QSpinBox>(u"Ask after minutes"_s).setValue(20);
  desk.press(u"Ask after minutes away"_s);
  EXPECT_EQ(preferences::kAwayMinutes.of(desk.defaults), 0);
  EXPECT_FALSE(desk.isEnabled(u"Ask after minutes"_s));
  desk.press(u"Ask after minutes away"_s);
  EXPECT_EQ(preferences::kAwayMinutes.of(desk.defaults), 20) << "the number is as it was";

  EXPECT_FALSE(desk.isEnabled(u"Remind until"_s));
  desk.press(u"Remind me when nothing runs"_s);
  EXPECT_TRUE(preferences::kReminder.isOn(desk.defaults));
  desk.typeInto(u"Remind from"_s, u"8:30"_s);
  desk.press(Qt::Key_Tab);
  EXPECT_EQ(preferences::kRemindFrom.of(desk.defaults), QTime(8, 30));
  desk.typeInto(u"Remind until"_s, u"late"_s);
  desk.press(Qt::Key_Tab);
  EXPECT_EQ(desk.description(u"Remind until"_s), u"This is no time of day."_s);
  EXPECT_EQ(preferences::kRemindUntil.of(desk.defaults), QTime(17, 0));
}

TEST_F(Preferences, ChooseTheLookTheWeekAndTheFolder) {
  turnTo(u"Appearance"_s);
  EXPECT_TRUE(desk.isChecked(u"As the desktop"_s));
  desk.press(u"Dark"_s);
  EXPECT_TRUE(Theme::isDark(QApplication::palette()));
  EXPECT_FALSE(desk.isChecked(u"As the desktop"_s));
  desk.press(u"Light"_s);
  EXPECT_FALSE(Theme::isDark(QApplication::palette()));
  EXPECT_EQ(desk.defaults.text(preferences::kAppearance), u"light"_s);
  auto& week = desk.named<QComboBox>(u"Week begins on"_s);
  week.setCurrentIndex(5);
  Q_EMIT week.activated(5);
  EXPECT_EQ(weekBegins(desk.defaults, QLocale(u"de_DE"_s)), Qt::Saturday);

  turnTo(u"Backups"_s);
  EXPECT_EQ(desk.description(u"Last backup"_s), u"There is no backup of “Test” yet."_s);
  desk.typeInto(u"Backup folder"_s, u"/nowhere"_s);
  desk.press(Qt::Key_Return);
  EXPECT_EQ(desk.description(u"Backup folder"_s),
            u"There is no such folder. Backups go where they went before."_s);
  EXPECT_EQ(desk.defaults.text(preferences::kBackupFolder).value_or(QString()), QString());
  desk.panels.willChoose(desk.places.documents);
  window->findChild<QPushButton*>(u"chooseFolder"_s)->click();
  EXPECT_EQ(desk.defaults.text(preferences::kBackupFolder), desk.places.documents);
  EXPECT_EQ(desk.text(u"Backup folder"_s), desk.places.documents);

  window->findChild<QPushButton*>(u"restore"_s)->click();
  turnTo(u"Vantor"_s);
  EXPECT_EQ(window->findChild<QLabel*>(u"lists"_s)->text(), u"0 customers, 0 jobs, 0 service items."_s);
  window->findChild<QPushButton*>(u"updateLists"_s)->click();
  EXPECT_EQ(commands.all, (QList{Command::Restore, Command::UpdateLists}));
}

}  // namespace
}  // namespace pendra
