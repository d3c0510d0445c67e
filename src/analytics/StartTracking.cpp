#include "analytics/StartTracking.h"

#include <QUuid>

#include "analytics/PageProcess.h"
#include "analytics/TrackerNotifications.h"
#include "platform/Identifiers.h"
#include "platform/Log.h"
#include "platform/Resources.h"
#include "platform/Text.h"

namespace pendra {

namespace {

/// Where events go: to the service, or to whatever a test of the whole program listens on. Empty: nowhere.
QString serviceAddress() {
  return qEnvironmentVariable("PENDRA_ANALYTICS_ADDRESS", identifiers::kAnalyticsAddress);
}

}  // namespace

std::unique_ptr<Tracker> startTracking(TrackerSources sources) {
  const QString address = serviceAddress();
  if (address.isEmpty()) return nullptr;
  const QString uuid = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
  auto tracker = std::make_unique<Tracker>(uuid, std::make_unique<PageProcess>(PageProcess::installed()),
                                           sources, TrackerFacts::ofMachine(), resourceFolder());
  const auto started = [&center = sources.center](const std::optional<QString>& error) {
    if (error) {
      logLine(formatted(u"could not start tracking: %@", {*error}));
      return;
    }
    logLine(QStringLiteral("tracking started"));
    center.post(tracker_notifications::kTracker, tracker_notifications::kAppLaunched);
  };
  tracker->startTrackingCompletionHandler(started, address);
  return tracker;
}

}  // namespace pendra
