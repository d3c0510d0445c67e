#include <algorithm>
#include <ctime>

#include "MachineClocks.h"
#include "SleepSignal.h"
#include "platform/SleepSource.h"

namespace pendra {

namespace {

double secondsOf(clockid_t clock) {
  timespec time{};
  clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

}  // namespace

double secondsAwake() { return secondsOf(CLOCK_MONOTONIC); }
double secondsSinceStart() { return secondsOf(CLOCK_BOOTTIME); }

std::unique_ptr<MachineSleep> MachineSleep::ofMachine() {
  return std::make_unique<MachineSleep>(QDBusConnection::systemBus());
}

MachineSleep::MachineSleep(const QDBusConnection& system)
    : signal_(std::make_unique<SleepSignal>(system, [this] { changes().changed(); })) {}

MachineSleep::~MachineSleep() = default;

Uptime MachineSleep::uptime() const {
  const double awake = secondsAwake();
  return {.awake = awake, .asleep = std::max(0.0, secondsSinceStart() - awake)};
}

}  // namespace pendra
