#include "analytics/Tracker.h"

#include <QJsonDocument>
#include <QUrl>

#include "analytics/TrackerNotifications.h"
#include "platform/Identifiers.h"
#include "platform/Log.h"
#include "platform/Preferences.h"
#include "platform/Text.h"

namespace pendra {

using namespace tracker_notifications;

namespace {

const QString kConsoleScript = QStringLiteral(
    "window.console.log = function(msg) { window.webkit.messageHandlers.logHandler.postMessage(msg) }");

QString compactJson(const QJsonObject& object) {
  return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

/// Logs what a script threw, if anything, into the "%@" of `pattern`.
Tracker::Done logging(QStringView pattern) {
  return [pattern](const QString& error) {
    if (!error.isEmpty()) logLine(formatted(pattern, {error}));
  };
}

QJsonObject commonPropertiesOf(const TrackerFacts& facts) {
  const QString major = facts.shortVersion.section(u'.', 0, 0);
  return {
      {QStringLiteral("app_version_norel"), facts.shortVersion},
      {QStringLiteral("app_version"), major},
      {QStringLiteral("app_version_major"), major},  // Kept for the service's reports: one value, two names.
      {QStringLiteral("os"), facts.os},
      {QStringLiteral("model"), facts.model},
      {QStringLiteral("screen_resolution"), facts.screenResolution}};
}

}  // namespace

Tracker::Tracker(const QString& userUUID, std::unique_ptr<ScriptHost> webview, TrackerSources sources,
                 TrackerFacts facts, const QString& resources)
    : webview_(std::move(webview)),
      sources_(sources),
      consent_(sources.defaults),
      facts_(std::move(facts)),
      page_(resources + u"/amplitude/trackingWithAmplitude.html"),
      userUUID_(userUUID),
      userProperties_{{QStringLiteral("company_type"), QStringLiteral("Placeholder Industry")},
                      {QStringLiteral("role"), QStringLiteral("Pendra User")}},
      commonProperties_(commonPropertiesOf(facts_)),
      eventList_(readStrings(resources + u"/Events.strings")) {
  webview_->setDelegate(this);
  webview_->addUserScript(kConsoleScript);
  handleAppearanceChange();
  appearance_ = sources_.center.observe(kDarkModeChanged, [this](const auto&) { handleAppearanceChange(); });
  preference_ = sources_.defaults.changesOf(preferences::kAnalyticsTracker).observe([this] {
    observeValueForKeyPath();
  });
  notice_ = consent_.noticeChanges().observe([this] { startWhenAllowed(); });
}

Tracker::~Tracker() { webview_->setDelegate(nullptr); }

void Tracker::startTrackingCompletionHandler(StartHandler handler, const QString& address) {
  startTrackingCompletionHandler_ = std::move(handler);
  address_ = address;
  startWhenAllowed();
}

void Tracker::startWhenAllowed() {
  if (startTrackingCompletionHandler_ && consent_.isGiven()) loadPage();
}

void Tracker::loadPage() {
  if (std::exchange(isPageAsked_, true)) return;
  QUrl page = QUrl::fromLocalFile(page_);
  page.setQuery(QString::fromLatin1(QUrl::toPercentEncoding(address_)));
  webview_->load(page.toString(QUrl::FullyEncoded), address_);
}

void Tracker::run(const QString& script, Done done) {
  if (isPageReady_) return webview_->evaluate(script, std::move(done));
  waiting_.emplace_back(script, std::move(done));
  loadPage();
}

void Tracker::didFinishNavigation() {
  const QString script = formatted(u"VTTRACKER.doInit('%@','%@','%@')",
                                   {identifiers::kAnalyticsKey, userUUID_, compactJson(userProperties_)});
  webview_->evaluate(script, logging(u"init script eval err: %@"));
}

void Tracker::didFailNavigation(const QString& error) {
  isPageAsked_ = isPageReady_ = false;
  for (const auto& [script, done] : std::exchange(waiting_, {})) done(error);
  finishStart(error);
}

void Tracker::didReceiveScriptMessage(const QString& name, const QString& body) {
  if (name == u"logHandler") logLine(formatted(u"[Tracker WebView]: %@", {body}));
  if (name == u"initHandler") pageIsReady();
}

void Tracker::pageIsReady() {
  isPageReady_ = true;
  if (!std::exchange(observersEnabled_, true)) enableAllNotificationObservers();
  for (auto& [script, done] : std::exchange(waiting_, {})) webview_->evaluate(script, std::move(done));
  finishStart(std::nullopt);
}

void Tracker::finishStart(const std::optional<QString>& error) {
  if (const auto handler = std::exchange(startTrackingCompletionHandler_, {})) handler(error);
}

void Tracker::toggleTrackingState(bool state, Done completionHandler) {
  run(state ? QStringLiteral("VTTRACKER.doTrackOn()") : QStringLiteral("VTTRACKER.doTrackOff()"),
      std::move(completionHandler));
}

void Tracker::trackEvent(const QString&, const QString& action, const QString& feature) {
  if (sources_.masterDoNotTrackEvents) return;
  logLine(formatted(u"\nAmplitude Event name: %@ detected\n", {action}));
  QJsonObject properties = commonProperties_;
  // Kept, because the service's reports have it so: only the feature is cleaned; another value with an
  // apostrophe makes a script that fails.
  properties.insert(QStringLiteral("feature"), QString(feature).remove(u'\''));
  const QString script = formatted(u"VTTRACKER.trackEvent('%@','%@')",
                                   {formatted(u"Pendra_%@", {action}), compactJson(properties)});
  run(script, logging(u"error while sending event: %@"));
}

void Tracker::trackListed(const QString& key) {
  if (consent_.isRefused()) return;
  if (const auto action = eventList_.constFind(key); action != eventList_.constEnd()) {
    trackEvent(identifiers::kPendra, *action, key);
  }
}

void Tracker::observeValueForKeyPath() {
  if (consent_.isRefused()) {
    if (!observersEnabled_) return;  // nothing was ever sent, so nobody needs to hear of it
    trackEvent(identifiers::kPendra, QStringLiteral("DISABLE_FEEDBACK"),
               QStringLiteral("Feedback has been disabled"));
    toggleTrackingState(false, logging(u"track on/off script err: %@"));
    return;
  }
  toggleTrackingState(true, [this](const QString& error) {
    logging(u"track on/off script err: %@")(error);
    if (error.isEmpty())
      trackEvent(identifiers::kPendra, QStringLiteral("ENABLE_FEEDBACK"),
                 QStringLiteral("Feedback has been enabled"));
  });
}

void Tracker::handleAppearanceChange() {
  commonProperties_.insert(QStringLiteral("appearance"),
                           facts_.isDark() ? QStringLiteral("dark") : QStringLiteral("light"));
}

void Tracker::handleNotificationOfApplicationLaunch(const QString& name) { trackListed(name); }

void Tracker::handleNotificationOfWindowDidBecomeVisible(const QString& title) {
  // What is sent is the title from the list: the window's own may name a company.
  for (const QString& listed : identifiers::kAccountingWindows) {
    if (title.contains(listed)) return trackListed(listed);
  }
}

void Tracker::handleTrackerNotification(const QString& key) {
  if (key == kUpgradeDoNotTrack) sources_.masterDoNotTrackEvents = true;
  trackListed(key);
}

void Tracker::enableAllNotificationObservers() {
  observers_ = {
      sources_.center.observe(
          kWindowDidBecomeVisible,
          [this](const auto& info) { handleNotificationOfWindowDidBecomeVisible(info.first); }),
      sources_.workspace.observeLaunches(
          [this](const QString& name) { handleNotificationOfApplicationLaunch(name); }),
      sources_.center.observe(kTracker, [this](const auto& info) { handleTrackerNotification(info.first); })};
}

void Tracker::disableAllNotificationObservers() { observers_.clear(); }

void Tracker::invalidate() {
  logLine(QStringLiteral("tracker invalidate"));
  if (observersEnabled_) disableAllNotificationObservers();
  observersEnabled_ = false;
  webview_->setDelegate(nullptr);
  appearance_ = {};
  preference_ = {};
  notice_ = {};
}

}  // namespace pendra
