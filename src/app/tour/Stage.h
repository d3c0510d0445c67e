#pragma once
// The tour shows the real program in a world of its own: folders that go with it, a clock that moves only
// when it is told to, a desktop on which nothing runs.

#include <QTemporaryDir>
#include <optional>

#include "Program.h"
#include "sample/SampleDocument.h"
#include "ui/TimerWindowController.h"

namespace pendra {

/// One run of the program, launched; it ends with the stage.
class Stage {
 public:
  /// With a sample as its last document, or on a first run without any. Vantor runs where `vantor` starts it,
  /// told the folder in which they meet.
  explicit Stage(const std::optional<SampleOptions>& sample,
                 const std::function<void(const QString& caches)>& vantor = {});
  ~Stage();
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  [[nodiscard]] bool hasTimerWindow() { return program_.windows().timerWindow() != nullptr; }
  [[nodiscard]] TimerWindowController& timer() { return *program_.windows().timerWindow(); }
  void perform(Command command) { program_.commands().perform(command, nullptr); }
  /// Lets the clock go on by so many seconds.
  void advance(double seconds) { now_ = now_ + seconds; }
  [[nodiscard]] Session& session() { return timer().state().session(); }
  [[nodiscard]] ModalDepth& modals() { return environment_.modals; }

 private:
  [[nodiscard]] Environment makeEnvironment(bool withVantor);
  void writeSample(const SampleOptions& options);

  QTemporaryDir home_;
  Instant now_;
  Environment environment_;
  Program program_;
};

}  // namespace pendra
