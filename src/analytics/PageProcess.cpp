#include "analytics/PageProcess.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "platform/Resources.h"

namespace pendra {

PageProcess::PageProcess(QString program, PageDelays delays) : program_(std::move(program)) {
  // What the engine says to its terminal is nobody's concern; the log is Pendra's own.
  process_.setStandardErrorFile(QProcess::nullDevice());
  startTimer_.setSingleShot(true);
  startTimer_.setInterval(delays.start);
  QObject::connect(&startTimer_, &QTimer::timeout, &process_, [this] { start(); });
  restTimer_.setSingleShot(true);
  restTimer_.setInterval(delays.rest);
  QObject::connect(&restTimer_, &QTimer::timeout, &process_, [this] { stop(); });
  refusalTimer_.setSingleShot(true);
  QObject::connect(&refusalTimer_, &QTimer::timeout, &process_,
                   [this] { answerPending(QStringLiteral("no page is loaded")); });
  QObject::connect(&process_, &QProcess::readyReadStandardOutput, &process_, [this] { readAnswers(); });
  QObject::connect(&process_, &QProcess::errorOccurred, &process_,
                   [this] { processEnded(process_.errorString()); });
  QObject::connect(&process_, &QProcess::finished, &process_,
                   [this] { processEnded(QStringLiteral("the page ended")); });
}

PageProcess::~PageProcess() {
  process_.disconnect();
  stop();
}

QString PageProcess::installed() { return helperFolder() + u"/pendra-page"; }

void PageProcess::load(const QString& address, const QString& peer) {
  address_ = address;
  peer_ = peer;
  startTimer_.start();
}

void PageProcess::start() {
  process_.start(program_, QStringList());
  send({{QStringLiteral("do"), QStringLiteral("load")},
        {QStringLiteral("address"), address_},
        {QStringLiteral("peer"), peer_},
        {QStringLiteral("scripts"), QJsonArray::fromStringList(userScripts_)}});
}

void PageProcess::stop() {
  // It keeps nothing that an end without warning could spoil.
  process_.kill();
  process_.waitForFinished(1000);
}

void PageProcess::evaluate(const QString& script, std::function<void(const QString&)> done) {
  const int id = ++lastId_;
  pending_.emplace(id, std::move(done));
  if (process_.state() == QProcess::NotRunning) {
    refusalTimer_.start();  // an answer never comes from within the question
    return;
  }
  send({{QStringLiteral("do"), QStringLiteral("evaluate")},
        {QStringLiteral("id"), id},
        {QStringLiteral("script"), script}});
  restTimer_.start();
}

void PageProcess::send(const QJsonObject& request) {
  process_.write(QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n');
}

void PageProcess::readAnswers() {
  while (process_.canReadLine()) handle(QJsonDocument::fromJson(process_.readLine()).object());
}

void PageProcess::handle(const QJsonObject& answer) {
  restTimer_.start();
  const QString event = answer[QStringLiteral("event")].toString();
  if (event == u"evaluated") {
    if (auto script = pending_.extract(answer[QStringLiteral("id")].toInt()); script && script.mapped()) {
      script.mapped()(answer[QStringLiteral("error")].toString());
    }
    return;
  }
  if (!delegate_) return;
  if (event == u"finished") delegate_->didFinishNavigation();
  if (event == u"failed") delegate_->didFailNavigation(answer[QStringLiteral("error")].toString());
  if (event == u"message")
    delegate_->didReceiveScriptMessage(answer[QStringLiteral("name")].toString(),
                                       answer[QStringLiteral("body")].toString());
}

void PageProcess::answerPending(const QString& reason) {
  for (const auto& [id, done] : std::exchange(pending_, {})) {
    if (done) done(reason);
  }
}

void PageProcess::processEnded(const QString& reason) {
  restTimer_.stop();
  answerPending(reason);
  if (delegate_) delegate_->didFailNavigation(reason);
}

}  // namespace pendra
