#include "SignalWatcher.h"

#include <sys/socket.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <array>
#include <csignal>

namespace pendra {

namespace {

/// A signal handler may do little more than write a byte: into 0, for the event loop to read from 1.
std::array<int, 2> pair{-1, -1};

void wakeEventLoop(int) {
  const char byte = 1;
  [[maybe_unused]] const ssize_t written = ::write(pair[0], &byte, 1);
}

void watch(int signal, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  ::sigaction(signal, &action, nullptr);
}

}  // namespace

SignalWatcher::SignalWatcher(std::function<void()> received) : received_(std::move(received)) {
  ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, pair.data());
  notifier_ = new QSocketNotifier(pair[1], QSocketNotifier::Read, this);
  connect(notifier_, &QSocketNotifier::activated, this, &SignalWatcher::hear);
  watch(SIGTERM, wakeEventLoop);
  watch(SIGINT, wakeEventLoop);
  watch(SIGXFSZ, SIG_IGN);  // a file that grows too large is a failed save, told as any other
}

SignalWatcher::~SignalWatcher() {
  watch(SIGTERM, SIG_DFL);
  watch(SIGINT, SIG_DFL);
  for (int& end : pair) {
    ::close(end);
    end = -1;
  }
}

void SignalWatcher::hear() {
  char byte = 0;
  while (::read(pair[1], &byte, 1) > 0) received_();
}

}  // namespace pendra
