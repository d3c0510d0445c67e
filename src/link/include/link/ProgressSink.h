#pragma once

#include <QString>
#include <chrono>

namespace pendra {

/// Shows what Vantor is being asked for. Called by the commands that ask it; the calls themselves are waited
/// for through a `WaitPort`, which whoever shows something implements, too.
class ProgressSink {
 public:
  virtual ~ProgressSink() = default;
  /// What the next calls are for, in words, and how many answers it takes.
  virtual void startSpinner(const QString& words, int answers) = 0;
  /// The third of fifty records is going out: 3, 50.
  virtual void showProgress(int position, int total) = 0;
  virtual void stopSpinner() = 0;
  /// Lets time pass between two calls, with the interface alive; false when the user has cancelled.
  [[nodiscard]] virtual bool pause(std::chrono::milliseconds time) = 0;
};

/// Says what Vantor is asked for, for as long as it lives.
class [[nodiscard]] Spinning {
 public:
  Spinning(ProgressSink& sink, const QString& words, int answers) : sink_(sink) {
    sink_.startSpinner(words, answers);
  }
  ~Spinning() { sink_.stopSpinner(); }
  Spinning(const Spinning&) = delete;
  Spinning& operator=(const Spinning&) = delete;

 private:
  ProgressSink& sink_;
};

}  // namespace pendra
