#pragma once
// The page is not always there: it is loaded when there is something to tell it, and ends soon after. What
// it is told meanwhile waits until it is ready.
//
// Two switches keep events from it: the user's preference, which can be turned back, and
// `masterDoNotTrackEvents`, which holds for as long as the program runs.

#include <QJsonObject>
#include <memory>
#include <optional>

#include "analytics/Consent.h"
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
  [[nodiscard]] const QJsonObject& commonProperties() const { return commonProperties_; }

  /// Loads the page, for events to the service at `address`, as soon as the user's consent is there.
  void startTrackingCompletionHandler(StartHandler handler, const QString& address);
  /// Sends one event. The first argument is not used.
  void trackEvent(const QString& bundleIdentifier, const QString& action, const QString& feature);

  /// Stops observing everything.
  void invalidate();

 private:
  void didFinishNavigation() override;
  void didFailNavigation(const QString& error) override;
  void didReceiveScriptMessage(const QString& name, const QString& body) override;

  /// Switches the page on or off.
  void toggleTrackingState(bool state, Done completionHandler);
  void enableAllNotificationObservers();
  void disableAllNotificationObservers();
  void observeValueForKeyPath();
  void handleAppearanceChange();
  void handleNotificationOfApplicationLaunch(const QString& name);
  void handleNotificationOfWindowDidBecomeVisible(const QString& title);
  void handleTrackerNotification(const QString& key);

  void startWhenAllowed();
  void loadPage();
  /// Runs a script in the page, which is loaded first where it is not there.
  void run(const QString& script, Done done);
  void pageIsReady();
  void finishStart(const std::optional<QString>& error);
  /// Sends what the event list has under `key`, if anything, unless the user has said no.
  void trackListed(const QString& key);

  std::unique_ptr<ScriptHost> webview_;
  TrackerSources sources_;
  Consent consent_;
  TrackerFacts facts_;
  QString page_;
  QString address_;
  QString userUUID_;
  QJsonObject userProperties_;
  QJsonObject commonProperties_;
  QMap<QString, QString> eventList_;
  StartHandler startTrackingCompletionHandler_;
  bool observersEnabled_ = false;
  bool isPageAsked_ = false;  ///< it was asked for and has neither failed nor ended
  bool isPageReady_ = false;
  std::vector<std::pair<QString, Done>> waiting_;  ///< scripts for the page that is not ready yet

  std::vector<std::shared_ptr<void>> observers_;  ///< those between the page's start and invalidate()
  NotificationCenter::Subscription appearance_;
  Notifier::Subscription preference_;
  Notifier::Subscription notice_;
};

}  // namespace pendra
