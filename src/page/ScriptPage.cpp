#include "ScriptPage.h"

#include <QJsonArray>
#include <QJsonDocument>
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
  // The page is a file that talks to the service.
  settings()->setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, true);
  connect(this, &QWebEnginePage::loadFinished, this, [this](bool ok) {
    if (ok) return report_({{"event", "finished"}});
    const QString error = u"cannot load " + requestedUrl().toString(QUrl::RemoveQuery);
    report_({{"event", "failed"}, {"error", error}});
  });
  connect(this, &QWebEnginePage::renderProcessTerminated, this, [this] {
    report_({{"event", "failed"}, {"error", "the page's process ended"}});
  });
}

void ScriptPage::handle(const QJsonObject& request) {
  const QString what = request["do"].toString();
  if (what == u"load") startLoading(request);
  if (what == u"evaluate") evaluate(request["id"].toInt(), request["script"].toString());
}

void ScriptPage::startLoading(const QJsonObject& request) {
  scripts().clear();
  scripts().insert(userScript(kHandlers, QWebEngineScript::DocumentCreation));
  for (const auto& source : request["scripts"].toArray()) {
    scripts().insert(userScript(source.toString(), QWebEngineScript::DocumentReady));
  }
  load(QUrl(request["address"].toString()));
}

void ScriptPage::evaluate(int id, const QString& script) {
  runJavaScript(reportingErrors(script), [this, id](const QVariant& error) {
    report_({{"event", "evaluated"}, {"id", id}, {"error", error.toString()}});
  });
}

void ScriptPage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString& message, int,
                                          const QString&) {
  if (!message.startsWith(kPosted)) return;
  QJsonObject posted = QJsonDocument::fromJson(message.mid(kPosted.size()).toUtf8()).object();
  posted.insert("event", "message");
  report_(posted);
}

}  // namespace pendra
