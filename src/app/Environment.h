#pragma once

#include "document/Session.h"
#include "platform/DesktopNotes.h"
#include "platform/DesktopPanel.h"
#include "platform/DesktopWorkspace.h"
#include "platform/GlobalKey.h"
#include "platform/IdleSource.h"
#include "platform/SleepSource.h"
#include "platform/UnaskedAlerts.h"
#include "ui/QtAlerts.h"
#include "ui/QtPanels.h"

namespace pendra {

/// Every port, in the order in which they need each other. Outlives the delegate.
struct Environment {
  /// The user's own folders and desktop, by that clock and calendar.
  static Environment ofUser(std::unique_ptr<Clock> clock, std::unique_ptr<Calendar> calendar) {
    return {.places = Places::ofUser(),
            .clock = std::move(clock),
            .calendar = std::move(calendar),
            .workspace = DesktopWorkspace::ofUser(),
            .idle = SessionIdle::ofUser(),
            .sleep = MachineSleep::ofMachine(),
            .panel = SessionPanel::ofUser(),
            .key = PortalKey::ofUser(),
            .notes = SessionNotes::ofUser()};
  }

  Places places;
  std::unique_ptr<Clock> clock;
  std::unique_ptr<Calendar> calendar;
  std::unique_ptr<Workspace> workspace;
  std::unique_ptr<IdleSource> idle{};     ///< none where nobody is asked about time away
  std::unique_ptr<SleepSource> sleep{};   ///< as that
  std::unique_ptr<DesktopPanel> panel{};  ///< none where nothing shows outside of the windows
  std::unique_ptr<GlobalKey> key{};       ///< none where no key acts from everywhere
  std::unique_ptr<DesktopNotes> notes{};  ///< as that
  UserDefaults defaults{places.defaultsFile()};
  ModalDepth modals{};
  NotificationCenter notifications{};
  QtAlerts alerts{modals};
  UnaskedAlerts unasked{alerts};
  QtPanels panels{modals, defaults, places.documents};

  [[nodiscard]] Ports ports(Windows& windows) {
    return {*clock, *calendar, places, defaults, unasked, panels, *workspace, modals, notifications, windows};
  }
};

}  // namespace pendra
