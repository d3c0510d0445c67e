#include "analytics/Tracker.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QJsonDocument>
#include <QRegularExpression>

#include "RecordingHost.h"
#include "analytics/Disclosure.h"
#include "analytics/TrackerNotifications.h"
#include "platform/Identifiers.h"
#include "platform/Preferences.h"
#include "support/LogCapture.h"
#include "support/Rows.h"
#include "support/ScriptedWorkspace.h"
#include "support/TestPlaces.h"

namespace pendra {
namespace {

using namespace tracker_notifications;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using testing::StartsWith;

const QString kResources = PENDRA_RESOURCES;

class TrackerTest : public testing::Test {
 protected:
  TrackerTest() {
    Consent(defaults_).noticeAnswered();
    make({});
  }

  void make(const TrackerFacts& changed) {
    auto host = std::make_unique<RecordingHost>();
    host_ = host.get();
    TrackerFacts facts{"1.2.3", "Debian 12", "Desk 9", "1920 x 1053", [this] { return dark_; }};
    if (!changed.model.isEmpty()) facts.model = changed.model;
    if (!changed.shortVersion.isEmpty()) facts.shortVersion = changed.shortVersion;
    tracker_ = std::make_unique<Tracker>("UUID", std::move(host),
                                         TrackerSources{center_, workspace_, defaults_, doNotTrack_}, facts,
                                         kResources);
  }

  /// Starts the tracker up to the page's "initHandler", and forgets the scripts up to there.
  void start() {
    tracker_->startTrackingCompletionHandler(
        [this](const auto& error) { outcomes_ << error.value_or("started"); }, "http://recorder/");
    host_->page->didFinishNavigation();
    host_->page->didReceiveScriptMessage("initHandler", "ready");
  }

  /// The scripts since the page was ready, with the properties of events reduced to their feature.
  QStringList happened() const {
    static const QRegularExpression properties(R"re('\{.*"feature":"([^"]*)".*\}')re");
    QStringList shortened;
    for (QString script : host_->scripts.mid(1)) shortened << script.replace(properties, "'\\1'");
    return shortened;
  }

  TestPlaces places_;
  UserDefaults defaults_{places_.defaultsFile()};
  NotificationCenter center_;
  bool doNotTrack_ = false;
  ScriptedWorkspace workspace_;
  LogCapture log_;
  bool dark_ = false;
  RecordingHost* host_ = nullptr;
  std::unique_ptr<Tracker> tracker_;
  QStringList outcomes_;
};

TEST_F(TrackerTest, StartsWhenThePageIsReady) {
  tracker_->startTrackingCompletionHandler(
      [this](const auto& error) { outcomes_ << error.value_or("started"); }, "http://recorder/");
  EXPECT_THAT(host_->loaded,
              ElementsAre(QString("file://" + kResources +
                                  "/amplitude/trackingWithAmplitude.html?http%3A%2F%2Frecorder%2F")));
  host_->page->didFinishNavigation();
  EXPECT_THAT(host_->scripts,
              ElementsAre(QString("VTTRACKER.doInit('3f9d0b6e1c7a48d2a5e0c4b19f6d2e87','UUID','"
                                  R"js({"company_type":"Placeholder Industry","role":"Pendra User"}'))js")));
  EXPECT_FALSE(tracker_->observersEnabled());
  host_->page->didReceiveScriptMessage("initHandler", "ready");
  EXPECT_TRUE(tracker_->observersEnabled());
  host_->page->didReceiveScriptMessage("initHandler", "again");
  EXPECT_EQ(outcomes_, QStringList("started"));
}

TEST_F(TrackerTest, WhatIsToldAPageThatHasEndedWaitsForTheNext) {
  start();
  host_->page->didFailNavigation("the page ended");
  center_.post(kTracker, kAddActivity);
  defaults_.setBoolean(preferences::kAnalyticsTracker, false);
  EXPECT_EQ(host_->loaded.size(), 2);
  EXPECT_THAT(happened(), testing::IsEmpty());
  host_->page->didFinishNavigation();
  host_->page->didReceiveScriptMessage("initHandler", "ready");
  EXPECT_THAT(happened().mid(1),
              ElementsAre("VTTRACKER.trackEvent('Pendra_ADD_ACTIVITY','Pendra Add Activity')",
                          "VTTRACKER.trackEvent('Pendra_DISABLE_FEEDBACK','Feedback has been disabled')",
                          "VTTRACKER.doTrackOff()"));

  host_->page->didFailNavigation("the page ended");
  center_.post(kTracker, kAddActivity);
  EXPECT_EQ(host_->loaded.size(), 2);  // whoever said no is not asked for a page again
  defaults_.setBoolean(preferences::kAnalyticsTracker, true);
  EXPECT_EQ(host_->loaded.size(), 3);
  host_->page->didFailNavigation("no engine");
  EXPECT_EQ(log_.lines().last(), "track on/off script err: no engine");
  EXPECT_EQ(outcomes_, QStringList("started"));
}

struct Told {
  const char* name;
  std::function<void(UserDefaults&)> before;  ///< the tracker is started
  std::function<void(UserDefaults&)> after;
  bool isNoticeDue;
  qsizetype loads;
};

class Consenting : public TrackerTest, public testing::WithParamInterface<Told> {};

/// The preferences of the row's name alone.
TEST_P(Consenting, DecidesWhetherThereIsAPage) {
  UserDefaults defaults(places_.path("fresh.ini"));
  GetParam().before(defaults);
  EXPECT_EQ(Consent(defaults).isNoticeDue(), GetParam().isNoticeDue);
  auto host = std::make_unique<RecordingHost>();
  const RecordingHost& page = *host;
  Tracker tracker("UUID", std::move(host), TrackerSources{center_, workspace_, defaults, doNotTrack_},
                  TrackerFacts{"1", {}, {}, {}, [] { return false; }}, kResources);
  tracker.startTrackingCompletionHandler([](const auto&) {}, "http://recorder/");
  GetParam().after(defaults);
  center_.post(kTracker, kAddActivity);
  EXPECT_EQ(page.loaded.size(), GetParam().loads);
}

const auto nothing = [](UserDefaults&) {};
const auto shown = [](UserDefaults& defaults) { Consent(defaults).noticeShown(); };
const auto answered = [](UserDefaults& defaults) { Consent(defaults).noticeAnswered(); };
const auto saysNo = [](UserDefaults& defaults) {
  defaults.setBoolean(preferences::kAnalyticsTracker, false);
};
const auto saysYes = [](UserDefaults& defaults) {
  defaults.setBoolean(preferences::kAnalyticsTracker, true);
};
const auto shownAtAnEarlierStart = [](UserDefaults& defaults) {
  Consent(defaults).noticeShown();
  Consent(defaults).programStarted();
};
const auto startedAgainUntold = [](UserDefaults& defaults) { Consent(defaults).programStarted(); };

INSTANTIATE_TEST_SUITE_P(Table, Consenting,
                         testing::Values(Told{"NobodyWasTold", startedAgainUntold, nothing, true, 0},
                                         Told{"ShownOnly", shown, nothing, false, 0},
                                         Told{"ShownThenAnswered", shown, answered, false, 1},
                                         Told{"ShownThenRefused", shown, saysNo, false, 0},
                                         Told{"ShownThenWanted", shown, saysYes, false, 1},
                                         Told{"ShownEarlier", shownAtAnEarlierStart, nothing, false, 1},
                                         Told{"Refused", saysNo, nothing, false, 0},
                                         Told{"RefusedThenAnswered", saysNo, answered, false, 0},
                                         Told{"RefusedThenWanted", saysNo, saysYes, false, 1}),
                         RowName());

TEST(Disclosure, StandsInTheHelpInTheSameWords) {
  QFile help(kResources + "/Pendra.help/Contents/Resources/English.lproj/PendraHelp1_0.htm");
  ASSERT_TRUE(help.open(QIODevice::ReadOnly));
  EXPECT_THAT(QString::fromUtf8(help.readAll()).simplified().toStdString(),
              testing::HasSubstr(statisticsDisclosure().toStdString()));
}

TEST_F(TrackerTest, SaysOnceWhyThePageCannotBeLoaded) {
  tracker_->startTrackingCompletionHandler(
      [this](const auto& error) { outcomes_ << error.value_or("started"); }, {});
  host_->page->didFailNavigation("no engine");
  host_->page->didFailNavigation("no engine");
  EXPECT_EQ(outcomes_, QStringList("no engine"));
  center_.post(kTracker, kAddActivity);
  EXPECT_TRUE(host_->scripts.isEmpty());
}

TEST_F(TrackerTest, AnEventCarriesWhatIsKnownAndACleanedFeature) {
  start();
  dark_ = true;
  center_.post(kDarkModeChanged);
  tracker_->trackEvent("ignored", "ACTION", "it's 'so'");
  EXPECT_EQ(
      host_->scripts.last(),
      "VTTRACKER.trackEvent('Pendra_ACTION','"
      R"({"app_version":"1","app_version_major":"1","app_version_norel":"1.2.3","appearance":"dark",)"
      R"js("feature":"its so","model":"Desk 9","os":"Debian 12","screen_resolution":"1920 x 1053"}'))js");
  EXPECT_THAT(log_.lines(), Contains(QString("\nAmplitude Event name: ACTION detected\n")));
}

TEST_F(TrackerTest, OnlyTheFeatureIsCleaned) {
  make({.shortVersion = {}, .os = {}, .model = "Ada's Desk", .screenResolution = {}, .isDark = {}});
  start();
  tracker_->trackEvent({}, "ACTION", "feature");
  EXPECT_TRUE(host_->scripts.last().contains(R"("model":"Ada's Desk")"));
}

struct Cause {
  const char* name;
  std::function<void(NotificationCenter&, ScriptedWorkspace&)> happens;
  QStringList scripts;
};

class TrackerCause : public TrackerTest, public testing::WithParamInterface<Cause> {};

TEST_P(TrackerCause, IsCountedAsListed) {
  start();
  GetParam().happens(center_, workspace_);
  EXPECT_EQ(happened(), GetParam().scripts);
}

INSTANTIATE_TEST_SUITE_P(
    Table, TrackerCause,
    testing::Values(Cause{"Application",
                          [](auto&, auto& desktop) { desktop.launch("Vantor"); },
                          {"VTTRACKER.trackEvent('Pendra_VANTOR_LAUNCHED','Vantor')"}},
                    Cause{"OtherApplication", [](auto&, auto& desktop) { desktop.launch("Editor"); }, {}},
                    Cause{"Window",
                          [](auto& center, auto&) {
                            center.post(kWindowDidBecomeVisible, {"Acme Ltd: Write Cheques", {}});
                          },
                          {"VTTRACKER.trackEvent('Pendra_VANTOR_WRITE_CHEQUES','Write Cheques')"}},
                    Cause{"OtherWindow",
                          [](auto& center, auto&) {
                            center.post(kWindowDidBecomeVisible, {"Pendra File", {}});
                          },
                          {}},
                    Cause{"ListedButNoWindow",
                          [](auto& center, auto&) {
                            center.post(kWindowDidBecomeVisible, {"Vantor", {}});
                          },
                          {}},
                    Cause{"WindowWithoutTitle",
                          [](auto& center, auto&) {
                            center.post(kWindowDidBecomeVisible, {"", {}});
                          },
                          {}},
                    Cause{"Activity",
                          [](auto& center, auto&) { center.post(kTracker, kAddActivity); },
                          {"VTTRACKER.trackEvent('Pendra_ADD_ACTIVITY','Pendra Add Activity')"}},
                    Cause{"OtherNotification",
                          [](auto& center, auto&) {
                            center.post(kTracker, {"Pendra Other", "ADD_ACTIVITY"});
                          },
                          {}},
                    Cause{"DoNotTrack",
                          [](auto& center, auto& desktop) {
                            center.post(kTracker, {kUpgradeDoNotTrack, {}});
                            center.post(kTracker, kAddActivity);
                            desktop.launch("Vantor");
                          },
                          {}}),
    RowName());

TEST_F(TrackerTest, EveryWatchedWindowIsListed) {
  EXPECT_EQ(identifiers::kAccountingWindows.size(), 9);
  for (const QString& title : identifiers::kAccountingWindows)
    EXPECT_TRUE(tracker_->eventList().contains(title));
}

TEST_F(TrackerTest, OffIsCountedBeforeItActsAndOnAfterwards) {
  start();
  defaults_.setBoolean(preferences::kAnalyticsTracker, false);
  defaults_.setBoolean(preferences::kAnalyticsTracker, true);
  EXPECT_THAT(happened(),
              ElementsAre("VTTRACKER.trackEvent('Pendra_DISABLE_FEEDBACK','Feedback has been disabled')",
                          "VTTRACKER.doTrackOff()", "VTTRACKER.doTrackOn()",
                          "VTTRACKER.trackEvent('Pendra_ENABLE_FEEDBACK','Feedback has been enabled')"));
}

TEST_F(TrackerTest, OnIsNotCountedWhenItFails) {
  start();
  host_->errors = {"no such function"};
  defaults_.setBoolean(preferences::kAnalyticsTracker, true);
  EXPECT_THAT(happened(), ElementsAre("VTTRACKER.doTrackOn()"));
  EXPECT_THAT(log_.lines(), ElementsAre("track on/off script err: no such function"));
}

TEST_F(TrackerTest, LogsWhatScriptsAndThePageSay) {
  host_->errors = {"bad init"};
  start();
  host_->errors = {"bad event"};
  center_.post(kTracker, kAddActivity);
  host_->page->didReceiveScriptMessage("logHandler", "hello");
  EXPECT_THAT(log_.lines(),
              ElementsAre("init script eval err: bad init", "\nAmplitude Event name: ADD_ACTIVITY detected\n",
                          "error while sending event: bad event", "[Tracker WebView]: hello"));
}

TEST_F(TrackerTest, InvalidateEndsEveryObservation) {
  start();
  tracker_->invalidate();
  center_.post(kTracker, kAddActivity);
  workspace_.launch("Vantor");
  defaults_.setBoolean(preferences::kAnalyticsTracker, false);
  dark_ = true;
  center_.post(kDarkModeChanged);
  EXPECT_FALSE(tracker_->observersEnabled());
  EXPECT_THAT(happened(), testing::IsEmpty());
  EXPECT_EQ(tracker_->commonProperties()["appearance"], "light");
  EXPECT_THAT(log_.lines(), ElementsAre("tracker invalidate"));
}

}  // namespace
}  // namespace pendra
