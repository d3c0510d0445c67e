#include "IPC/IPCTask.h"

#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <array>

#include "PosixError.h"

namespace pendra {

Result<std::unique_ptr<IPCTask>> IPCTask::launch(const QString& executable, std::function<void()> ended) {
  QByteArray path = executable.toLocal8Bit();
  std::array<char*, 2> arguments{path.data(), nullptr};
  pid_t process = 0;
  if (const int error = posix_spawn(&process, path.constData(), nullptr, nullptr, arguments.data(), environ))
    return posixError(error);
  std::unique_ptr<IPCTask> task(new IPCTask(process));
  if (QCoreApplication::instance()) task->watch(std::move(ended));
  return task;
}

void IPCTask::watch(std::function<void()> ended) {
  watched_ = Descriptor(static_cast<int>(syscall(SYS_pidfd_open, process_, 0)));
  if (watched_.get() < 0) return;
  notifier_.reset(new QSocketNotifier(watched_.get(), QSocketNotifier::Read));
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this, ended = std::move(ended)] {
    notifier_->setEnabled(false);
    waitpid(process_, &status_, WNOHANG);
    ended();
  });
}

}  // namespace pendra
