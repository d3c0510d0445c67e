#include <QDeadlineTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <QLockFile>

#include "InstanceMeeting.h"
#include "platform/Identifiers.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

/// Ends each of what is handed over, and is the answer of whoever has taken it all.
constexpr char kEnd = '\0';
constexpr qsizetype kParts = 3;

/// The lock says who runs; the socket only carries files to that instance. The lock of a process that
/// died is stale and is taken over.
class FolderMeeting final : public SingleInstance::Meeting {
 public:
  explicit FolderMeeting(const QString& folder)
      : mayHoldFiles_(!folder.isEmpty()),
        socketPath_(folder + u'/' + identifiers::kPendra),
        lock_(socketPath_ + u".lock") {
    lock_.setStaleLockTime(0);
    QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this] { accept(); });
  }

  Becoming become() override {
    if (!mayHoldFiles_) return Becoming::Nowhere;
    if (!lock_.tryLock(0)) {
      return lock_.error() == QLockFile::LockFailedError ? Becoming::Taken : Becoming::Nowhere;
    }
    QLocalServer::removeServer(socketPath_);
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    server_.listen(socketPath_);
    return Becoming::Done;
  }

  Handing handOver(const StartRequest& request, std::chrono::milliseconds patience) override {
    QDeadlineTimer end(patience);
    const auto left = [&end] { return static_cast<int>(end.remainingTime()); };
    QLocalSocket socket;
    socket.connectToServer(socketPath_);
    if (!socket.waitForConnected(left())) return Handing::NobodyThere;
    for (const QString& part : {request.path, request.action, request.activation}) {
      socket.write(part.toUtf8() + kEnd);
    }
    return socket.waitForBytesWritten(left()) && socket.waitForReadyRead(left()) ? Handing::Done
                                                                                 : Handing::Unanswered;
  }

  [[nodiscard]] QString reason() const override {
    return tr("there is no session bus, and no folder of your own for a socket");
  }

 private:
  void accept() {
    QLocalSocket* const socket = server_.nextPendingConnection();  // the server owns it
    const auto take = [this, socket] {
      if (socket->peek(socket->bytesAvailable()).count(kEnd) < kParts) return;
      const QList<QByteArray> parts = socket->readAll().split(kEnd);
      socket->write(&kEnd, 1);
      socket->flush();
      receive({QString::fromUtf8(parts[0]), QString::fromUtf8(parts[1]), QString::fromUtf8(parts[2])});
    };
    QObject::connect(socket, &QLocalSocket::readyRead, &server_, take);
    QObject::connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    take();  // what came before anybody listened
  }

  bool mayHoldFiles_;
  QString socketPath_;
  QLockFile lock_;
  QLocalServer server_;
};

}  // namespace

std::unique_ptr<SingleInstance::Meeting> meetInFolder(const QString& folder) {
  return std::make_unique<FolderMeeting>(folder);
}

}  // namespace pendra
