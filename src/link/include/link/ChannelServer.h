#pragma once

#include "link/RemoteServer.h"
#include "link/WaitPort.h"

namespace pendra {

struct TimeLimits;

/// Makes connections over the channel to Vantor, one at a time. What Vantor still owes of an earlier
/// connection is known to the next. Without a port a call is waited for without events; the port must outlive
/// the connections.
[[nodiscard]] ConnectToVantor connectOverChannel(WaitPort* wait = nullptr);
/// The same with other time limits than the channel's own; for tests.
[[nodiscard]] ConnectToVantor connectOverChannel(const TimeLimits& limits, WaitPort* wait = nullptr);

}  // namespace pendra
