#pragma once

#include <QObject>
#include <functional>

class QSocketNotifier;

namespace pendra {

/// Turns SIGTERM and SIGINT into a call from the event loop. One for the program.
class SignalWatcher final : public QObject {
 public:
  /// `received` is called once for each signal, outside any signal handler.
  explicit SignalWatcher(std::function<void()> received);
  ~SignalWatcher() override;
  /// Makes that call now for what has come and the event loop has not seen yet.
  void hear();

 private:
  std::function<void()> received_;
  QSocketNotifier* notifier_;
};

}  // namespace pendra
