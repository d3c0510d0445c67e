#include "analytics/Tracker.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QRegularExpression>

#include "RecordingHost.h"
#include "analytics/Disclosure.h"
#include "analytics/TrackerNotifications.h"
#include "platform/Preferences.h"
#include "support/LogCapture.h"
#include "support/Rows.h"
#include "support/ScriptedWorkspace.h"
#include "support/TestPlaces.h"

namespace pendra {
namespace {

using namespace tracker_notifications;
using testing::ElementsAre;

const QString kResources = PENDRA_RESOURCES;

class TrackerTest : public testing::Test {
 protected:
  void start(const QString& address = "http://recorder/") {
    if (isTold_) Consent(defaults_).noticeAnswered();
    tracker_.startTrackingCompletionHandler(
        [this](const auto& error) { outcomes_ << error.value_or("started"); }, address);
  }
  /// The page has come up.
  void becomeReady() {
    host_.page->didFinishNavigation();
    host_.page->didReceiveScriptMessage("initHandler", "ready");
  }
  void say(bool yes) { defaults_.setBoolean(preferences::kAnalyticsTracker, yes); }
  /// The scripts since the page was ready, with the properties of events reduced to their feature.
  QStringList happened() const {
    static const QRegularExpression properties(R"re('\{.*"feature":"([^"]*)".*\}')re");
    QStringList shortened;
    for (QString script : host_.scripts.mid(1)) shortened << script.replace(properties, "'\\1'");
    return shortened;
  }

  TestPlaces places_;
  UserDefaults defaults_{places_.defaultsFile()};
  NotificationCenter center_;
  bool doNotTrack_ = false;
  ScriptedWorkspace workspace_;
  LogCapture log_;
  bool dark_ = false;
  bool isTold_ = true;  ///< of the statistics, and has not said no
  RecordingHost& host_ = *new RecordingHost;
  Tracker tracker_{"UUID",
                   std::unique_ptr<ScriptHost>(&host_),
                   {center_, workspace_, defaults_, doNotTrack_},
                   {"1.2.3", "Debian 12", "Ada's Desk", "1920 x 1053", [this] { return dark_; }},
                   kResources};
  QStringList outcomes_;
};

TEST_F(TrackerTest, StartsWhenThePageIsReadyAndLogsWhatItSays) {
  host_.errors = {"bad init", "bad event"};
  start();
  EXPECT_THAT(host_.loaded,
              ElementsAre(QString("file://" + kResources +
                                  "/amplitude/trackingWithAmplitude.html?http%3A%2F%2Frecorder%2F")));
  host_.page->didFinishNavigation();
  EXPECT_THAT(host_.scripts,
              ElementsAre(QString("VTTRACKER.doInit('3f9d0b6e1c7a48d2a5e0c4b19f6d2e87','UUID','"
                                  R"js({"company_type":"Placeholder Industry","role":"Pendra User"}'))js")));
  EXPECT_FALSE(tracker_.observersEnabled());
  for (int again = 0; again < 2; ++again) host_.page->didReceiveScriptMessage("initHandler", "ready");
  EXPECT_TRUE(tracker_.observersEnabled());
  EXPECT_EQ(outcomes_, QStringList("started"));
  dark_ = true;
  center_.post(kDarkModeChanged);
  tracker_.trackEvent("ignored", "ACTION", "it's 'so'");
  EXPECT_EQ(
      host_.scripts.last(),
      "VTTRACKER.trackEvent('Pendra_ACTION','"
      R"({"app_version":"1","app_version_major":"1","app_version_norel":"1.2.3","appearance":"dark",)"
      R"js("feature":"its so","model":"Ada's Desk","os":"Debian 12","screen_resolution":"1920 x 1053"}'))js");
  host_.page->didReceiveScriptMessage("logHandler", "hello");
  EXPECT_THAT(log_.lines(),
              ElementsAre("init script eval err: bad init", "\nAmplitude Event name: ACTION detected\n",
                          "error while sending event: bad event", "[Tracker WebView]: hello"));
}

TEST_F(TrackerTest, SaysOnceWhyThePageCannotBeLoaded) {
  start({});
  host_.page->didFailNavigation("no engine");
  host_.page->didFailNavigation("no engine");
  EXPECT_EQ(outcomes_, QStringList("no engine"));
  center_.post(kTracker, kAddActivity);
  EXPECT_TRUE(host_.scripts.isEmpty());
}

TEST_F(TrackerTest, WhatIsToldAPageThatHasEndedWaitsForTheNext) {
  start();
  becomeReady();
  host_.page->didFailNavigation("the page ended");
  center_.post(kTracker, kAddActivity);
  say(false);
  EXPECT_EQ(host_.loaded.size(), 2);
  EXPECT_THAT(happened(), testing::IsEmpty());
  becomeReady();
  EXPECT_THAT(happened().mid(1),
              ElementsAre("VTTRACKER.trackEvent('Pendra_ADD_ACTIVITY','Pendra Add Activity')",
                          "VTTRACKER.trackEvent('Pendra_DISABLE_FEEDBACK','Feedback has been disabled')",
                          "VTTRACKER.doTrackOff()"));

  host_.page->didFailNavigation("the page ended");
  center_.post(kTracker, kAddActivity);
  EXPECT_EQ(host_.loaded.size(), 2);  // whoever said no is not asked for a page again
  say(true);
  EXPECT_EQ(host_.loaded.size(), 3);
  host_.page->didFailNavigation("no engine");
  EXPECT_EQ(log_.lines().last(), "track on/off script err: no engine");
}

/// What the user sees and says: "shown", "answered", "no", "yes", "again" (the next start of the program).
struct Told {
  const char* name;
  const char* before;  ///< the tracker is started
  const char* after;
  bool isNoticeDue;
  qsizetype loads;
};

class Consenting : public TrackerTest, public testing::WithParamInterface<Told> {
 protected:
  void live(const char* words) {
    Consent consent(defaults_);
    for (const QString& word : QString(words).split(' ')) {
      if (word == "shown") consent.noticeShown();
      if (word == "answered") consent.noticeAnswered();
      if (word == "again") consent.programStarted();
      if (word == "no" || word == "yes") say(word == "yes");
    }
  }
};

TEST_P(Consenting, DecidesWhetherThereIsAPage) {
  isTold_ = false;
  live(GetParam().before);
  EXPECT_EQ(Consent(defaults_).isNoticeDue(), GetParam().isNoticeDue);
  start();
  live(GetParam().after);
  center_.post(kTracker, kAddActivity);
  EXPECT_EQ(host_.loaded.size(), GetParam().loads);
}

INSTANTIATE_TEST_SUITE_P(Table, Consenting,
                         testing::Values(Told{"NobodyWasTold", "again", "", true, 0},
                                         Told{"ShownOnly", "shown", "", false, 0},
                                         Told{"ShownThenAnswered", "shown", "answered", false, 1},
                                         Told{"ShownThenRefused", "shown", "no", false, 0},
                                         Told{"ShownThenWanted", "shown", "yes", false, 1},
                                         Told{"ShownEarlier", "shown again", "", false, 1},
                                         Told{"RefusedThenAnswered", "no", "answered", false, 0},
                                         Told{"RefusedThenWanted", "no", "yes", false, 1}),
                         RowName());

TEST(Disclosure, StandsInTheHelpInTheSameWords) {
  QFile help(kResources + "/Pendra.help/Contents/Resources/English.lproj/PendraHelp1_0.htm");
  ASSERT_TRUE(help.open(QIODevice::ReadOnly));
  EXPECT_TRUE(QString::fromUtf8(help.readAll()).simplified().contains(statisticsDisclosure()));
}

TEST_F(TrackerTest, CountsWhatIsListedAndNothingAfterANoThatHolds) {
  start();
  becomeReady();
  for (const char* application : {"Editor", "Vantor"}) workspace_.launch(application);
  for (const char* title : {"Pendra File", "Vantor", "", "Acme Ltd: Write Cheques"})
    center_.post(kWindowDidBecomeVisible, {title, {}});
  center_.post(kTracker, {"Pendra Other", "ADD_ACTIVITY"});
  center_.post(kTracker, kAddActivity);
  say(false);
  say(true);
  center_.post(kTracker, {kUpgradeDoNotTrack, {}});
  center_.post(kTracker, kAddActivity);
  workspace_.launch("Vantor");
  EXPECT_THAT(happened(),
              ElementsAre("VTTRACKER.trackEvent('Pendra_VANTOR_LAUNCHED','Vantor')",
                          "VTTRACKER.trackEvent('Pendra_VANTOR_WRITE_CHEQUES','Write Cheques')",
                          "VTTRACKER.trackEvent('Pendra_ADD_ACTIVITY','Pendra Add Activity')",
                          "VTTRACKER.trackEvent('Pendra_DISABLE_FEEDBACK','Feedback has been disabled')",
                          "VTTRACKER.doTrackOff()", "VTTRACKER.doTrackOn()",
                          "VTTRACKER.trackEvent('Pendra_ENABLE_FEEDBACK','Feedback has been enabled')"));
}

TEST_F(TrackerTest, OnIsNotCountedWhenItFailsAndNothingIsOnceItIsInvalidated) {
  start();
  becomeReady();
  host_.errors = {"no such function"};
  say(true);
  EXPECT_THAT(happened(), ElementsAre("VTTRACKER.doTrackOn()"));
  tracker_.invalidate();
  center_.post(kTracker, kAddActivity);
  workspace_.launch("Vantor");
  say(false);
  dark_ = true;
  center_.post(kDarkModeChanged);
  EXPECT_FALSE(tracker_.observersEnabled());
  EXPECT_EQ(happened().size(), 1);
  EXPECT_EQ(tracker_.commonProperties()["appearance"], "light");
  EXPECT_THAT(log_.lines(), ElementsAre("track on/off script err: no such function", "tracker invalidate"));
}

}  // namespace
}  // namespace pendra
