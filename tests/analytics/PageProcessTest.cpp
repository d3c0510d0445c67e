#include "analytics/PageProcess.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QGuiApplication>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>
#include <QWindow>

#include "analytics/TrackerNotifications.h"
#include "analytics/WindowWatch.h"
#include "platform/Resources.h"
#include "support/Events.h"
#include "support/TestPlaces.h"

namespace pendra {
namespace {

using namespace std::chrono_literals;

constexpr int kEngineStart = 60000;  ///< milliseconds, on a machine that has much else to do

/// A service for web pages, which any page may ask.
class Service {
 public:
  Service() {
    EXPECT_TRUE(server_.listen(QHostAddress::LocalHost));
    QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] {
      ++connections;
      QTcpSocket* const socket = server_.nextPendingConnection();  // the server owns it
      QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket] {
        if (socket->readAll().contains("\r\n\r\n"))
          socket->write("HTTP/1.1 200 OK\r\nAccess-Control-Allow-Origin: *\r\nContent-Length: 0\r\n\r\n");
      });
    });
  }
  [[nodiscard]] QString address() const {
    return QStringLiteral("http://127.0.0.1:%1/").arg(server_.serverPort());
  }
  int connections = 0;

 private:
  QTcpServer server_;
};

/// The page that belongs to a program, and what it says.
class RealPage : public testing::Test, public ScriptHost::Delegate {
 protected:
  void didFinishNavigation() override { isLoaded_ = true; }
  void didFailNavigation(const QString& error) override { said_ << error; }
  void didReceiveScriptMessage(const QString&, const QString& body) override { said_ << body; }

  void load(const QString& file) {
    page_.setDelegate(this);
    page_.load("file://" + file, peer_.address());
    ASSERT_TRUE(eventually([&] { return isLoaded_; }, kEngineStart));
  }
  /// What the page says after this script.
  QString answerTo(const QString& script) {
    said_.clear();
    page_.evaluate(script, {});
    EXPECT_TRUE(eventually([&] { return !said_.isEmpty(); })) << script.toStdString();
    return said_.join('\n');
  }

  int argumentCount_ = 0;
  QGuiApplication application_{argumentCount_, nullptr};
  TestPlaces places_;
  Service peer_;
  PageProcess page_{PageProcess::installed(), {0ms, 10s}};
  bool isLoaded_ = false;
  QStringList said_;
};

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

TEST_F(RealPage, OfNoPolicyReachesItsPeerAndNothingElse) {
  Service elsewhere;
  QFile::copy(resourceFolder() + "/Pendra.help/Contents/Resources/English.lproj/pictures/about-light.png",
              places_.path("neighbour.png"));
  ASSERT_TRUE(
      writeFile(places_.path("page.html"),
                "<script>const say = text => webkit.messageHandlers.any.postMessage(text); let image; "
                "const neighbour = location.pathname.replace('page.html', 'neighbour.png')</script>"));
  load(places_.path("page.html"));
  for (QString attempt : kTries) {
    EXPECT_EQ(answerTo(attempt.replace("%@", elsewhere.address())), "refused") << attempt.toStdString();
  }
  EXPECT_EQ(elsewhere.connections, 0);
  EXPECT_EQ(answerTo("fetch('" + peer_.address() + "').then(() => say('sent'))"), "sent");
}

TEST_F(RealPage, OfTheStatisticsHasAPolicyThatNamesTheServiceAlone) {
  load(resourceFolder() + "/amplitude/trackingWithAmplitude.html?" +
       QString::fromLatin1(QUrl::toPercentEncoding(peer_.address())));
  EXPECT_THAT(answerTo("document.addEventListener('securitypolicyviolation', event => "
                       "webkit.messageHandlers.any.postMessage(event.originalPolicy)); "
                       "fetch('http://127.0.0.1:9/')")
                  .toStdString(),
              testing::AllOf(testing::StartsWith("default-src 'none'"),
                             testing::EndsWith("connect-src " + peer_.address().toStdString())));
}

TEST(Page, ThatIsNotThereAnswersLater) {
  int argumentCount = 0;
  const QGuiApplication application(argumentCount, nullptr);
  PageProcess page("/no such program");
  QString error;
  page.evaluate("1", [&](const QString& text) { error = text; });
  EXPECT_TRUE(error.isEmpty());
  EXPECT_TRUE(eventually([&] { return !error.isEmpty(); }));
}

TEST(Windows, ArePostedWhenTheyAreShown) {
  int argumentCount = 0;
  const QGuiApplication application(argumentCount, nullptr);
  NotificationCenter center;
  const WindowWatch watch(center);
  QStringList titles;
  const auto posts = center.observe(tracker_notifications::kWindowDidBecomeVisible,
                                    [&](const auto& info) { titles << info.first; });
  QWindow window;
  window.setTitle("Acme Ltd: Write Cheques");
  window.show();
  EXPECT_EQ(titles, QStringList("Acme Ltd: Write Cheques"));
}

}  // namespace
}  // namespace pendra
