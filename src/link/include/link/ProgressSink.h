#pragma once

namespace pendra {

/// Shows that something long goes on, while the program does nothing else: whoever implements this draws
/// at once, because no event is handled meanwhile. Called by list synchronisation, sending and setup.
class ProgressSink {
 public:
  virtual ~ProgressSink() = default;
  virtual void startSpinner() = 0;
  /// "3 of 50": the third of fifty records is going out.
  virtual void showProgress(int position, int total) = 0;
  virtual void stopSpinner() = 0;
};

/// Lets the spinner run for as long as it lives.
class [[nodiscard]] Spinning {
 public:
  explicit Spinning(ProgressSink& sink) : sink_(sink) { sink_.startSpinner(); }
  ~Spinning() { sink_.stopSpinner(); }
  Spinning(const Spinning&) = delete;
  Spinning& operator=(const Spinning&) = delete;

 private:
  ProgressSink& sink_;
};

}  // namespace pendra
