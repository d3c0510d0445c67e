#include "analytics/PageProcess.h"

#include <gmock/gmock.h>

#include <QGuiApplication>
#include <QJsonObject>
#include <QWindow>

#include "Recorder.h"
#include "analytics/Tracker.h"
#include "analytics/TrackerNotifications.h"
#include "analytics/WindowWatch.h"
#include "platform/Preferences.h"
#include "platform/Resources.h"
#include "support/Events.h"
#include "support/LogCapture.h"
#include "support/ScriptedWorkspace.h"
#include "support/TestPlaces.h"

namespace pendra {
namespace {

using namespace tracker_notifications;

class PageTest : public testing::Test {
 protected:
  std::unique_ptr<Tracker> trackerOver(const QString& program) {
    return std::make_unique<Tracker>("UUID",
                                     std::make_unique<PageProcess>(program, std::chrono::milliseconds(0)),
                                     TrackerSources{center_, workspace_, defaults_, doNotTrack_},
                                     TrackerFacts::ofMachine(), resourceFolder());
  }

  /// Starts a tracker and waits for how that ends.
  QString start(Tracker& tracker) {
    std::optional<QString> outcome;
    tracker.startTrackingCompletionHandler([&](const auto& error) { outcome = error.value_or("started"); },
                                           recorder_.address());
    EXPECT_TRUE(eventually([&] { return outcome.has_value(); }, 60000));
    return outcome.value_or(QString());
  }

  bool arrives(const QString& event) {
    return eventually([&] { return recorder_.names().contains(event); });
  }

  int argumentCount_ = 0;
  QGuiApplication application_{argumentCount_, nullptr};
  TestPlaces places_;
  UserDefaults defaults_{places_.defaultsFile()};
  NotificationCenter center_;
  bool doNotTrack_ = false;
  ScriptedWorkspace workspace_;
  WindowWatch windows_{center_};
  Recorder recorder_;
  LogCapture log_;
};

TEST_F(PageTest, WithoutTheProgramForPagesLoadingFails) {
  const auto tracker = trackerOver(places_.path("no such program"));
  EXPECT_FALSE(start(*tracker).isEmpty());
  center_.post(kTracker, kAddActivity);
  EXPECT_TRUE(log_.lines().isEmpty());
}

TEST_F(PageTest, AScriptWithoutAPageReportsIt) {
  PageProcess page(places_.path("no such program"));
  QString error;
  page.evaluate("1", [&](const QString& text) { error = text; });
  EXPECT_TRUE(error.isEmpty());
  EXPECT_TRUE(eventually([&] { return !error.isEmpty(); }));
}

using RealPage = PageTest;

TEST_F(RealPage, SendsWhatHappensUntilItIsForbidden) {
  const auto tracker = trackerOver(PageProcess::besideProgram());
  ASSERT_EQ(start(*tracker), "started");
  center_.post(kTracker, kAppLaunched);
  EXPECT_TRUE(arrives("Pendra_PENDRA_APP_LAUNCHED"));
  center_.post(kTracker, kAddActivity);
  EXPECT_TRUE(arrives("Pendra_ADD_ACTIVITY"));
  QWindow window;
  window.setTitle("Acme Ltd: Write Cheques");
  window.show();
  EXPECT_TRUE(arrives("Pendra_VANTOR_WRITE_CHEQUES"));

  defaults_.setBoolean(preferences::kAnalyticsTracker, false);
  EXPECT_TRUE(arrives("Pendra_DISABLE_FEEDBACK"));
  center_.post(kTracker, kAddActivity);
  defaults_.setBoolean(preferences::kAnalyticsTracker, true);
  EXPECT_TRUE(arrives("Pendra_ENABLE_FEEDBACK"));

  center_.post(kTracker, {kUpgradeDoNotTrack, {}});
  center_.post(kTracker, kAddActivity);
  tracker->trackEvent({}, "LATE", {});
  EXPECT_EQ(recorder_.names(),
            QStringList({"Pendra_PENDRA_APP_LAUNCHED", "Pendra_ADD_ACTIVITY", "Pendra_VANTOR_WRITE_CHEQUES",
                         "Pendra_DISABLE_FEEDBACK", "Pendra_ENABLE_FEEDBACK"}));
  const QJsonObject first = recorder_.events().first().toObject();
  EXPECT_EQ(first["user_id"], "UUID");
  EXPECT_EQ(first["user_properties"].toObject()["role"], "Pendra User");
  EXPECT_EQ(recorder_.events().last().toObject()["event_properties"].toObject()["feature"],
            "Feedback has been enabled");
}

TEST_F(RealPage, AStoredRefusalIsHeardBeforeTheFirstEvent) {
  defaults_.setBoolean(preferences::kAnalyticsTracker, false);
  const auto tracker = trackerOver(PageProcess::besideProgram());
  ASSERT_EQ(start(*tracker), "started");
  center_.post(kTracker, kAppLaunched);
  defaults_.setBoolean(preferences::kAnalyticsTracker, true);
  EXPECT_TRUE(arrives("Pendra_ENABLE_FEEDBACK"));
  EXPECT_EQ(recorder_.names(), QStringList("Pendra_ENABLE_FEEDBACK"));
}

TEST_F(RealPage, AnEventThatIsNoScriptIsOnlyLogged) {
  const auto tracker = trackerOver(PageProcess::besideProgram());
  ASSERT_EQ(start(*tracker), "started");
  tracker->trackEvent({}, "it's", "feature");
  EXPECT_TRUE(eventually([&] { return log_.lines().size() == 2; }));
  EXPECT_THAT(log_.lines().last().toStdString(),
              testing::StartsWith("error while sending event: SyntaxError"));
}

}  // namespace
}  // namespace pendra
