#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdint>
#include <optional>

namespace pendra {

/// A copy of this process that works until it is killed and reports numbers while it does.
class [[nodiscard]] ChildProcess {
 public:
  /// `work(report)` runs in the child and must not return before it is killed.
  template <class Work>
  explicit ChildProcess(const Work& work) {
    if (::pipe(pipe_.data()) != 0) return;
    id_ = ::fork();
    if (id_ == 0) {
      work([this](std::int64_t number) { (void)!::write(pipe_[1], &number, sizeof number); });
      ::_exit(1);
    }
    ::close(pipe_[1]);
  }
  ~ChildProcess() {
    kill();
    ::close(pipe_[0]);
  }
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// Waits for the next number; none once the child has ended and everything was read.
  [[nodiscard]] std::optional<std::int64_t> next() const {
    std::int64_t number = 0;
    if (::read(pipe_[0], &number, sizeof number) != sizeof number) return std::nullopt;
    return number;
  }
  /// Ends the child without any warning and waits until it is gone.
  void kill() {
    if (id_ <= 0) return;
    ::kill(id_, SIGKILL);
    ::waitpid(id_, nullptr, 0);
    id_ = -1;
  }

 private:
  std::array<int, 2> pipe_{-1, -1};
  pid_t id_ = -1;
};

}  // namespace pendra
