#pragma once

#include <sys/prctl.h>
#include <sys/wait.h>

#include <QCoreApplication>
#include <QProcess>
#include <csignal>
#include <memory>
#include <thread>

#include "Fixtures.h"

namespace pendra {

/// The process's one application object, for what needs an event loop.
inline QCoreApplication& application() {
  static int count = 1;
  static std::array<char*, 2> arguments{const_cast<char*>("test-channel"), nullptr};
  static QCoreApplication instance(count, arguments.data());
  return instance;
}

/// Another program that says "ready" on its standard output.
class Peer {
 public:
  Peer(const QString& program, const QStringList& arguments, const QString& bus = {}) {
    application();
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), bus);
    process_.setProcessEnvironment(environment);
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    process_.start(program, arguments);
    EXPECT_TRUE(process_.waitForReadyRead(20000)) << program.toStdString();
  }
  ~Peer() { end(); }
  Q_DISABLE_COPY_MOVE(Peer)

  /// Sends it a signal.
  void tell(int signal) const { ::kill(static_cast<pid_t>(process_.processId()), signal); }
  QByteArray said() { return process_.readLine(); }
  void waitForItsEnd() { EXPECT_TRUE(process_.waitForFinished(20000)); }
  void end() {
    process_.kill();
    process_.waitForFinished();
  }
  int exitCode() const { return process_.exitCode(); }

 private:
  QProcess process_;
};

/// Code that runs beside the test, as another process would, until it is done.
class Beside {
 public:
  explicit Beside(std::function<void()> code) : thread_(std::move(code)) {}
  ~Beside() { thread_.join(); }
  Q_DISABLE_COPY_MOVE(Beside)

 private:
  std::thread thread_;
};

inline std::unique_ptr<IPCMgr> clientOf(const SocketFolder& folder,
                                        const Protocol& protocol = kTestProtocol) {
  auto made =
      IPCMgr::initForPath(folder.path("server"), protocol, folder.path("client"), supportedClassesOfPDToVT());
  EXPECT_TRUE(made) << made.error().text.toStdString();
  return std::move(made).value();
}

inline std::unique_ptr<IPCMgr> serverOf(const SocketFolder& folder, VendedObject& vended) {
  auto made =
      IPCMgr::initVendedProxy(vended, folder.path("server"), kTestProtocol, supportedClassesOfPDToVT());
  EXPECT_TRUE(made) << made.error().text.toStdString();
  return std::move(made).value();
}

/// Limits so short that a test of a time-out need not last.
inline constexpr IPCTimeLimits kShortLimits{.reply = std::chrono::milliseconds(300),
                                            .send = std::chrono::milliseconds(50)};

}  // namespace pendra
