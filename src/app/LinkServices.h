#pragma once

#include "link/ChannelServer.h"
#include "link/ConnectionChecks.h"
#include "link/DoubtfulLengths.h"
#include "link/ListSync.h"
#include "ui/BusyPanel.h"

namespace pendra {

class TimerWindowController;

/// Everything that talks to Vantor; one for the program.
struct LinkServices {
  explicit LinkServices(Session& aSession) : session(aSession) {}

  /// The log's send command, and the menu's, for the entries that the timer window's log considers.
  void sendSelectedTime(TimerWindowController& timer);
  void sendAllTime(TimerWindowController& timer);

  Session& session;
  BusyPanel progress{session.ports().modals};
  ConnectionChecks checks{session, connectOverChannel(&progress), progress};
  ListSync lists{session, checks};
  DoubtfulLengths lengths{session};

 private:
  template <class Send>
  void send(TimerWindowController& timer, const Send& how);
};

}  // namespace pendra
