#include <poll.h>

#include <QProcess>
#include <QTemporaryDir>
#include <thread>

#include "ListedRows.h"
#include "ScriptedVantor.h"
#include "channel/CallingEnd.h"
#include "channel/ServingEnd.h"
#include "link/ChannelServer.h"
#include "link/Submission.h"
#include "platform/Text.h"
#include "support/Rows.h"

namespace pendra {
namespace {

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

/// Waits for a while at one call, and then cancels. Does so at none of the number 0.
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

/// What Vantor does at one call, and whether the user cancels it then.
struct Misbehaviour {
  const char* name;
  const char* fault;
  bool isCancelled = false;
  bool isHarmless = false;
};

struct Command {
  bool sends;  ///< or updates the lists
  int calls;   ///< that it makes of a Vantor without a fault
  int record;  ///< which of them hands over the record; 0: none
};
constexpr std::array kCommands{Command{false, 9, 0}, Command{true, 12, 12}};

class Faults : public testing::TestWithParam<Misbehaviour> {
 protected:
  /// A linked document with one entry, and a company that has one job more.
  struct Place : TestSession {
    Place() {
      EXPECT_TRUE(writeFile(
          places.path("company.json"),
          R"({"companyFileName": "/Books/Acme.cmp", "services": [{"name": "Design", "id": "s1"}],)"
          R"("customers": [{"name": "Acme", "id": "c1"}], "jobs": [{"name": "Roof", "id": "j1", "parent": "c1"},)"
          R"({"name": "Barn", "id": "j2", "parent": "c1"}]})"));
      openDocument(false);
      Customer& acme = addCustomer("Acme", "c1");
      addEntry(addActivity(&acme, &addService("Design", "s1"), &addJob(acme, "Roof", "j1")),
               "2026-11-24T07:00:00Z", 5400);
      EXPECT_TRUE(session.context()->save());
      workspace.setRunning(identifiers::kVantor, true);
    }
    [[nodiscard]] QByteArray records() const { return contentsOf(places.path("records")); }
  };
  /// The stand-in for Vantor, from when it serves to the end of its scope.
  struct Vantor {
    Vantor(const Place& place, const QString& fault) {
      process.setStandardErrorFile(QProcess::nullDevice());
      process.start(PENDRA_VANTOR_SIM,
                    QStringList{"--no-bus", "--company", place.places.path("company.json"), "--records",
                                place.places.path("records"), "--cache", place.places.caches} +
                        (fault.isEmpty() ? QStringList() : QStringList{"--fault", fault}));
      EXPECT_TRUE(process.waitForReadyRead()) << "the stand-in does not serve";
    }
    ~Vantor() {
      process.kill();
      process.waitForFinished();
    }
    QProcess process;
  };

  /// One command, with a Vantor that misbehaves at just that call, and once more with a healthy one.
  static void runTwice(const Command& command, int call) {
    Place place;
    ImpatientWait wait(GetParam().isCancelled ? call : 0);
    // Only who waits in vain waits shortly.
    const std::chrono::milliseconds limit(GetParam().isCancelled || GetParam().isHarmless ? 5000 : 1000);
    NotedProgress progress(place.clock);
    ConnectionChecks checks(place.session, connectOverChannel(TimeLimits{.reply = limit}, &wait), progress);
    ListSync lists(place.session, checks);
    const TimeEntry& entry = *place.session.context()->all<TimeEntry>()[0];
    const auto jobs = [&] { return place.session.context()->all<Job>().size(); };
    const auto run = [&] {
      return outcomeOf([&] {
        if (!command.sends) return lists.updateLists();
        ListedRows rows;
        ScriptedSummary summary;
        rows.add(*place.session.context()->all<TimeEntry>()[0]);
        Submission({place.session, checks, lists, rows, summary}).sendSelectedTime();
      });
    };
    {
      const Vantor vantor(place, formatted(u"%@:%@", {QString(GetParam().fault), QString::number(call)}));
      const bool isTold = call == command.record;  // and not thrown
      EXPECT_EQ(run() == Outcome::Answered, isTold || GetParam().isHarmless);
    }
    const bool hasLists = GetParam().isHarmless || (command.sends && call >= command.record - 2);
    EXPECT_EQ(jobs(), hasLists ? 2u : 1u);
    EXPECT_EQ(entry.wasSent(), GetParam().isHarmless && command.sends);
    EXPECT_EQ(entry.sendingSince().has_value(), call == command.record && !GetParam().isHarmless);
    // The user looks into what Vantor received before answering whether it arrived.
    if (entry.sendingSince())
      place.alerts.willAnswer({place.records().contains("<job>j1</job>") ? "It Arrived" : "Send Again"});
    const Vantor healthy(place, {});
    EXPECT_EQ(run(), Outcome::Answered);
    EXPECT_EQ(jobs(), 2u);
    EXPECT_EQ(entry.wasSent(), command.sends);
    EXPECT_EQ(place.records().count('\n'), command.sends ? 1 : 0) << "once";
  }
};

TEST_P(Faults, AtEachCallOfEachCommandLoseAndDoubleNothing) {
  // By default only some calls, others with each fault; all of them when everything is checked.
  const int step = qEnvironmentVariableIsSet("PENDRA_CRASH_ROUNDS") ? 1 : 4;
  for (const Command& command : kCommands) {
    for (int call = command.calls - static_cast<int>(QByteArray(GetParam().name).size()) % step; call > 0;
         call -= step) {
      SCOPED_TRACE("at call " + std::to_string(call) + " of " + std::to_string(command.calls));
      runTwice(command, call);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(
    All, Faults,
    testing::Values(Misbehaviour{"Stopped", "stopped", true}, Misbehaviour{"Silent", "silent", true},
                    Misbehaviour{"Slow", "slow=6000", true}, Misbehaviour{"Dripping", "dripping=6000", true},
                    Misbehaviour{"Dying", "dying", true}, Misbehaviour{"SilentForGood", "silent"},
                    Misbehaviour{"SlowWithinTheLimit", "slow=50", false, true},
                    Misbehaviour{"DyingAfter", "dying-after"}, Misbehaviour{"DyingAmid", "dying-amid"},
                    Misbehaviour{"WrongName", "wrong-name"}, Misbehaviour{"Twice", "twice", false, true},
                    Misbehaviour{"Garbage", "garbage"}),
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
  ConnectToVantor connect_ = connectOverChannel(TimeLimits{.reply = std::chrono::milliseconds(2000)});
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

}  // namespace
}  // namespace pendra
