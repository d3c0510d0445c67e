#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <QDeadlineTimer>
#include <QFile>
#include <QLockFile>
#include <QSocketNotifier>
#include <QThread>
#include <QTimer>
#include <cerrno>
#include <cstring>
#include <map>
#include <optional>

#include "InstanceMeeting.h"
#include "platform/Identifiers.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

/// Ends each of what is handed over, and is the answer of whoever has taken it all.
constexpr char kEnd = '\0';
constexpr qsizetype kParts = 3;
constexpr std::size_t kPiece = 4096;
/// How long a lock may be held by one that does not listen.
constexpr std::chrono::seconds kUntilListening{1};
constexpr std::chrono::milliseconds kBetweenLooks{5};

/// A socket, which is closed when it goes. The network library has one that does more, and would be loaded
/// with what it needs by every start for the few that meet here.
class Socket {
 public:
  explicit Socket(int descriptor) : descriptor_(descriptor) {}
  static Socket make() { return Socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)); }
  ~Socket() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }
  Socket(Socket&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  Socket& operator=(Socket&&) = delete;

  [[nodiscard]] int descriptor() const { return descriptor_; }

  /// What has come; none at the end.
  [[nodiscard]] std::optional<QByteArray> read() const {
    QByteArray bytes(kPiece, Qt::Uninitialized);
    const ssize_t count = ::recv(descriptor_, bytes.data(), kPiece, 0);
    if (count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR)) return std::nullopt;
    return bytes.first(std::max<qsizetype>(0, count));
  }
  [[nodiscard]] bool write(const QByteArray& bytes) const {
    return ::send(descriptor_, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL) ==
           bytes.size();
  }

 private:
  int descriptor_;
};

/// None where the path is longer than that of a socket may be.
std::optional<sockaddr_un> addressOf(const QString& path) {
  const QByteArray name = QFile::encodeName(path);
  sockaddr_un address{};
  if (static_cast<std::size_t>(name.size()) >= sizeof address.sun_path) return std::nullopt;
  address.sun_family = AF_UNIX;
  std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
  return address;
}

template <class Call>
bool withAddress(const Call& call, const Socket& socket, const QString& path) {
  const auto address = addressOf(path);
  if (!address) errno = ENAMETOOLONG;
  return address &&
         call(socket.descriptor(), reinterpret_cast<const sockaddr*>(&*address), sizeof *address) == 0;
}

/// The lock says who runs; the socket only carries files to that instance. The lock of a process that
/// died is stale and is taken over.
class FolderMeeting final : public SingleInstance::Meeting {
 public:
  explicit FolderMeeting(const QString& folder)
      : mayHoldFiles_(!folder.isEmpty()),
        socketPath_(folder + u'/' + identifiers::kPendra),
        lock_(socketPath_ + u".lock") {
    lock_.setStaleLockTime(0);
  }
  ~FolderMeeting() override {
    if (incoming_) QFile::remove(socketPath_);
  }

  Becoming become() override {
    if (!mayHoldFiles_) return Becoming::Nowhere;
    if (!lock_.tryLock(0)) {
      return lock_.error() == QLockFile::LockFailedError ? Becoming::Taken : Becoming::Nowhere;
    }
    QFile::remove(socketPath_);
    ::fchmod(server_.descriptor(), S_IRUSR | S_IWUSR);  // nobody else's from its first moment
    if (withAddress(::bind, server_, socketPath_) && ::listen(server_.descriptor(), SOMAXCONN) == 0) {
      incoming_.emplace(server_.descriptor(), QSocketNotifier::Read);
      QObject::connect(&*incoming_, &QSocketNotifier::activated, &*incoming_, [this] { accept(); });
    }
    return Becoming::Done;
  }

  Handing handOver(const StartRequest& request, std::chrono::milliseconds patience) override {
    const Socket socket = Socket::make();
    if (!reach(socket)) return Handing::NobodyThere;
    QByteArray parts;
    for (const QString& part : {request.path, request.action, request.activation}) {
      parts += part.toUtf8() + kEnd;
    }
    if (!socket.write(parts)) return Handing::Unanswered;
    pollfd answer{socket.descriptor(), POLLIN, 0};
    const bool has = ::poll(&answer, 1, static_cast<int>(patience.count())) > 0;
    return has && !socket.read().value_or(QByteArray()).isEmpty() ? Handing::Done : Handing::Unanswered;
  }

  [[nodiscard]] QString reason() const override {
    return tr("there is no session bus, and no folder of your own for a socket");
  }

 private:
  /// Whoever has the lock may not listen yet, or no longer.
  [[nodiscard]] bool reach(const Socket& socket) const {
    const QDeadlineTimer end(kUntilListening);
    while (!withAddress(::connect, socket, socketPath_)) {
      const bool mayListen = errno == ENOENT || errno == ECONNREFUSED;
      if (!mayListen || end.hasExpired() || !QFile::exists(lock_.fileName())) return false;
      QThread::msleep(kBetweenLooks.count());
    }
    return true;
  }

  /// A later start that hands over.
  struct Later {
    explicit Later(Socket its) : socket(std::move(its)), news(socket.descriptor(), QSocketNotifier::Read) {}
    Socket socket;
    QByteArray said;
    QSocketNotifier news;
  };

  void accept() {
    const int descriptor = ::accept4(server_.descriptor(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (descriptor < 0) return;
    Later& later = later_.try_emplace(descriptor, Socket(descriptor)).first->second;
    QObject::connect(&later.news, &QSocketNotifier::activated, &*incoming_,
                     [this, descriptor] { hear(descriptor); });
  }

  void hear(int descriptor) {
    const auto found = later_.find(descriptor);
    if (found == later_.end()) return;
    Later& later = found->second;
    const auto bytes = later.socket.read();
    if (!bytes) {
      later.news.setEnabled(false);
      QTimer::singleShot(0, &*incoming_, [this, descriptor] { later_.erase(descriptor); });
      return;
    }
    later.said += *bytes;
    if (later.said.count(kEnd) < kParts) return;
    const QList<QByteArray> parts = std::exchange(later.said, {}).split(kEnd);
    [[maybe_unused]] const bool told = later.socket.write(QByteArray(1, kEnd));
    receive({QString::fromUtf8(parts[0]), QString::fromUtf8(parts[1]), QString::fromUtf8(parts[2])});
  }

  bool mayHoldFiles_;
  QString socketPath_;
  QLockFile lock_;
  Socket server_ = Socket::make();
  std::optional<QSocketNotifier> incoming_;
  std::map<int, Later> later_;
};

}  // namespace

std::unique_ptr<SingleInstance::Meeting> meetInFolder(const QString& folder) {
  return std::make_unique<FolderMeeting>(folder);
}

}  // namespace pendra
