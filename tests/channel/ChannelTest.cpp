#include <sys/wait.h>

#include <QtEndian>

#include "Fixtures.h"
#include "channel/CallThread.h"
#include "support/LogCapture.h"
#include "support/Rows.h"

namespace pendra {
namespace {

using namespace operations;
using std::chrono::milliseconds;

const Call kAsk{.operation = &kCompanyFileName, .arguments = {}};

Call record(const QString& text) { return {.operation = &kSubmitTime, .arguments = {text}}; }

/// What a call makes of the datagrams that come once it has arrived.
struct Reply {
  const char* name;
  std::vector<QByteArray> datagrams;
  const char* outcome;
};
void PrintTo(const Reply& row, std::ostream* out) { *out << row.name; }

class Replies : public testing::TestWithParam<Reply> {};

TEST_P(Replies, AreAnswersOrNamedFailures) {
  const SocketFolder folder;
  RawPeer peer(folder.bytes("server"));
  const auto client = folder.client(kShortLimits);
  // Of no call, because they came before it: an answer, nonsense, and a message that has only begun.
  for (const QByteArray& early :
       {reply(kCompanyFileName, "early"), QByteArray(header(3) + "x"), QByteArray(header(1) + "x")})
    ASSERT_TRUE(peer.send(early, folder.bytes("client")));
  const Beside answering([&] {
    EXPECT_EQ(peer.receive(), header(2) + archiveOf({QStringLiteral("companyFileName")}));
    for (const QByteArray& datagram : GetParam().datagrams)
      EXPECT_TRUE(peer.send(datagram, folder.bytes("client")));
  });
  const LogCapture log;
  EXPECT_EQ(told(client->call(kAsk)), GetParam().outcome);
  EXPECT_EQ(log.lines().front(), "ipc -> companyFileName");
  const std::string_view outcome = GetParam().outcome;
  if (outcome.ends_with("= yes")) {
    EXPECT_EQ(log.lines().back(), "ipc <- companyFileName");
  }
}

/// An answer that fills what is taken of one datagram, by bytes that no object has.
QByteArray longAnswer() {
  QByteArray archive = reply(kCompanyFileName, "yes").mid(4);
  const qsizetype table = qFromBigEndian<qint64>(archive.constEnd() - 8);
  const QByteArray padding((256 << 10) - 4 - archive.size(), 'x');
  archive.insert(table, padding);
  qToBigEndian<qint64>(table + padding.size(), archive.data() + archive.size() - 8);
  return archive;
}

constexpr const char* kTimeout =
    "VTIPCTimeout: timeout waiting for return result for companyFileName, in doubt";

INSTANTIATE_TEST_SUITE_P(
    All, Replies,
    testing::Values(
        Reply{"RightName", {reply(kCompanyFileName, "yes")}, "companyFileName = yes"},
        Reply{"OtherNameThenRight",
              {reply(kJobs, "no"), reply(kCompanyFileName, "yes")},
              "companyFileName = yes"},
        // The rule of the wire; the link does not believe it.
        Reply{"OtherNameHeldAtTheDeadline", {reply(kJobs, "yes")}, "getJobsArray = yes"},
        Reply{"InSlices",
              {header(1) + reply(kCompanyFileName, "yes").mid(4, 7),
               header(7) + reply(kCompanyFileName, "yes").mid(11)},
              "companyFileName = yes"},
        Reply{"Nothing", {}, kTimeout},
        Reply{"OnlyItsBeginning", {header(1) + reply(kCompanyFileName, "yes").mid(4)}, kTimeout},
        Reply{"NoAnswerInTheReply", {header(3) + archiveOf({QStringLiteral("companyFileName")})}, kTimeout},
        Reply{"Garbage",
              {header(3) + "nonsense"},
              "VTIPCUnArchiverFailure: error: not a property list, in doubt"},
        Reply{"LostSlice", {header(3)}, "VTIPCUnArchiverFailure: error: not a property list, in doubt"},
        Reply{"TooShort", {QByteArray("abc")}, "VTIPCUnArchiverFailure: error: not a datagram, in doubt"},
        Reply{"AsLongAsAnyIsTaken", {header(3) + longAnswer()}, "companyFileName = yes"},
        Reply{"LongerThanThat",
              {header(3) + longAnswer() + "rest"},
              "VTIPCUnArchiverFailure: error: not a datagram, in doubt"},
        Reply{"NotAnArray",
              {header(3) + writeArchive(QStringLiteral("text")).value()},
              "VTIPCUnArchiverFailure: error: the message is not an array, in doubt"},
        Reply{"NumberForAName",
              {header(3) + archiveOf({qint64{1}})},
              "VTIPCUnArchiverFailure: error: the message names no operation, in doubt"},
        Reply{"ACall",
              {header(2) + archiveOf({QStringLiteral("companyFileName")})},
              "VTIPCNoMethod: no matching method for call, in doubt"}),
    RowName());

TEST(Channel, WithoutAPeerFailsAtOnceAndFindsItsSuccessorByItsPath) {
  const SocketFolder folder;
  const auto client = folder.client();
  const std::string failed = "VTIPCSend: error occurred trying to send datagram, error: ";
  EXPECT_EQ(told(client->call(kAsk)), failed + "No such file or directory (POSIX 2), never left");
  { const RawPeer gone(folder.bytes("server")); }
  EXPECT_EQ(told(client->call(kAsk)), failed + "Connection refused (POSIX 111), never left");
  RawPeer successor(folder.bytes("server"));
  const Beside answering([&] {
    successor.receive();
    successor.send(reply(kCompanyFileName, "yes"), folder.bytes("client"));
  });
  EXPECT_EQ(told(client->call(kAsk)), "companyFileName = yes");
}

/// What a peer that reads nothing does to a call, by how full its queue is and how long the call is.
TEST(Channel, IsHeldUpByAPeerThatDoesNotReadButNotForGood) {
  const SocketFolder folder;
  auto deaf = std::make_unique<RawPeer>(folder.bytes("server"));
  const auto client = folder.client(kShortLimits);
  const Call longCall = record(QString(300000, u'x'));
  const std::string failed = "VTIPCSend: error occurred trying to send datagram, error: ";
  std::thread later([&] {
    std::this_thread::sleep_for(milliseconds(900));
    deaf.reset();
  });
  EXPECT_EQ(told(client->call(longCall)), failed + "Connection refused (POSIX 111), in doubt")
      << "longer than any limit, because a part of it had left";
  later.join();

  const RawPeer full(folder.bytes("server"));
  std::string outcome;
  for (int i = 0; i < 100 && !outcome.ends_with("never left"); ++i)
    outcome = told(folder.client({.leave = milliseconds(300), .reply = milliseconds(1)})->call(kAsk));
  EXPECT_EQ(outcome, failed + "Resource temporarily unavailable (POSIX 11), never left");
}

TEST(Channel, SendsALongCallAsFastAsItIsReadAndReadsMeanwhile) {
  const SocketFolder folder;
  RawPeer peer(folder.bytes("server"));
  const auto client = folder.client(kShortLimits);
  const QString text(300000, u'x');
  QByteArray gathered;
  const Beside reading([&] {
    std::this_thread::sleep_for(milliseconds(400));
    QByteArray datagram;
    do {
      datagram = peer.receive();
      gathered += datagram.mid(4);
      // More than the client's queue holds, if it did not read while it waits.
      for (int i = 0; i < 5; ++i) EXPECT_TRUE(peer.send(reply(kJobs, "stray"), folder.bytes("client")));
    } while (datagram.size() > 4 && (datagram.at(3) & 2) == 0);
    peer.send(reply(kSubmitTime, "yes"), folder.bytes("client"));
  });
  EXPECT_EQ(told(client->call(record(text))), "submitTime: = yes");
  EXPECT_EQ(gathered, archiveOf({QStringLiteral("submitTime:"), text}));
}

TEST(Channel, IsOwedNothingByAnotherProcess) {
  const SocketFolder folder;
  RawPeer peer(folder.bytes("server"));
  const auto client = folder.client(kShortLimits);
  const Call call = record(QStringLiteral("<record/>"));
  ASSERT_TRUE(peer.send(reply(kCompanyFileName, "heard of"), folder.bytes("client")));
  EXPECT_EQ(told(client->call(call)),
            "VTIPCTimeout: timeout waiting for return result for submitTime:, in doubt");
  const pid_t successor = fork();
  if (successor == 0) {
    peer.receive();
    peer.receive();
    _exit(peer.send(reply(kSubmitTime, "new"), folder.bytes("client")) ? 0 : 1);
  }
  EXPECT_EQ(told(client->call(call)), "submitTime: = new");
  waitpid(successor, nullptr, 0);
}

TEST(Channel, DropsWhatAnotherUserSendsAndSaysSoOnce) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can send as another user";
  constexpr uid_t kNobody = 65534;
  const SocketFolder folder;
  RawPeer peer(folder.bytes("server"));
  auto client = folder.client(kShortLimits);
  const Beside answering([&] {
    peer.receive();
    const pid_t child = fork();
    if (child == 0) {
      if (setresuid(kNobody, kNobody, kNobody) != 0) _exit(1);
      int sent = 0;
      for (int i = 0; i < 3; ++i)
        sent += peer.send(reply(kCompanyFileName, "forged"), folder.bytes("client"));
      _exit(sent);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 3);
    peer.send(reply(kCompanyFileName, "yes"), folder.bytes("client"));
  });
  const LogCapture log;
  EXPECT_EQ(told(client->call(kAsk)), "companyFileName = yes");
  client.reset();
  EXPECT_EQ(log.lines(), (QStringList{"ipc -> companyFileName", "dropped a datagram from user 65534",
                                      "ipc <- companyFileName", "dropped 3 datagrams from other users"}));
}

/// What the serving side makes of calls that nobody should make, and that it goes on afterwards.
TEST(Serving, RefusesWhatItDoesNotKnowAndGoesOn) {
  const SocketFolder folder;
  const auto server = folder.server([](const Operation& operation, const ArchiveValue::Array& arguments) {
    return operation.argumentCount > 0 ? arguments.first() : ArchiveValue();
  });
  RawPeer peer(folder.bytes("client"));
  const auto refusalOf = [&](const QByteArray& archive) -> std::string {
    peer.send(header(2) + archive, folder.bytes("server"));
    try {
      server->serveInput();
    } catch (const ChannelFailure& failure) {
      return failure.name().toStdString() + ": " + failure.reason().toStdString();
    }
    return {};
  };
  const std::string unknown = "VTIPCNoMethod: no matching method for call";
  EXPECT_EQ(refusalOf(archiveOf({QStringLiteral("exit")})), unknown);
  EXPECT_EQ(refusalOf(archiveOf({QStringLiteral("submitTime:")})), unknown);
  EXPECT_EQ(refusalOf(archiveOf({})), "VTIPCUnArchiverFailure: error: the message names no operation");
  const LogCapture log;
  EXPECT_EQ(refusalOf(archiveOf({QStringLiteral("submitTime:"), NilMarker()})), "");
  EXPECT_EQ(log.lines(), (QStringList{"ipc <--  submitTime:", "ipc -> submitTime:"}));
  EXPECT_EQ(peer.receive(), header(3) + archiveOf({QStringLiteral("submitTime:"), NilMarker()}));
}

TEST(CallThread, IsCancelledAtOnceWhateverItWaitsFor) {
  const SocketFolder folder;
  const RawPeer deaf(folder.bytes("server"));
  for (const auto& [call, fate] :
       {std::pair(kAsk, "in doubt"), std::pair(record(QString(300000, u'x')), "")}) {
    CallThread thread(folder.client());
    thread.begin(call);
    std::this_thread::sleep_for(milliseconds(50));
    const auto start = std::chrono::steady_clock::now();
    thread.cancel();
    const std::string outcome = told(thread.take());
    EXPECT_LT(std::chrono::steady_clock::now() - start, milliseconds(100));
    EXPECT_TRUE(outcome.starts_with("VTIPCCancelled: the call was cancelled")) << outcome;
    EXPECT_TRUE(outcome.ends_with(fate)) << outcome;
    thread.begin(kAsk);
    EXPECT_EQ(told(thread.take()), "VTIPCCancelled: the call was cancelled, never left");
  }
}

}  // namespace
}  // namespace pendra
