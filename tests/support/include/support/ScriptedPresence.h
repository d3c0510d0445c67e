#pragma once

#include "platform/IdleSource.h"
#include "platform/SleepSource.h"

namespace pendra {

/// Says what the test says, and counts how often it is asked.
class ScriptedIdle final : public IdleSource {
 public:
  void ask(QObject&, Answer answer) override {
    ++asked;
    answer(idle);
  }

  std::optional<double> idle = 0;
  int asked = 0;
};

/// A machine that is awake and sleeps as the test says.
class ScriptedSleep final : public SleepSource {
 public:
  [[nodiscard]] Uptime uptime() const override { return time; }

  Uptime time{.awake = 1000, .asleep = 0};
};

}  // namespace pendra
