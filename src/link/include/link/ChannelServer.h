#pragma once

#include "channel/IPCMgr.h"
#include "link/RemoteServer.h"

namespace pendra {

/// Makes the channel to Vantor with the given time limits, which are the channel's own but in tests.
[[nodiscard]] ConnectToVantor connectOverChannel(const IPCTimeLimits& limits = {});

}  // namespace pendra
