#include <gtest/gtest.h>

#include <random>

#include "Desk.h"
#include "store/StateTransfer.h"
#include "ui_core/UndoHistory.h"

namespace pendra {
namespace {

using namespace Qt::StringLiterals;

constexpr int kSteps = 90;    // fewer than are kept
constexpr int kSeenRows = 5;  // without scrolling
const QString kActivities = u"Activities"_s;
const QString kLog = u"Time log"_s;

/// Somebody who does this and that in the timer window and its sheets, drawn from a seed.
class UndoWalk : public testing::TestWithParam<unsigned> {
 protected:
  void SetUp() override {
    Service& design = desk.addService(u"Design"_s);
    for (const QString& name : {u"Acme"_s, u"Zed"_s, u"Hollins"_s, u"Marsh"_s}) {
      Activity& activity = desk.addActivity(&desk.addCustomer(name), &design);
      for (const char* start : {"2026-11-20T09:00:00Z", "2026-11-21T09:00:00Z", "2026-11-23T09:00:00Z"}) {
        desk.addEntry(activity, start, 1800);
      }
      activity.entries()[0]->setDateSubmitted(instantOf("2026-11-21T18:00:00Z"));
    }
    desk.sitDown();
    history.emplace(desk.session);
  }
  int number(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }

  /// The document as its file holds it.
  std::unique_ptr<ObjectContext> image() {
    const QString copy = desk.places.path(u"Image%1.pdr"_s.arg(++images_));
    EXPECT_TRUE(QFile::copy(desk.session.document()->path(), copy));
    auto read = std::make_unique<ObjectContext>(desk.session.objectModel(), desk.clock, desk.calendar);
    EXPECT_TRUE(read->open(copy));
    read->close();
    return read;
  }
  bool isSame(const ObjectContext& other) {
    return StateTransfer::isSameState(*desk.session.context(), other, [](const auto&) { return false; });
  }
  /// What the windows show.
  QStringList shown() {
    QStringList rows;
    for (int row = 0; row < desk.rows(kActivities); ++row) rows << desk.row(kActivities, row);
    for (int row = 0; row < desk.rows(kLog); ++row) rows << desk.row(kLog, row);
    rows.sort();
    return rows;
  }

  void act() {
    desk.clock.advance(30 + number(600));
    if (desk.rows(kActivities) > 0 && number(3) > 0) {
      desk.select(kActivities, number(desk.rows(kActivities)));
      return actOnActivity(desk.timer().state().currentActivity()->isRunning());
    }
    desk.select(kLog, number(kSeenRows));
    actOnEntry(*desk.timer().state().currentEntry());
  }
  void actOnActivity(bool runs) {
    desk.defaults.setBoolean(u"PendraOneAtATime"_s, number(4) == 0);
    switch (number(7)) {
      case 0:
        return desk.command(Command::MarkComplete);
      case 1:
        return desk.command(runs ? Command::StopEarlier : Command::StartEarlier, [&] {
          const QString deed = runs ? u"Stop"_s : u"Start"_s;
          desk.press(desk.isEnabled(deed) ? deed : u"Cancel"_s);
        });
      case 2:
        return desk.command(Command::EditActivity, [&] {
          desk.typeInto(u"Activity notes"_s, u"note %1"_s.arg(number(9)));
          desk.press(u"Save"_s);
        });
      default:
        return desk.command(Command::ToggleTimer);
    }
  }
  void actOnEntry(TimeEntry& entry) {
    const int deed = number(4);
    if (deed == 0) return desk.command(Command::MakeCurrent);
    if (deed == 1) desk.alerts.willAnswer({u"Continue"_s});
    if (deed == 1) return desk.command(Command::MarkUnsent);
    if (entry.running() == true || entry.timeIsFixed()) return;
    if (deed == 2) return desk.timer().state().deleteEntries({Ref<TimeEntry>(&entry)});
    desk.command(Command::EditSelected, [&] {
      desk.typeInto(u"Duration"_s, u"0:%1"_s.arg(10 + number(50)));
      desk.press(Qt::Key_Return);
    });
  }

  Desk desk{false};
  std::optional<UndoHistory> history;

 private:
  std::mt19937 random_{GetParam()};
  int images_ = 0;
};

TEST_P(UndoWalk, EndsWhereItBeganAndWhereItWent) {
  const auto before = image();
  const QStringList shownBefore = shown();
  for (int step = 0; step < kSteps; ++step) act();
  const auto after = image();
  const QStringList shownAfter = shown();
  EXPECT_TRUE(isSame(*after));
  for (; history->canUndo(); history->undo()) {
    EXPECT_FALSE(desk.notices().join(u" "_s).contains(u"left alone"_s));
  }
  EXPECT_TRUE(isSame(*before) && isSame(*image()));
  EXPECT_EQ(shown(), shownBefore);
  while (history->canRedo()) history->redo();
  EXPECT_TRUE(isSame(*after) && isSame(*image()));
  EXPECT_EQ(shown(), shownAfter);
}

INSTANTIATE_TEST_SUITE_P(Seeds, UndoWalk, testing::Values(7U, 2026U));

}  // namespace
}  // namespace pendra
