#pragma once

#include "document/Session.h"
#include "platform/DesktopWorkspace.h"
#include "ui/QtAlerts.h"
#include "ui/QtPanels.h"

namespace pendra {

/// The real side of every port, in the order in which they need each other. Lives as long as the program.
struct Environment {
  Places places = Places::ofUser();
  SystemClock clock;
  Calendar calendar = Calendar::ofSystem();
  UserDefaults defaults{places.defaultsFile()};
  ModalDepth modals;
  NotificationCenter notifications;
  QtAlerts alerts{modals};
  QtPanels panels{modals, places.documents};
  std::unique_ptr<DesktopWorkspace> workspace = DesktopWorkspace::ofUser();

  [[nodiscard]] Ports ports(InterfaceLoader& interfaces, VTMenus& menus) {
    return {clock,      calendar, places,        defaults,   alerts, panels,
            *workspace, modals,   notifications, interfaces, menus};
  }
};

}  // namespace pendra
