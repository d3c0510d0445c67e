#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>

#include <sys/types.h>

#include "IPC/Descriptor.h"
#include "platform/Result.h"

namespace pendra {

/// A launched process. It outlives its handle; whoever drops the handle is not told of its end.
class IPCTask {
 public:
  /// Starts an executable without arguments. `ended` is called once, from the event loop of the calling
  /// thread.
  static Result<std::unique_ptr<IPCTask>> launch(const QString& executable, std::function<void()> ended);

  [[nodiscard]] pid_t processIdentifier() const { return process_; }
  /// The wait status of the process once it has ended.
  [[nodiscard]] int terminationStatus() const { return status_; }

 private:
  struct Later {
    void operator()(QSocketNotifier* notifier) const {
      notifier->setEnabled(false);
      notifier->deleteLater();
    }
  };

  explicit IPCTask(pid_t process) : process_(process) {}
  void watch(std::function<void()> ended);

  pid_t process_;
  int status_ = 0;
  Descriptor watched_;
  std::unique_ptr<QSocketNotifier, Later> notifier_;
};

}  // namespace pendra
