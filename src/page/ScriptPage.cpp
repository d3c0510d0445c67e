#include "ScriptPage.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineSettings>

namespace pendra {

namespace {

/// Begins the console messages that carry a posted message: a character that no script writes by chance.
const QString kPosted = QStringLiteral("\u0001posted\u0001");

/// Gives the page the message handlers that it expects, over the console, which is always there.
const QString kHandlers = QStringLiteral(R"js(
  (() => {
    const info = console.info.bind(console);
    const handler = name => ({ postMessage: body => info("\u0001posted\u0001" + JSON.stringify({ name, body: String(body) })) });
    window.webkit = { messageHandlers: new Proxy({}, { get: (_, name) => handler(name) }) };
  })();
)js");

/// The engine reports no errors of a script, so the script reports its own.
QString reportingErrors(const QString& script) {
  const QByteArray quoted = QJsonDocument(QJsonArray{script}).toJson(QJsonDocument::Compact);
  return u"(() => { try { (0, eval)(" + QString::fromUtf8(quoted) +
         u"[0]); return ''; } catch (error) { return String(error); } })()";
}

QWebEngineScript userScript(const QString& source, QWebEngineScript::InjectionPoint point) {
  QWebEngineScript script;
  script.setSourceCode(source);
  script.setInjectionPoint(point);
  script.setWorldId(QWebEngineScript::MainWorld);
  script.setRunsOnSubFrames(false);
  return script;
}

}  // namespace

ScriptPage::ScriptPage(QWebEngineProfile* profile, Report report)
    : QWebEnginePage(profile), report_(std::move(report)) {
  profile->setUrlRequestInterceptor(&requests_);
  // The page is a file that talks to its peer.
  settings()->setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, true);
  settings()->setAttribute(QWebEngineSettings::LocalContentCanAccessFileUrls, false);
  settings()->setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, false);
  connect(this, &QWebEnginePage::loadFinished, this, [this](bool ok) {
    // The engine counts a navigation that was refused as a load, too.
    if (!std::exchange(isLoading_, false)) return;
    if (ok) return report_({{QStringLiteral("event"), QStringLiteral("finished")}});
    const QString error = u"cannot load " + requestedUrl().toString(QUrl::RemoveQuery);
    report_({{QStringLiteral("event"), QStringLiteral("failed")}, {QStringLiteral("error"), error}});
  });
  connect(this, &QWebEnginePage::renderProcessTerminated, this, [this] {
    report_({{QStringLiteral("event"), QStringLiteral("failed")},
             {QStringLiteral("error"), QStringLiteral("the page's process ended")}});
  });
}

ScriptPage::~ScriptPage() { profile()->setUrlRequestInterceptor(nullptr); }

bool ScriptPage::acceptNavigationRequest(const QUrl& address, NavigationType type, bool isMainFrame) {
  return type == NavigationTypeTyped && isMainFrame && requests_.isPage(address);
}

void ScriptPage::handle(const QJsonObject& request) {
  const QString what = request[QStringLiteral("do")].toString();
  if (what == u"load") startLoading(request);
  if (what == u"evaluate")
    evaluate(request[QStringLiteral("id")].toInt(), request[QStringLiteral("script")].toString());
}

void ScriptPage::startLoading(const QJsonObject& request) {
  scripts().clear();
  scripts().insert(userScript(kHandlers, QWebEngineScript::DocumentCreation));
  for (const auto& source : request[QStringLiteral("scripts")].toArray()) {
    scripts().insert(userScript(source.toString(), QWebEngineScript::DocumentReady));
  }
  const QUrl address(request[QStringLiteral("address")].toString());
  requests_.allow(address, QUrl(request[QStringLiteral("peer")].toString()));
  isLoading_ = true;
  load(address);
}

void ScriptPage::evaluate(int id, const QString& script) {
  runJavaScript(reportingErrors(script), [this, id](const QVariant& error) {
    report_({{QStringLiteral("event"), QStringLiteral("evaluated")},
             {QStringLiteral("id"), id},
             {QStringLiteral("error"), error.toString()}});
  });
}

void ScriptPage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString& message, int,
                                          const QString&) {
  if (!message.startsWith(kPosted)) return;
  QJsonObject posted = QJsonDocument::fromJson(message.mid(kPosted.size()).toUtf8()).object();
  posted.insert(QStringLiteral("event"), QStringLiteral("message"));
  report_(posted);
}

}  // namespace pendra
