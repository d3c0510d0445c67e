#include <poll.h>
#include <QElapsedTimer>
#include <QTemporaryDir>
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
  } catch (const VantorFailure& failure) {
    return failure.fate() == VantorFailure::Fate::NeverLeft ? Outcome::NeverLeft : Outcome::InDoubt;
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

/// One kind of call, with a Vantor of its own.
class Conversation {
 public:
  Conversation(const QString& folder, const Question& question, const TimeLimits& limits)
      : place_{folder}, question_(question), connect_(connectOverChannel(limits)) {
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
  [[nodiscard]] Outcome outcome() const { return outcome_; }
  [[nodiscard]] const Question& question() const { return question_; }
  [[nodiscard]] bool isRecord() const { return &question_ == &kQuestions.back(); }
  [[nodiscard]] qsizetype records() const { return contentsOf(place_.records()).count('\n'); }

 private:
  SendingPlace place_;
  const Question& question_;
  ConnectToVantor connect_;
  std::unique_ptr<Process> vantor_;
  std::unique_ptr<RemoteServer> remote_;
  Outcome outcome_ = Outcome::NeverLeft;
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

/// Waits for a while at one call, and then cancels.
class ImpatientWait final : public WaitPort {
 public:
  explicit ImpatientWait(int call) : impatientAt_(call) {}
  void prepare() override {}
  void wait(PendingCall& call) override {
    if (++calls_ != impatientAt_) return;
    pollfd finished{.fd = call.finished(), .events = POLLIN, .revents = 0};
    EXPECT_EQ(::poll(&finished, 1, 30), 0) << "there is nothing to cancel";
    call.cancel();
    EXPECT_EQ(::poll(&finished, 1, 1000), 1) << "a cancel waits for no limit";
  }

 private:
  int impatientAt_;
  int calls_ = 0;
};

const QByteArray kCompany =
    R"({"companyFileName": "/Books/Acme.cmp", "services": [{"name": "Design", "id": "s1"}],
        "customers": [{"name": "Acme", "id": "c1"}],
        "jobs": [{"name": "Job 1", "id": "j1", "parent": "c1"}, {"name": "Job 2", "id": "j2", "parent": "c1"}]})";

/// A document that knows one of the company's jobs, with an entry for it.
void makeDocument(const SendingPlace& place) {
  TestSession desk;
  desk.openDocument(false);
  Customer& acme = desk.addCustomer("Acme", "c1");
  Activity& activity =
      desk.addActivity(&acme, &desk.addService("Design", "s1"), &desk.addJob(acme, "Job 1", "j1"));
  desk.addPeriod(activity, "2026-11-24T07:00:00Z", 5400);
  ASSERT_TRUE(desk.session.context()->save());
  ASSERT_TRUE(QFile::copy(desk.places.path("Test.pdr"), place.document()));
}

/// Every call of every command, with a Vantor that misbehaves at just that call and a user who cancels.
struct Command {
  const char* name;
  void (Sender::*run)();
  int calls;   ///< that it makes of a Vantor without a fault
  int record;  ///< which of them hands over the record; 0: none
};

class Commands : public testing::TestWithParam<Command> {};

TEST_P(Commands, AreEndedByACancelAtEachCallAndSucceedTheNextTime) {
  const auto& [name, run, calls, record] = GetParam();
  // Every other call by default; all of them when everything is checked.
  const int step = qEnvironmentVariableIsSet("PENDRA_CRASH_ROUNDS") ? 1 : 2;
  int first = 0;
  for (const QString fault : {"stopped", "silent", "slow=6000", "dripping=6000", "dying"}) {
    for (int call = 1 + first++ % step; call <= calls; call += step) {
      SCOPED_TRACE(fault.toStdString() + " at call " + std::to_string(call));
      QTemporaryDir folder("/tmp/commandXXXXXX");
      const SendingPlace place{folder.path()};
      QDir().mkpath(place.places().caches);
      ASSERT_TRUE(writeFile(folder.filePath("company.json"), kCompany));
      makeDocument(place);
      ImpatientWait wait(call);
      Sender sender(place, &wait);
      {
        const auto vantor = startVantor(place, fault + u":" + QString::number(call), {});
        EXPECT_EQ(outcomeOf([&] { (sender.*run)(); }) == Outcome::Answered, call >= record && record > 0);
      }
      const TimeEntry& entry = *sender.session.context()->all<TimeEntry>()[0];
      EXPECT_FALSE(entry.wasSent());
      EXPECT_EQ(entry.sendingSince().has_value(), call == record);
      EXPECT_EQ(sender.session.context()->all<Job>().size(), record > 0 && call >= record - 2 ? 2u : 1u);
      const auto healthy = startVantor(place);
      EXPECT_EQ(outcomeOf([&] { (sender.*run)(); }), Outcome::Answered);
      EXPECT_EQ(sender.session.context()->all<Job>().size(), 2u);
      EXPECT_EQ(entry.wasSent(), record > 0);
      EXPECT_EQ(contentsOf(place.records()).count('\n'), record > 0 ? 1 : 0) << "once";
    }
  }
}

INSTANTIATE_TEST_SUITE_P(All, Commands,
                         testing::Values(Command{"UpdateLists", &Sender::updateLists, 9, 0},
                                         Command{"Send", &Sender::send, 12, 12}),
                         RowName());

}  // namespace
}  // namespace pendra
