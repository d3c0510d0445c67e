#include <QLocalServer>
#include <QLocalSocket>
#include <QLockFile>

#include "InstanceMeeting.h"
#include "platform/Identifiers.h"

namespace pendra {

namespace {

/// How long a later start waits for the first to take what it hands over.
constexpr int kPatienceInMilliseconds = 5000;

/// The lock says who runs; the socket only carries files to that instance. The lock of a process that
/// died is stale and is taken over.
class FolderMeeting final : public SingleInstance::Meeting {
 public:
  explicit FolderMeeting(const QString& folder)
      : socketPath_(folder + u'/' + identifiers::kPendra), lock_(socketPath_ + u".lock") {
    lock_.setStaleLockTime(0);
    QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this] { accept(); });
  }

  bool become() override {
    if (!lock_.tryLock(0)) return false;
    QLocalServer::removeServer(socketPath_);
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    server_.listen(socketPath_);
    return true;
  }

  bool handOver(const QString& path) override {
    QLocalSocket socket;
    socket.connectToServer(socketPath_, QIODevice::WriteOnly);
    if (!socket.waitForConnected(kPatienceInMilliseconds)) return false;
    socket.write(path.toUtf8());
    if (!path.isEmpty()) socket.waitForBytesWritten(kPatienceInMilliseconds);
    socket.disconnectFromServer();
    return true;
  }

 private:
  void accept() {
    QLocalSocket* const socket = server_.nextPendingConnection();  // the server owns it
    const auto finish = [this, socket] {
      receive(QString::fromUtf8(socket->readAll()));
      socket->deleteLater();
    };
    if (socket->state() == QLocalSocket::UnconnectedState) {
      finish();
    } else {
      QObject::connect(socket, &QLocalSocket::disconnected, &server_, finish);
    }
  }

  QString socketPath_;
  QLockFile lock_;
  QLocalServer server_;
};

}  // namespace

std::unique_ptr<SingleInstance::Meeting> meetInFolder(const QString& folder) {
  return std::make_unique<FolderMeeting>(folder);
}

}  // namespace pendra
