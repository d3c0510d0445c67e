#include "document/RunningTimers.h"

#include "document/Session.h"
#include "model/Activity.h"
#include "model/TimeEntry.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

bool userStopsAllTimers(Session& session) {
  return session.ports().alerts.runAlert({.style = Alert::Style::Warning,
                                          .message = tr("Pendra needs to stop all timers"),
                                          .informative = tr("Pendra will stop all timers before continuing."),
                                          .buttons = {tr("OK"), tr("Cancel")}}) == kFirstButton;
}

}  // namespace

bool isTimeRunning(const ObjectContext& context) {
  const auto running = context.flagged<TimeEntry>("running");
  return std::any_of(running.begin(), running.end(),
                     [](const TimeEntry* entry) { return entry->activity() != nullptr; });
}

bool checkForRunningTimers(Session& session) {
  const auto context = session.context();
  if (!context || !isTimeRunning(*context)) return true;
  if (!userStopsAllTimers(session)) return false;
  stopAllActivities(session);
  return true;
}

void stopAllActivities(Session& session) {
  const auto context = session.context();
  if (!context) return;
  [[maybe_unused]] const auto done = context->edit(tr("Stop"), [&] {
    for (Activity* activity : context->all<Activity>()) activity->stop();
  });
}

}  // namespace pendra
