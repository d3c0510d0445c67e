#include "ui_core/AwayNotice.h"

#include <gmock/gmock.h>

#include "store/UndoStack.h"
#include "support/TestSession.h"

namespace pendra {
namespace {

class AwayNoticeTest : public testing::Test, protected TestSession {
 protected:
  void SetUp() override {
    openDocument();
    session.context()->fill([this] {
      for (const char* name : {"Acme", "Zed"}) {
        addActivity(&addCustomer(name), nullptr).startEntry().setStart(instantOf("2026-11-23T08:00:00Z"));
      }
    });
  }
  void markAll(const char* from, const char* to) {
    const auto entries = session.context()->all<TimeEntry>();
    markAway(*session.context(), {entries.begin(), entries.end()}, {instantOf(from), instantOf(to)});
  }
  QStringList texts() {
    QStringList all;
    for (const Notice& notice : session.notices().standing()) all << notice.text;
    return all;
  }
  void press(std::size_t action) {
    const NoticeAction pressed = session.notices().standing().at(0).actions.at(action);
    pressed.run();
    EXPECT_FALSE(pressed.isDone());
  }
};

TEST_F(AwayNoticeTest, AsksForTheLatestAbsenceUntilAllAreAnswered) {
  int decisions = 0;
  const AwayNotice notice(session, [&] { ++decisions; });
  EXPECT_EQ(texts(), QStringList());
  markAll("2026-11-23T22:00:00Z", "2026-11-24T05:00:20Z");
  const QString night = "You were away for 7 hours, from 23 Nov 23:00 to 06:00, while 2 activities ran.";
  EXPECT_EQ(texts(), QStringList(night));
  ASSERT_TRUE(session.context()->edit({}, [this] { session.context()->all<Activity>()[1]->stop(); }));
  markAll("2026-11-24T07:24:00Z", "2026-11-24T08:01:00Z");
  const QString morning = "You were away for 37 minutes, from 08:24 to 09:01, while %1 ran.";
  EXPECT_EQ(texts(), QStringList(morning.arg("2 activities")));
  press(2);
  EXPECT_EQ(decisions, 1);
  EXPECT_EQ(texts().size(), 1);
  press(1);
  EXPECT_EQ(texts(), QStringList(night)) << "the one before is still to be answered";
  session.context()->undoStack().undo();
  EXPECT_EQ(texts(), QStringList(morning.arg("2 activities")));
  press(0);
  press(0);
  EXPECT_EQ(texts(), QStringList());
  EXPECT_TRUE(timeAway(*session.context()).entries.empty());
}

TEST_F(AwayNoticeTest, LengthsAreInWords) {
  const std::pair<double, const char*> cases[] = {{60, "1 minute"},
                                                  {2220, "37 minutes"},
                                                  {3590, "1 hour"},
                                                  {3660, "1 hour 1 minute"},
                                                  {36300, "10 hours 5 minutes"}};
  for (const auto& [seconds, words] : cases) EXPECT_EQ(awayLength(seconds), words);
}

}  // namespace
}  // namespace pendra
