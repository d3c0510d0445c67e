#include <poll.h>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QTimer>
#include <thread>

#include "Processes.h"
#include "channel/ServingEnd.h"
#include "support/Rows.h"
#include "support/TestSession.h"

namespace pendra {
namespace {

using std::chrono::milliseconds;

constexpr TimeLimits kLimits{.leave = milliseconds(2000), .reply = milliseconds(2000)};

enum class Outcome { Answered, NeverLeft, InDoubt };

template <class Ask>
Outcome outcomeOf(const Ask& ask) {
  try {
    ask();
    return Outcome::Answered;
  } catch (const ChannelFailure& failure) {
    return failure.fate() == ChannelFailure::Fate::NeverLeft ? Outcome::NeverLeft : Outcome::InDoubt;
  }
}

/// Every kind of call, the record last; the answer to `getCustomersArray` is in many datagrams.
struct Question {
  const char* operation;
  void (*ask)(RemoteServer&);
};
constexpr std::array kQuestions{
    Question{"companyFileName", [](RemoteServer& vantor) { (void)vantor.companyFileName(); }},
    Question{"getEmployeeNamesArray", [](RemoteServer& vantor) { (void)vantor.getEmployeeNamesArray(); }},
    Question{"getServicesArray", [](RemoteServer& vantor) { (void)vantor.getServicesArray(); }},
    Question{"getCustomersArray", [](RemoteServer& vantor) { (void)vantor.getCustomersArray(); }},
    Question{"getJobsArray", [](RemoteServer& vantor) { (void)vantor.getJobsArray(); }},
    Question{"canTalkToPendra", [](RemoteServer& vantor) { (void)vantor.canTalkToPendra(); }},
    Question{"submitTime:", [](RemoteServer& vantor) { vantor.submitTime("<record/>"); }}};

/// A Vantor that misbehaves at one kind of call after the other. Whatever it does, the call has an outcome in
/// time, and a healthy Vantor is found by the next connection.
struct Misbehaviour {
  const char* name;
  const char* fault;
  Outcome shortAnswer = Outcome::InDoubt;
  Outcome longAnswer = Outcome::InDoubt;
  int records = 1;  ///< that Vantor has of the one that was sent to it while it misbehaved
};

void PrintTo(const Misbehaviour& row, std::ostream* out) { *out << row.name; }

/// Waits for a while and then cancels, once it is told to.
class ImpatientWait final : public WaitPort {
 public:
  void prepare() override {}
  void wait(PendingCall& call) override {
    pollfd finished{.fd = call.finished(), .events = POLLIN, .revents = 0};
    if (!isImpatient || ::poll(&finished, 1, 60) > 0) return;
    sinceCancel.start();
    call.cancel();
  }

  bool isImpatient = false;
  QElapsedTimer sinceCancel;
};

/// One kind of call, with a Vantor of its own.
class Conversation {
 public:
  Conversation(const QString& folder, const Question& question, const TimeLimits& limits)
      : place_{folder}, question_(question), connect_(connectOverChannel(limits, &wait_)) {
    QByteArray customers;
    for (int i = 0; i < 3000; ++i)
      customers += (i > 0 ? ",{" : "{") + QByteArray("\"name\":\"Customer ") + QByteArray::number(i) +
                   "\",\"id\":\"c" + QByteArray::number(i) + "\"}";
    QDir().mkpath(place_.places().caches);
    EXPECT_TRUE(writeFile(folder + "/company.json",
                          "{\"companyFileName\":\"/Books/Acme.cmp\",\"customers\":[" + customers + "]}"));
  }

  void meet(const QString& fault) {
    vantor_ = fault.isEmpty() ? startVantor(place_) : startVantor(place_, fault, question_.operation);
    remote_.reset();
    const QString sockets = place_.places().caches + "/com.corvel.pendra/";
    remote_ = std::move(connect_(sockets + "vtserver.socket", sockets + "pdclient.socket")).value();
    // As before every record, Vantor is asked something first.
    if (isRecord()) {
      EXPECT_TRUE(remote_->canTalkToPendra());
    }
  }
  void ask() {
    QElapsedTimer time;
    time.start();
    outcome_ = outcomeOf([this] { question_.ask(*remote_); });
    EXPECT_LT(time.elapsed(), 10000);
  }
  void askImpatiently() {
    wait_.isImpatient = true;
    outcome_ = outcomeOf([this] { question_.ask(*remote_); });
    if (wait_.sinceCancel.isValid()) cancelTook_ = wait_.sinceCancel.elapsed();
  }
  /// In milliseconds; none when it was answered before it was cancelled.
  [[nodiscard]] std::optional<qint64> cancelTook() const { return cancelTook_; }
  [[nodiscard]] Outcome outcome() const { return outcome_; }
  [[nodiscard]] const Question& question() const { return question_; }
  [[nodiscard]] bool isRecord() const { return &question_ == &kQuestions.back(); }
  [[nodiscard]] qsizetype records() const { return contentsOf(place_.records()).count('\n'); }

 private:
  SendingPlace place_;
  const Question& question_;
  ImpatientWait wait_;
  ConnectToVantor connect_;
  std::unique_ptr<Process> vantor_;
  std::unique_ptr<RemoteServer> remote_;
  Outcome outcome_ = Outcome::NeverLeft;
  std::optional<qint64> cancelTook_;
};

/// All kinds of calls at once, to save time.
class Faults : public testing::TestWithParam<Misbehaviour> {
 protected:
  Faults() {
    for (const Question& question : kQuestions) {
      const QString own = folder_.filePath(QString::number(conversations_.size()));
      // Only who is to wait in vain is given little time.
      const TimeLimits limits = expected(question) == Outcome::Answered ? TimeLimits() : kLimits;
      conversations_.push_back(std::make_unique<Conversation>(own, question, limits));
      conversations_.back()->meet(GetParam().fault);
    }
  }
  [[nodiscard]] static Outcome expected(const Question& question) {
    const bool isLong = std::string_view(question.operation) == "getCustomersArray";
    return isLong ? GetParam().longAnswer : GetParam().shortAnswer;
  }
  void inAll(void (Conversation::*ask)()) const {
    std::vector<std::thread> asking;
    for (const auto& one : conversations_) asking.emplace_back([&one, ask] { ((*one).*ask)(); });
    for (std::thread& thread : asking) thread.join();
  }

  QTemporaryDir folder_{"/tmp/faultsXXXXXX"};
  std::vector<std::unique_ptr<Conversation>> conversations_;
};

TEST_P(Faults, CanBeCancelledAtOnce) {
  inAll(&Conversation::askImpatiently);
  std::vector<qint64> took;
  for (const auto& one : conversations_)
    if (one->cancelTook()) took.push_back(*one->cancelTook());
  if (took.empty()) return;
  EXPECT_LT(*std::min_element(took.begin(), took.end()), 100);
  EXPECT_LT(*std::max_element(took.begin(), took.end()), 1500)
      << "seven at a time may be slow, but wait for no limit";
}

TEST_P(Faults, GiveEveryCallAnOutcome) {
  inAll(&Conversation::ask);
  for (const auto& one : conversations_) {
    SCOPED_TRACE(one->question().operation);
    EXPECT_EQ(one->outcome(), expected(one->question()));
    EXPECT_EQ(one->records(), one->isRecord() ? GetParam().records : 0);
    if (!one->isRecord()) continue;
    one->meet({});
    one->ask();
    EXPECT_EQ(one->outcome(), Outcome::Answered) << "a healthy one is found, and owes nothing";
  }
}

INSTANTIATE_TEST_SUITE_P(
    All, Faults,
    testing::Values(Misbehaviour{.name = "Stopped", .fault = "stopped", .records = 0},
                    Misbehaviour{.name = "Silent", .fault = "silent"},
                    Misbehaviour{"SlowWithinTheLimit", "slow=50", Outcome::Answered, Outcome::Answered},
                    Misbehaviour{.name = "Slow", .fault = "slow=6000"},
                    Misbehaviour{"Dripping", "dripping=600", Outcome::Answered, Outcome::InDoubt},
                    Misbehaviour{.name = "Dying", .fault = "dying", .records = 0},
                    Misbehaviour{.name = "DyingAfter", .fault = "dying-after"},
                    Misbehaviour{.name = "DyingAmid", .fault = "dying-amid"},
                    Misbehaviour{.name = "WrongName", .fault = "wrong-name"},
                    Misbehaviour{"Twice", "twice", Outcome::Answered, Outcome::Answered},
                    Misbehaviour{.name = "Garbage", .fault = "garbage"}),
    RowName());

/// Vantor in this process, which answers when the test lets it.
class Owing : public testing::Test {
 protected:
  std::unique_ptr<RemoteServer> connection() {
    return std::move(connect_(folder_.filePath("s/vtserver"), folder_.filePath("s/pdclient"))).value();
  }
  Outcome sent(RemoteServer& remote, int answers) {
    std::thread serving([this, answers] {
      for (int i = 0; i < answers; ++i) serveOne();
    });
    const Outcome outcome = outcomeOf([&] { remote.submitTime("<record/>"); });
    serving.join();
    return outcome;
  }
  void serveOne() {
    for (const int before = served_; served_ == before;) vantor_->serveInput();
  }

  QTemporaryDir folder_;
  std::atomic<int> served_ = 0;
  std::unique_ptr<ServingEnd> vantor_ =
      std::move(ServingEnd::bound(folder_.filePath("s/vtserver"), [this](const auto&, const auto&) {
        ++served_;
        return true;
      })).value();
  ConnectToVantor connect_ = connectOverChannel(kLimits);
};

TEST_F(Owing, ALateAnswerVouchesForItsOwnRecordOnly) {
  auto remote = connection();
  EXPECT_EQ(sent(*remote, 0), Outcome::InDoubt);
  remote.reset();
  remote = connection();
  EXPECT_EQ(sent(*remote, 1), Outcome::InDoubt) << "the answer is of the record before";
  EXPECT_EQ(sent(*remote, 2), Outcome::Answered) << "one is of the record before";
  EXPECT_EQ(sent(*remote, 1), Outcome::Answered);

  EXPECT_EQ(sent(*remote, 0), Outcome::InDoubt);
  remote.reset();
  serveOne();
  remote = connection();
  EXPECT_EQ(sent(*remote, 1), Outcome::Answered) << "the late answer came while no connection was open";
}

/// Waits in an event loop, and cancels after a while.
class CancellingWait final : public WaitPort {
 public:
  void prepare() override { ++prepared; }
  void wait(PendingCall& call) override {
    EXPECT_EQ(prepared, 1) << "before the call begins";
    QEventLoop loop;
    QSocketNotifier finished(call.finished(), QSocketNotifier::Read);
    QObject::connect(&finished, &QSocketNotifier::activated, &loop, &QEventLoop::quit);
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, &loop, [this] { ++ticks; });
    tick.start(5);
    QTimer::singleShot(60, &loop, [&] {
      sinceCancel.start();
      call.cancel();
    });
    loop.exec();
  }

  int prepared = 0;
  int ticks = 0;
  QElapsedTimer sinceCancel;
};

TEST_F(Owing, ACallIsWaitedForInAnEventLoopAndCancelledFromThere) {
  int count = 1;
  std::array<char*, 2> arguments{const_cast<char*>("test-link"), nullptr};
  const QCoreApplication application(count, arguments.data());
  CancellingWait wait;
  connect_ = connectOverChannel({}, &wait);
  const auto remote = connection();
  EXPECT_EQ(outcomeOf([&] { remote->submitTime("<record/>"); }), Outcome::InDoubt);
  EXPECT_LT(wait.sinceCancel.elapsed(), 100);
  EXPECT_GE(wait.ticks, 3) << "the interface lives meanwhile";
  wait.prepared = 0;
  EXPECT_EQ(outcomeOf([&] { remote->submitTime("<next/>"); }), Outcome::NeverLeft);
}

}  // namespace
}  // namespace pendra
