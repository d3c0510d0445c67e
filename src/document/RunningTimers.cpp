#include "document/RunningTimers.h"

#include "document/Saving.h"
#include "document/Session.h"
#include "model/Activity.h"
#include "model/TimeEntry.h"

namespace pendra {

namespace {

bool userStopsAllTimers(Session& session) {
  return session.ports().alerts.runAlert(
             {.style = Alert::Style::Warning,
              .message = QStringLiteral("Pendra needs to stop all timers"),
              .informative = QStringLiteral("Pendra will stop all timers before continuing."),
              .buttons = {QStringLiteral("OK"), QStringLiteral("Cancel")}}) == kFirstButton;
}

void refreshMainWindow(Session& session) {
  if (!session.window) return;
  session.window->reloadData();
  session.window->updateMainButton();
  session.window->updateTimeDisplay();
}

}  // namespace

void haltRunningEntries(Session& session) {
  if (!session.context()) return;
  for (TimeEntry* period : session.context()->all<TimeEntry>()) period->setRunning(false);
}

bool checkForRunningTimers(Session& session) {
  const auto context = session.context();
  if (!context) return true;
  const auto activities = context->all<Activity>();
  const auto isRunning = [](const Activity* activity) { return activity->isRunning(); };
  if (std::none_of(activities.begin(), activities.end(), isRunning)) return true;
  if (!userStopsAllTimers(session)) return false;
  stopAllActivities(session);
  refreshMainWindow(session);
  return true;
}

void stopAllActivities(Session& session) {
  if (!session.context()) return;
  for (Activity* activity : session.context()->all<Activity>()) activity->stop();
}

void periodicSave(Session& session) { saveAction(session); }

}  // namespace pendra
