#pragma once

#include "document/Session.h"
#include "platform/DesktopWorkspace.h"
#include "platform/IdleSource.h"
#include "platform/SleepSource.h"
#include "ui/QtAlerts.h"
#include "ui/QtPanels.h"

namespace pendra {

/// Every port, in the order in which they need each other. Outlives the delegate.
struct Environment {
  /// The user's own folders, clock and desktop.
  static Environment ofUser() {
    return {.places = Places::ofUser(),
            .clock = std::make_unique<SystemClock>(),
            .calendar = Calendar::ofSystem(),
            .workspace = DesktopWorkspace::ofUser(),
            .idle = SessionIdle::ofUser(),
            .sleep = MachineSleep::ofMachine()};
  }

  Places places;
  std::unique_ptr<Clock> clock;
  Calendar calendar;
  std::unique_ptr<Workspace> workspace;
  std::unique_ptr<IdleSource> idle{};    ///< none where nobody is asked about time away
  std::unique_ptr<SleepSource> sleep{};  ///< as that
  UserDefaults defaults{places.defaultsFile()};
  ModalDepth modals{};
  NotificationCenter notifications{};
  QtAlerts alerts{modals};
  QtPanels panels{modals, defaults, places.documents};

  [[nodiscard]] Ports ports(Windows& windows) {
    return {*clock, calendar, places, defaults, alerts, panels, *workspace, modals, notifications, windows};
  }
};

}  // namespace pendra
