#pragma once
// Two switches: the user's preference is told to the page, which then drops events, and can be turned back;
// `masterDoNotTrackEvents` keeps events from reaching the page at all, for as long as the program runs.

#include <QJsonObject>
#include <memory>
#include <optional>

#include "analytics/ScriptHost.h"
#include "analytics/TrackerFacts.h"
#include "platform/NotificationCenter.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"

namespace pendra {

/// What a tracker listens to. All of it outlives the tracker.
struct TrackerSources {
  NotificationCenter& center;
  Workspace& workspace;
  UserDefaults& defaults;
  bool& masterDoNotTrackEvents;  ///< set by the notice, never cleared: it holds for later trackers, too
};

/// Reports what is done with the program to the statistics page. Owned by the timer window. Whatever fails
/// is logged and never shown.
class Tracker final : private ScriptHost::Delegate {
 public:
  /// Called once: with none when tracking has started, or with the reason why it could not.
  using StartHandler = std::function<void(const std::optional<QString>& error)>;
  using Done = std::function<void(const QString& error)>;

  /// `resources` is the folder with "Events.strings" and the page.
  Tracker(const QString& userUUID, std::unique_ptr<ScriptHost> webview, TrackerSources sources,
          TrackerFacts facts, const QString& resources);
  ~Tracker() override;
  Tracker(const Tracker&) = delete;
  Tracker& operator=(const Tracker&) = delete;

  [[nodiscard]] bool observersEnabled() const { return observersEnabled_; }
  [[nodiscard]] bool masterDoNotTrackEvents() const { return sources_.masterDoNotTrackEvents; }
  [[nodiscard]] const QString& userUUID() const { return userUUID_; }
  [[nodiscard]] const QJsonObject& userProperties() const { return userProperties_; }
  [[nodiscard]] const QJsonObject& commonProperties() const { return commonProperties_; }
  [[nodiscard]] const QMap<QString, QString>& eventList() const { return eventList_; }

  /// Loads the page; events of the service at `address`.
  void startTrackingCompletionHandler(StartHandler handler, const QString& address);
  /// Switches the page on or off.
  void toggleTrackingState(bool state, Done completionHandler);
  /// Sends one event. The first argument is not used.
  void trackEvent(const QString& bundleIdentifier, const QString& action, const QString& feature);

  void enableAllNotificationObservers();
  void disableAllNotificationObservers();
  /// Stops observing everything.
  void invalidate();

 private:
  void didFinishNavigation() override;
  void didFailNavigation(const QString& error) override;
  void didReceiveScriptMessage(const QString& name, const QString& body) override;

  void observeValueForKeyPath();
  void handleAppearanceChange();
  void handleNotificationOfApplicationLaunch(const QString& name);
  void handleNotificationOfWindowDidBecomeVisible(const QString& title);
  void handleTrackerNotification(const QString& key);

  void pageIsReady();
  void finishStart(const std::optional<QString>& error);
  /// Sends what the event list has under `key`, if anything.
  void trackListed(const QString& key);

  std::unique_ptr<ScriptHost> webview_;
  TrackerSources sources_;
  TrackerFacts facts_;
  QString page_;
  QString userUUID_;
  QJsonObject userProperties_;
  QJsonObject commonProperties_;
  QMap<QString, QString> eventList_;
  StartHandler startTrackingCompletionHandler_;
  bool observersEnabled_ = false;

  std::vector<std::shared_ptr<void>> observers_;  ///< those between the page's start and invalidate()
  NotificationCenter::Subscription appearance_;
  Notifier::Subscription preference_;
};

}  // namespace pendra
