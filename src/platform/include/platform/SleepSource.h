#pragma once
// A machine that sleeps counts on: one of its clocks stands still meanwhile and another does not. Neither
// follows the wall clock when that is set.

#include <memory>

#include "platform/Notifier.h"

class QDBusConnection;

namespace pendra {

class SleepSignal;

/// Seconds since the machine was started.
struct Uptime {
  double awake = 0;
  double asleep = 0;

  [[nodiscard]] double total() const { return awake + asleep; }
};

/// Says how long the machine has slept.
class SleepSource {
 public:
  virtual ~SleepSource() = default;
  [[nodiscard]] virtual Uptime uptime() const = 0;
  /// Announces that the machine is about to sleep, and that it has woken, where somebody tells it; without
  /// that, only the uptime shows it.
  [[nodiscard]] Notifier& changes() { return changes_; }

 private:
  Notifier changes_;
};

/// The machine's own clocks, and what its login service tells on the system bus.
class MachineSleep final : public SleepSource {
 public:
  static std::unique_ptr<MachineSleep> ofMachine();
  explicit MachineSleep(const QDBusConnection& system);
  ~MachineSleep() override;

  [[nodiscard]] Uptime uptime() const override;

 private:
  std::unique_ptr<SleepSignal> signal_;
};

}  // namespace pendra
