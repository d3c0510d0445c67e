#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <cstdio>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "channel/Archive.h"
#include "channel/CallingEnd.h"
#include "channel/Datagram.h"
#include "channel/ServingEnd.h"

namespace pendra {

/// A short folder of its own for the sockets of one test, which the bind makes.
class SocketFolder {
 public:
  SocketFolder() { chmod(folder_.path().toLocal8Bit().constData(), 0755); }  // open to other users
  QString path(const char* name) const { return folder_.path() + u"/s/" + QString::fromLatin1(name); }
  QByteArray bytes(const char* name) const { return path(name).toLocal8Bit(); }

  std::unique_ptr<CallingEnd> client(const TimeLimits& limits = {}) const {
    auto made = CallingEnd::bound(path("server"), path("client"), limits);
    EXPECT_TRUE(made) << made.error().text.toStdString();
    return std::move(made).value();
  }
  std::unique_ptr<ServingEnd> server(ServingEnd::Perform perform) const {
    auto made = ServingEnd::bound(path("server"), std::move(perform));
    EXPECT_TRUE(made) << made.error().text.toStdString();
    return std::move(made).value();
  }

 private:
  QTemporaryDir folder_{QStringLiteral("/tmp/chXXXXXX")};
};

/// Limits so short that a test of a time-out need not last.
inline constexpr TimeLimits kShortLimits{.leave = std::chrono::milliseconds(500),
                                         .reply = std::chrono::milliseconds(500)};

/// A peer without any of our code between it and the socket.
class RawPeer {
 public:
  explicit RawPeer(const QByteArray& path) : socket_(::socket(AF_UNIX, SOCK_DGRAM, 0)) {
    mkdir(path.left(path.lastIndexOf('/')).constData(), 0755);
    unlink(path.constData());
    EXPECT_EQ(SocketAddress::forPath(path).bind(socket_.get()), 0);
    const timeval patience{.tv_sec = 20, .tv_usec = 0};
    setsockopt(socket_.get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    const int roomy = 400000;
    setsockopt(socket_.get(), SOL_SOCKET, SO_SNDBUF, &roomy, sizeof roomy);
  }

  QByteArray receive() {
    QByteArray datagram(70000, '\0');
    const ssize_t size = recv(socket_.get(), datagram.data(), 70000, 0);
    datagram.resize(std::max<ssize_t>(size, 0));
    return datagram;
  }

  bool send(const QByteArray& datagram, const QByteArray& path) {
    sockaddr_un to{};
    to.sun_family = AF_UNIX;
    std::copy(path.begin(), path.end(), to.sun_path);
    return sendto(socket_.get(), datagram.constData(), static_cast<size_t>(datagram.size()), 0,
                  reinterpret_cast<const sockaddr*>(&to), sizeof to) == datagram.size();
  }

 private:
  Descriptor socket_;
};

/// What another program writes to its standard output, line by line, until it has ended.
inline QList<QByteArray> linesOf(const std::string& command) {
  std::FILE* const output = ::popen(command.c_str(), "r");
  QByteArray all;
  std::array<char, 4096> piece{};
  while (const std::size_t size = std::fread(piece.data(), 1, piece.size(), output))
    all.append(piece.data(), static_cast<qsizetype>(size));
  EXPECT_EQ(::pclose(output), 0) << command;
  return all.trimmed().split('\n');
}
inline const std::string kPython = "python3 -B ";

/// Code that runs beside the test, as another process would, until it is done.
class Beside {
 public:
  explicit Beside(std::function<void()> code) : thread_(std::move(code)) {}
  ~Beside() { thread_.join(); }
  Q_DISABLE_COPY_MOVE(Beside)

 private:
  std::thread thread_;
};

inline QByteArray header(quint32 word) {
  QByteArray bytes;
  for (const int shift : {24, 16, 8, 0}) bytes.append(static_cast<char>(word >> shift & 0xff));
  return bytes;
}

inline QByteArray archiveOf(ArchiveValue::Array message) { return writeArchive(std::move(message)).value(); }

/// A reply in one datagram.
inline QByteArray reply(const Operation& operation, const char* answer) {
  return header(3) + archiveOf({operation.name.toString(), QString::fromLatin1(answer)});
}

/// "name = text" of an answer, "name: reason, fate" of a failure.
inline std::string told(const CallOutcome& outcome) {
  if (const auto* failure = std::get_if<ChannelFailure>(&outcome)) {
    const bool neverLeft = failure->fate() == ChannelFailure::Fate::NeverLeft;
    return failure->name().toStdString() + ": " + failure->reason().toStdString() +
           (neverLeft ? ", never left" : ", in doubt");
  }
  const auto& answer = std::get<Answer>(outcome);
  const auto* text = answer.value.as<QString>();
  return answer.operation.toStdString() + " = " + (text ? text->toStdString() : "another kind");
}

}  // namespace pendra
