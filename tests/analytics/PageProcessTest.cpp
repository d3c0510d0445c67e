#include "analytics/PageProcess.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QJsonObject>
#include <QWindow>

#include "Recorder.h"
#include "analytics/Tracker.h"
#include "analytics/TrackerNotifications.h"
#include "analytics/WindowWatch.h"
#include "platform/Identifiers.h"
#include "platform/Preferences.h"
#include "platform/Resources.h"
#include "support/Events.h"
#include "support/LogCapture.h"
#include "support/ScriptedWorkspace.h"
#include "support/TestPlaces.h"

namespace pendra {
namespace {

using namespace tracker_notifications;
using namespace std::chrono_literals;

constexpr int kEngineStart = 60000;  ///< milliseconds, on a machine that has much else to do

/// How many processes this one has started that still run.
int pagesOfThisProcess() {
  int pages = 0;
  for (const QString& task : QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    QFile children("/proc/self/task/" + task + "/children");
    if (children.open(QIODevice::ReadOnly)) pages += static_cast<int>(children.readAll().count(' '));
  }
  return pages;
}

class PageTest : public testing::Test {
 protected:
  PageTest() { Consent(defaults_).noticeAnswered(); }

  std::unique_ptr<Tracker> trackerOver(const QString& program) {
    return std::make_unique<Tracker>("UUID", std::make_unique<PageProcess>(program, PageDelays{0ms, rest_}),
                                     TrackerSources{center_, workspace_, defaults_, doNotTrack_},
                                     TrackerFacts::ofMachine(), resourceFolder());
  }

  /// Starts a tracker and waits for how that ends.
  QString start(Tracker& tracker) {
    std::optional<QString> outcome;
    tracker.startTrackingCompletionHandler([&](const auto& error) { outcome = error.value_or("started"); },
                                           recorder_.address());
    EXPECT_TRUE(eventually([&] { return outcome.has_value(); }, kEngineStart));
    return outcome.value_or(QString());
  }

  bool arrives(const QString& event) {
    return eventually([&] { return recorder_.names().contains(event); }, kEngineStart);
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
  std::chrono::milliseconds rest_ = 10s;
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
  const auto tracker = trackerOver(PageProcess::installed());
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

TEST_F(RealPage, EndsAtRestAndComesBackForTheNextEvent) {
  rest_ = 3s;
  const auto tracker = trackerOver(PageProcess::installed());
  ASSERT_EQ(start(*tracker), "started");
  EXPECT_TRUE(eventually([] { return pagesOfThisProcess() == 0; }, kEngineStart));
  center_.post(kTracker, kAddActivity);
  EXPECT_TRUE(arrives("Pendra_ADD_ACTIVITY"));
  EXPECT_EQ(pagesOfThisProcess(), 1);
  EXPECT_TRUE(eventually([] { return pagesOfThisProcess() == 0; }, kEngineStart));
}

/// What a page might try that is not the statistics' own. Each script ends in a message of what became of it.
const QStringList kTries{
    "fetch('%@').then(() => say('fetched'), () => say('refused'))",
    "fetch('file:///etc/hostname').then(() => say('read'), () => say('refused'))",
    "image = new Image(); image.onload = () => say('shown'); image.onerror = () => say('refused'); "
    "image.src = '%@'",
    "image = new Image(); image.onload = () => say('shown'); image.onerror = () => say('refused'); "
    "image.src = 'file://' + neighbour",
    "try { new WebSocket('%@'.replace('http', 'ws')).onerror = () => say('refused') } "
    "catch { say('refused') }",
    "try { window.open('%@') ? say('opened') : say('refused') } catch { say('refused') }",
    "location.href = '%@'; setTimeout(() => say('refused'), 100)",
    "location.href = 'file:///etc/hostname'; setTimeout(() => say('refused'), 100)"};

const QString kBody = "{\"api_key\":\"" + identifiers::kAnalyticsKey + "\",\"events\":[]}";

/// Hears what a page says.
struct Listener final : ScriptHost::Delegate {
  void didFinishNavigation() override { isLoaded = true; }
  void didFailNavigation(const QString& error) override { said << error; }
  void didReceiveScriptMessage(const QString&, const QString& body) override { said << body; }

  bool isLoaded = false;
  QStringList said;
};

TEST_F(RealPage, APageOfNoPolicyReachesItsPeerAndNothingElse) {
  Recorder elsewhere;
  QFile::copy(resourceFolder() + "/Pendra.help/Contents/Resources/English.lproj/pictures/about-light.png",
              places_.path("neighbour.png"));
  QFile file(places_.path("page.html"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(
      "<script>const say = text => webkit.messageHandlers.any.postMessage(text); let image; "
      "const neighbour = location.pathname.replace('page.html', 'neighbour.png')</script>");
  file.close();
  PageProcess page(PageProcess::installed(), {0ms, 10s});
  Listener listener;
  page.setDelegate(&listener);
  page.load("file://" + file.fileName(), recorder_.address());
  ASSERT_TRUE(eventually([&] { return listener.isLoaded; }, kEngineStart));
  for (QString attempt : kTries) {
    listener.said.clear();
    page.evaluate(attempt.replace("%@", elsewhere.address()), {});
    EXPECT_TRUE(eventually([&] { return !listener.said.isEmpty(); })) << attempt.toStdString();
    EXPECT_EQ(listener.said, QStringList("refused")) << attempt.toStdString();
  }
  EXPECT_EQ(elsewhere.connections(), 0);
  page.evaluate(
      "fetch('" + recorder_.address() + "', {method: 'POST', body: '" + kBody + "'}).then(() => say('sent'))",
      {});
  EXPECT_TRUE(eventually([&] { return listener.said.contains("sent"); }));
}

TEST_F(RealPage, ThePolicyOfTheStatisticsNamesTheServiceAlone) {
  PageProcess page(PageProcess::installed(), {0ms, 10s});
  Listener listener;
  page.setDelegate(&listener);
  const QString peer = QString::fromLatin1(QUrl::toPercentEncoding(recorder_.address()));
  page.load("file://" + resourceFolder() + "/amplitude/trackingWithAmplitude.html?" + peer,
            recorder_.address());
  ASSERT_TRUE(eventually([&] { return listener.isLoaded; }, kEngineStart));
  page.evaluate(
      "document.addEventListener('securitypolicyviolation', event => "
      "webkit.messageHandlers.any.postMessage(event.originalPolicy)); fetch('http://127.0.0.1:9/')",
      {});
  EXPECT_TRUE(eventually([&] { return !listener.said.isEmpty(); }));
  EXPECT_THAT(listener.said.value(0).toStdString(),
              testing::AllOf(testing::StartsWith("default-src 'none'"),
                             testing::EndsWith("connect-src " + recorder_.address().toStdString())));
}

TEST_F(RealPage, AnEventThatIsNoScriptIsOnlyLogged) {
  const auto tracker = trackerOver(PageProcess::installed());
  ASSERT_EQ(start(*tracker), "started");
  tracker->trackEvent({}, "it's", "feature");
  EXPECT_TRUE(eventually([&] { return log_.lines().size() == 2; }));
  EXPECT_THAT(log_.lines().last().toStdString(),
              testing::StartsWith("error while sending event: SyntaxError"));
}

}  // namespace
}  // namespace pendra
