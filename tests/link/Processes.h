#pragma once

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QStringList>
#include <csignal>

#include "Sender.h"
#include "support/TestSession.h"

namespace pendra {

/// A process that ends with its scope at the latest.
class Process {
 public:
  explicit Process(const std::function<void()>& code) : id_(::fork()) {
    if (id_ != 0) return;
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    ::dup2(nowhere, STDERR_FILENO);
    code();
    ::_exit(0);
  }
  ~Process() { kill(); }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  void kill() {
    if (id_ <= 0) return;
    ::kill(id_, SIGKILL);
    waitForEnd();
  }
  void waitForEnd() {
    if (id_ > 0) ::waitpid(id_, nullptr, 0);
    id_ = -1;
  }
  [[nodiscard]] bool hasEnded() {
    if (id_ > 0 && ::waitpid(id_, nullptr, WNOHANG) == id_) id_ = -1;
    return id_ <= 0;
  }

 private:
  pid_t id_;
};

constexpr double kSeconds = 5400;

/// A document with an activity for each of so many jobs, each with one entry, or with two that are merged,
/// and a company that has one job more.
inline void makeDocument(const SendingPlace& place, int jobs) {
  QByteArray known;
  for (int i = 1; i <= jobs + 1; ++i) {
    const QByteArray number = QByteArray::number(i);
    known += (i > 1 ? ", " : "") +
             ("{\"name\": \"Job " + number + "\", \"id\": \"j" + number + R"(", "parent": "c1"})");
  }
  QDir().mkpath(place.places().caches);
  ASSERT_TRUE(
      writeFile(place.folder + "/company.json",
                R"({"companyFileName": "/Books/Acme.cmp", "services": [{"name": "Design", "id": "s1"}],)"
                R"("customers": [{"name": "Acme", "id": "c1"}], "jobs": [)" +
                    known + "]}"));
  TestSession desk;
  desk.openDocument(false);
  Customer& acme = desk.addCustomer("Acme", "c1");
  Service& design = desk.addService("Design", "s1");
  for (int i = 1; i <= jobs; ++i) {
    Job& job = desk.addJob(acme, "Job " + QString::number(i), "j" + QString::number(i));
    Activity& activity = desk.addActivity(&acme, &design, &job);
    desk.addPeriod(activity, "2026-11-24T07:00:00Z", place.merging ? kSeconds / 3 : kSeconds);
    if (place.merging) desk.addPeriod(activity, "2026-11-24T09:00:00Z", kSeconds * 2 / 3);
  }
  ASSERT_TRUE(desk.session.context()->save());
  ASSERT_TRUE(QFile::copy(desk.places.path("Test.pdr"), place.document()));
}

/// The stand-in for Vantor, once it serves; misbehaving if a fault is named.
inline std::unique_ptr<Process> startVantor(const SendingPlace& place, const QString& fault = {}) {
  std::array<int, 2> output{};
  if (::pipe2(output.data(), O_CLOEXEC) != 0) return nullptr;
  auto vantor = std::make_unique<Process>([&] {
    ::dup2(output[1], STDOUT_FILENO);
    QList<QByteArray> words{PENDRA_VANTOR_SIM};
    QStringList options{"--no-bus",      "--company", place.folder + "/company.json", "--records",
                        place.records(), "--cache",   place.places().caches};
    if (!fault.isEmpty()) options << "--fault" << fault;
    for (const QString& option : options) words << option.toLocal8Bit();
    std::vector<char*> arguments;
    for (QByteArray& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    ::execv(PENDRA_VANTOR_SIM, arguments.data());
  });
  ::close(output[1]);
  char ready = 0;
  EXPECT_EQ(::read(output[0], &ready, 1), 1) << "the stand-in does not serve";
  ::close(output[0]);
  return vantor;
}

}  // namespace pendra
