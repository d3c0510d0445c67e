// What the channel costs: its archives beside the plainest writer and reader of the same rows, its calls
// beside what the system takes for the same bytes. All in one run, as ratios of medians.
#include <malloc.h>
#include <poll.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <cstdio>
#include <cstring>
#include <functional>
#include <numeric>
#include <string_view>

#include "PlainArchive.h"
#include "Ratio.h"
#include "channel/Archive.h"
#include "channel/CallThread.h"
#include "channel/ServingEnd.h"

using namespace pendra;

namespace {

constexpr int kCustomers = 40000;

ArchiveValue::Array customers(int count) {
  ArchiveValue::Array rows;
  for (int i = 0; i < count; ++i)
    rows.push_back(ListRow{.name = QStringLiteral("Customer %1").arg(i), .id = QString::number(100000 + i)});
  return rows;
}

/// Answers a short text, and one long list whose archive is made anew for each call.
ArchiveValue perform(const Operation& operation, const ArchiveValue::Array&) {
  static const ArchiveValue::Array rows = customers(kCustomers);
  if (operation.name == operations::kCustomers.name) return rows;
  return QStringLiteral("/home/ann/Books.cmp");
}

/// A socket without anything of ours around it, but of the same kind and buffers.
class BareSocket {
 public:
  explicit BareSocket(const QString& path) : socket_(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
    const QByteArray bytes = path.toLocal8Bit();
    unlink(bytes.constData());
    if (SocketAddress::forPath(bytes).bind(socket_.get()) != 0) std::abort();
    const int size = 32768;
    setsockopt(socket_.get(), SOL_SOCKET, SO_SNDBUF, &size, sizeof size);
    setsockopt(socket_.get(), SOL_SOCKET, SO_RCVBUF, &size, sizeof size);
  }

  void send(const char* bytes, qsizetype size, SocketAddress to) const {
    iovec part{.iov_base = const_cast<char*>(bytes), .iov_len = static_cast<std::size_t>(size)};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    to.addressSend(message);
    while (sendmsg(socket_.get(), &message, 0) < 0)
      if (errno != EAGAIN && errno != ENOBUFS && errno != EINTR) std::abort();
  }

  qsizetype receive() { return recv(socket_.get(), buffer_.data(), buffer_.size(), 0); }
  const char* data() const { return buffer_.data(); }

 private:
  Descriptor socket_;
  std::vector<char> buffer_ = std::vector<char>(65536);
};

/// Code in a process of its own, until the end of the scope.
class Child {
 public:
  explicit Child(const std::function<void()>& code) : process_(fork()) {
    if (process_ != 0) return;
    code();
    _exit(0);
  }
  ~Child() {
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
  }
  Q_DISABLE_COPY_MOVE(Child)

 private:
  pid_t process_;
};

class Bench {
 public:
  Bench() { (void)ServingEnd::bound(path("folder"), perform); }

  void archives() const;
  void shortCalls() const;
  void longList() const;
  static void growth();
  void waiting() const;

 private:
  QString path(const char* name) const { return folder_.path() + u"/s/" + QString::fromLatin1(name); }
  SocketAddress address(const char* name) const { return SocketAddress::forPath(path(name).toLocal8Bit()); }

  void serve() const {
    const auto channel = std::move(ServingEnd::bound(path("server"), perform)).value();
    pollfd waiting{.fd = channel->descriptor(), .events = POLLIN, .revents = 0};
    while (poll(&waiting, 1, -1) >= 0) channel->serveInput();
  }

  void echoBarely() const {
    BareSocket socket(path("bare-server"));
    while (true) {
      const qsizetype size = socket.receive();
      socket.send(socket.data(), size, address("bare-client"));
    }
  }

  void sendBarely(const QByteArray& archive) const {
    BareSocket socket(path("bare-server"));
    while (true) {
      socket.receive();
      for (qsizetype at = 0; at < archive.size(); at += kSliceSize)
        socket.send(archive.constData() + at, std::min(kSliceSize, archive.size() - at),
                    address("bare-client"));
    }
  }

  std::unique_ptr<CallingEnd> client(const char* server) const {
    return std::move(CallingEnd::bound(path(server), path("client"))).value();
  }

  void awaitSocket(const char* name) const {
    while (access(path(name).toLocal8Bit().constData(), F_OK) != 0) usleep(1000);
  }

  QTemporaryDir folder_{QStringLiteral("/tmp/benchXXXXXX")};
};

std::vector<ListRow> rowsOf(ArchiveValue value) {
  std::vector<ListRow> rows;
  for (ArchiveValue& row : *value.as<ArchiveValue::Array>()) rows.push_back(std::move(*row.as<ListRow>()));
  return rows;
}

void Bench::archives() const {
  const ArchiveValue::Array rows = customers(kCustomers);
  const QByteArray archive = writeArchive(rows).value();
  if (rowsOf(readArchive(bench::plainlyWritten(rows)).value()) != bench::plainlyRead(archive)) std::abort();
  std::printf("%d rows, %.2f MiB; plainly written %.2f MiB\n", kCustomers,
              static_cast<double>(archive.size()) / 1048576,
              static_cast<double>(bench::plainlyWritten(rows).size()) / 1048576);
  bench::compare(
      "write", 2, [&] { (void)writeArchive(rows); }, [&] { (void)bench::plainlyWritten(rows); }, 21);
  bench::compare(
      "read", 2, [&] { (void)rowsOf(readArchive(archive).value()); },
      [&] { (void)bench::plainlyRead(archive); }, 21);
  bench::compare(
      "write and read", 2, [&] { (void)rowsOf(readArchive(writeArchive(rows).value()).value()); },
      [&] { (void)bench::plainlyRead(bench::plainlyWritten(rows)); }, 21);
}

void Bench::shortCalls() const {
  constexpr int kCalls = 200;
  const Child echo([this] { echoBarely(); });
  const Child vantor([this] { serve(); });
  awaitSocket("bare-server");
  awaitSocket("server");
  BareSocket bare(path("bare-client"));
  CallThread thread(client("server"));
  const std::vector<char> kibibyte(1024);
  const auto [call, pingPong] = bench::mediansInTurn(
      31,
      [&] {
        for (int i = 0; i < kCalls; ++i) {
          thread.begin({&operations::kCompanyFileName, {}});
          (void)thread.take();
        }
      },
      [&] {
        for (int i = 0; i < kCalls; ++i) {
          bare.send(kibibyte.data(), 1024, address("bare-server"));
          bare.receive();
        }
      });
  std::printf("short call / bare 1 KiB ping-pong: %.1f us / %.1f us = %.2f\n", call / kCalls * 1e3,
              pingPong / kCalls * 1e3, call / pingPong);
  unlink(path("server").toLocal8Bit().constData());
  unlink(path("bare-server").toLocal8Bit().constData());
}

void Bench::longList() const {
  const QByteArray archive = archivedReply(operations::kCustomers.name, customers(kCustomers));
  const Child sender([&] { sendBarely(archive); });
  const Child vantor([this] { serve(); });
  awaitSocket("bare-server");
  awaitSocket("server");
  BareSocket bare(path("bare-client"));
  const auto channel = client("server");
  unsigned sum = 0;
  const auto [call, transfer] = bench::mediansInTurn(
      21,
      [&] {
        (void)channel->call({&operations::kCustomers, {}});
      },
      [&] {
        bare.send("x", 1, address("bare-server"));
        for (qsizetype at = 0; at < archive.size();) {
          const qsizetype size = bare.receive();
          sum = std::accumulate(bare.data(), bare.data() + size, sum);
          at += size;
        }
      });
  std::printf("list of %d rows, both sides / bare transfer: %.1f ms / %.1f ms (%u)\n", kCustomers, call,
              transfer, sum % 10);
}

void Bench::growth() {
  std::array<double, 3> encoding{};
  std::array<double, 3> decoding{};
  const std::array<int, 3> counts{1000, 10000, 100000};
  for (std::size_t i = 0; i < counts.size(); ++i) {
    const ArchiveValue rows = customers(counts[i]);
    const QByteArray archive = writeArchive(rows).value();
    if (!readArchive(archive)) std::abort();
    const int runs = 200000 / counts[i] + 9;
    encoding[i] =
        bench::medianProcessorMilliseconds(runs, [&] { (void)writeArchive(rows); }) / counts[i] * 1e6;
    decoding[i] =
        bench::medianProcessorMilliseconds(runs, [&] { (void)readArchive(archive); }) / counts[i] * 1e6;
  }
  const auto print = [](const char* what, const std::array<double, 3>& each) {
    std::printf("%s a row, among 1,000, 10,000 and 100,000: %.0f, %.0f and %.0f ns = 1, %.2f and %.2f\n",
                what, each[0], each[1], each[2], each[1] / each[0], each[2] / each[0]);
  };
  print("writing", encoding);
  print("reading", decoding);
}

void Bench::waiting() const {
  const BareSocket deaf(path("deaf"));
  const auto channel = client("deaf");
  const auto processTime = [] {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
  };
  const double before = processTime();
  const double waited = bench::medianMilliseconds(1, [&] {
    (void)channel->call({&operations::kCompanyFileName, {}});
  });
  std::printf("processor time of a waiting caller: %.2f ms in %.2f s (aim none)\n",
              (processTime() - before) * 1e3, waited / 1e3);
}

}  // namespace

/// bench-channel [archives|calls|list|growth|waiting]
int main(int argc, char** argv) {
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  // The first touch of a page costs up to 20 us on a virtual machine, far more than what is written to it.
  // The allocator keeps what it once got, on both sides of a ratio, so that the channel is measured and not
  // the pages.
  mallopt(M_MMAP_THRESHOLD, 32 << 20);
  mallopt(M_TRIM_THRESHOLD, 1 << 30);
  const std::string_view part = argc > 1 ? argv[1] : "";
  const Bench bench;
  if (part.empty() || part == "archives") bench.archives();
  if (part.empty() || part == "calls") bench.shortCalls();
  if (part.empty() || part == "list") bench.longList();
  if (part.empty() || part == "growth") Bench::growth();
  if (part.empty() || part == "waiting") bench.waiting();
}
