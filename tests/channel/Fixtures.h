#pragma once

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <functional>
#include <string>
#include <vector>

#include "channel/Descriptor.h"
#include "channel/KeyedArchiver.h"
#include "channel/PDToVTProtocol.h"

namespace pendra {

/// A short folder of its own for the sockets of one test; its parent has the rights that the bind wants.
class SocketFolder {
 public:
  SocketFolder() {
    const QByteArray root = folder_.path().toLocal8Bit();
    chmod(root.constData(), 0755);
    const QByteArray sockets = root + "/s";
    mkdir(sockets.constData(), 0755);
    chmod(sockets.constData(), 0755);
  }
  QString path(const char* name) const { return folder_.path() + u"/s/" + QString::fromLatin1(name); }
  QByteArray bytes(const char* name) const { return path(name).toLocal8Bit(); }

 private:
  QTemporaryDir folder_{QStringLiteral("/tmp/ipcXXXXXX")};
};

/// Collects what is logged while it lives.
class LogCollector {
 public:
  LogCollector() {
    lines().clear();
    previous_ = qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& line) {
      lines().push_back(line.toStdString());
    });
  }
  ~LogCollector() { qInstallMessageHandler(previous_); }
  Q_DISABLE_COPY_MOVE(LogCollector)

  static std::vector<std::string>& lines() {
    static std::vector<std::string> collected;
    return collected;
  }

 private:
  QtMessageHandler previous_;
};

/// A peer without any of our code between it and the socket.
class RawPeer {
 public:
  explicit RawPeer(const QByteArray& path) : socket_(::socket(AF_UNIX, SOCK_DGRAM, 0)) {
    unlink(path.constData());
    EXPECT_EQ(IPCAddress::forPath(path).bind(socket_.get()), 0);
    const timeval patience{.tv_sec = 20, .tv_usec = 0};
    setsockopt(socket_.get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
  }

  /// Returns when there is something to read.
  void awaitInput() const {
    pollfd waiting{.fd = socket_.get(), .events = POLLIN, .revents = 0};
    EXPECT_EQ(poll(&waiting, 1, 20000), 1);
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

/// An interface for tests, with one operation of each sort.
inline const std::array kTestMethods{
    ProtocolMethod{.selector = u"echo:", .argumentCount = 1},
    ProtocolMethod{
        .selector = u"tell:", .argumentCount = 1, .returns = ProtocolMethod::Returns::Void, .oneWay = true},
    ProtocolMethod{.selector = u"do", .returns = ProtocolMethod::Returns::Void},
};
inline const Protocol kTestProtocol{kTestMethods};

/// Answers its argument.
class Echo final : public VendedObject {
 public:
  const ProtocolMethod* methodSignatureForSelector(QStringView selector) const override {
    return kTestProtocol.methodSignatureForSelector(selector);
  }
  ArchiveValue perform(const ProtocolMethod& method, const QList<ArchiveValue>& arguments) override {
    performed.emplace_back(method.selector.toString().toStdString());
    return arguments.isEmpty() ? ArchiveValue() : arguments.first();
  }

  std::vector<std::string> performed;
};

/// What a piece of code throws, as "name: reason"; empty when it throws nothing.
inline std::string failureOf(const std::function<void()>& code) {
  try {
    code();
    return {};
  } catch (const ChannelFailure& failure) {
    return failure.name().toStdString() + ": " + failure.reason().toStdString();
  }
}

inline QByteArray header(quint32 word) {
  QByteArray bytes;
  for (const int shift : {24, 16, 8, 0}) bytes.append(static_cast<char>(word >> shift & 0xff));
  return bytes;
}

inline QByteArray archiveOf(ArchiveValue::Array message) { return archivedData(std::move(message)).value(); }

}  // namespace pendra
