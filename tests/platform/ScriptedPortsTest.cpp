// The scripted ports are what other tests rely on, so what they promise is tested once, here.
#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>

#include "platform/Log.h"
#include "support/LogCapture.h"
#include "support/ScriptedAlerts.h"
#include "support/ScriptedPanels.h"
#include "support/TestPlaces.h"

namespace pendra {
namespace {

const Alert kQuestion{.message = "Stop?", .informative = {}, .buttons = {"OK", "Cancel"}};

TEST(ScriptedAlertsTest, AnswersByTitleAndRecords) {
  ScriptedAlerts alerts;
  alerts.willAnswer({"Cancel", "OK"});
  EXPECT_EQ(alerts.runAlert(kQuestion), kSecondButton);
  EXPECT_EQ(alerts.runAlert({.message = "Done", .informative = {}}), kFirstButton);
  int answered = 0;
  alerts.beginSheet(kQuestion, [&](int button) { answered = button; });
  EXPECT_EQ(answered, kFirstButton);
  EXPECT_EQ(alerts.messages(), QStringList({"Stop?", "Done", "Stop?"}));
  EXPECT_EQ(alerts.unasked(), 0U);
}

TEST(ScriptedAlertsTest, AHeldSheetWaitsForItsAnswer) {
  ScriptedAlerts alerts;
  alerts.holdSheets();
  int answered = 0;
  alerts.beginSheet(kQuestion, [&](int button) { answered = button; });
  EXPECT_EQ(answered, 0);
  ASSERT_TRUE(alerts.hasOpenSheet());
  alerts.answerSheet("Cancel");
  EXPECT_EQ(answered, kSecondButton);
  EXPECT_FALSE(alerts.hasOpenSheet());
}

TEST(ScriptedAlertsTest, AnUnforeseenQuestionFailsTheTest) {
  ScriptedAlerts alerts;
  EXPECT_NONFATAL_FAILURE(EXPECT_EQ(alerts.runAlert(kQuestion), kSecondButton), "Nobody foresaw");
}

TEST(ScriptedPanelsTest, AnUnforeseenPanelFailsTheTest) {
  ScriptedPanels panels;
  panels.willChoose("/a");
  panels.willCancel();
  EXPECT_EQ(panels.runOpenPanel(), QString("/a"));
  EXPECT_EQ(panels.runSavePanel({}), std::nullopt);
  EXPECT_NONFATAL_FAILURE(EXPECT_EQ(panels.runOpenPanel(), std::nullopt), "Nobody foresaw");
}

TEST(LogCaptureTest, KeepsEntriesAsTheyStand) {
  const LogCapture log;
  logLine("\nAn entry with \"quotes\"\n");
  EXPECT_EQ(log.lines(), QStringList("\nAn entry with \"quotes\"\n"));
}

TEST(TestPlacesTest, AreFoldersOfTheirOwn) {
  const TestPlaces places;
  const TestPlaces others;
  EXPECT_NE(places.documents, others.documents);
  EXPECT_TRUE(writeFile(places.documents + u"/a", "bytes"));
  EXPECT_EQ(contentsOf(places.documents + u"/a"), "bytes");
}

}  // namespace
}  // namespace pendra
