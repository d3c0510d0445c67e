#pragma once

#include <map>

#include "platform/DesktopNotes.h"
#include "platform/DesktopPanel.h"
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

/// A desktop whose panel comes and goes as the test says; at first there is none.
class ScriptedPanel final : public DesktopPanel {
 public:
  [[nodiscard]] bool isThere() const override { return isThere_; }
  void set(bool isThere) {
    isThere_ = isThere;
    changes().changed();
  }

 private:
  bool isThere_ = false;
};

/// A desktop that holds what it was told, by subject.
class ScriptedNotes final : public DesktopNotes {
 public:
  void show(const DesktopNote& note) override { standing[note.key] = note; }
  void withdraw(const QString& key) override { standing.erase(key); }

  std::map<QString, DesktopNote> standing;
};

}  // namespace pendra
