#pragma once

namespace pendra {

/// Seconds since the machine was started, without those that it slept: stands still in sleep.
[[nodiscard]] double secondsAwake();
/// Seconds since the machine was started.
[[nodiscard]] double secondsSinceStart();

}  // namespace pendra
