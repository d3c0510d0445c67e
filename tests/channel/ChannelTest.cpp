#include <gtest/gtest.h>

#include "Peers.h"
#include "support/Rows.h"

namespace pendra {
namespace {

using Lines = std::vector<std::string>;

TEST(Channel, LogsACallOnBothSides) {
  const SocketFolder folder;
  Echo echo;
  const auto server = serverOf(folder, echo);
  RawPeer peer(folder.bytes("client"));
  LogCollector log;
  peer.send(header(2) + archiveOf({QStringLiteral("echo:"), IPCNilArg::nilArg()}), folder.bytes("server"));
  peer.send(header(2) + archiveOf({QStringLiteral("tell:"), QStringLiteral("x")}), folder.bytes("server"));
  server->serveInput();
  server->serveInput();
  EXPECT_EQ(LogCollector::lines(),
            (Lines{"ipc <--  echo:", "ipc -> echo:", "ipc <--  tell:", "ipc oneway tell:"}));
  EXPECT_EQ(peer.receive(), header(3) + archiveOf({QStringLiteral("echo:"), IPCNilArg::nilArg()}));

  LogCollector::lines().clear();
  const auto client = clientOf(folder);
  EXPECT_TRUE(client->forwardInvocation(u"tell:", {QStringLiteral("x")}).isNil());
  Beside serving([&] {
    // The poll is the test's own; the descriptor is what an event loop would watch.
    while (echo.performed.size() < 4) server->serveInput();
  });
  EXPECT_EQ(client->forwardInvocation(u"echo:", {true}), ArchiveValue(true));
}

TEST(Channel, InvalidatedSendsNothing) {
  const SocketFolder folder;
  const auto client = clientOf(folder);
  LogCollector log;
  client->invalidate();
  EXPECT_EQ(LogCollector::lines(), Lines{"**IPCMgr invalidate"});
  EXPECT_FALSE(client->isValid());
  EXPECT_EQ(client->socketRef(), -1);
  EXPECT_TRUE(failureOf([&] { client->forwardInvocation(u"do", {}); }).starts_with("VTIPCSend: "));
  EXPECT_EQ(access(folder.bytes("client").constData(), F_OK), 0);
  EXPECT_TRUE(clientOf(folder)->isValid());
}

TEST(Channel, WithoutAPeerFailsAtOnce) {
  const SocketFolder folder;
  const auto client = clientOf(folder);
  EXPECT_EQ(failureOf([&] { client->forwardInvocation(u"do", {}); }),
            "VTIPCSend: error occurred trying to send datagram, error: No such file or directory (POSIX 2)");
  { const RawPeer gone(folder.bytes("server")); }
  EXPECT_EQ(failureOf([&] { client->forwardInvocation(u"do", {}); }),
            "VTIPCSend: error occurred trying to send datagram, error: Connection refused (POSIX 111)");
}

/// What a call makes of the datagrams that are there when it waits.
struct Answer {
  const char* name;
  std::vector<QByteArray> datagrams;
  const char* failure;  ///< empty when the call answers "yes"
};
void PrintTo(const Answer& row, std::ostream* out) { *out << row.name; }

QByteArray reply(const char* selector, const char* answer) {
  return header(3) + archiveOf({QString::fromLatin1(selector), QString::fromLatin1(answer)});
}

class Answered : public testing::TestWithParam<Answer> {};

TEST_P(Answered, ByWhatItFinds) {
  const SocketFolder folder;
  RawPeer peer(folder.bytes("server"));
  const auto client = clientOf(folder);
  client->setTimeLimits(kShortLimits);
  for (const QByteArray& datagram : GetParam().datagrams)
    ASSERT_TRUE(peer.send(datagram, folder.bytes("client")));
  LogCollector log;
  ArchiveValue answer;
  EXPECT_EQ(failureOf([&] { answer = client->forwardInvocation(u"echo:", {true}); }), GetParam().failure);
  if (!*GetParam().failure) {
    EXPECT_EQ(answer, ArchiveValue(QStringLiteral("yes")));
  } else if (const std::string failure = GetParam().failure;
             failure.starts_with("VTIPCUnArchiverFailure: error: ")) {
    EXPECT_EQ(LogCollector::lines().back(), "unarchive failure: " + failure.substr(31));
  }
}

const char* const kTimeout = "VTIPCTimeout: timeout waiting for return result for echo:";

INSTANTIATE_TEST_SUITE_P(
    Datagrams, Answered,
    testing::Values(
        Answer{"RightName", {reply("echo:", "yes")}, ""},
        Answer{"WrongNameHeldAtTheDeadline", {reply("do", "yes")}, ""},
        Answer{"WrongNameThenRight", {reply("do", "no"), reply("echo:", "yes")}, ""},
        Answer{"AnswerToAnEarlierCall", {reply("echo:", "yes"), reply("echo:", "later")}, ""},
        Answer{"Nothing", {}, kTimeout},
        Answer{"NoAnswerInTheReply", {header(3) + archiveOf({QStringLiteral("echo:")})}, kTimeout},
        Answer{"Garbage", {header(3) + "nonsense"}, "VTIPCUnArchiverFailure: error: not a property list"},
        Answer{"LostSlice", {header(3)}, "VTIPCUnArchiverFailure: error: not a property list"},
        Answer{"TooShort", {QByteArray("abc")}, "VTIPCUnArchiverFailure: error: not a datagram"},
        Answer{"NotAnArray",
               {header(3) + archivedData(QStringLiteral("text")).value()},
               "VTIPCUnArchiverFailure: error: the message is not an array"},
        Answer{"TwoBeginnings",
               {header(1) + "x", header(1) + "x"},
               "VTIPCUnArchiverFailure: error: fragment gather buffer is not nil"},
        Answer{"MiddleOfNothing",
               {header(5) + "x"},
               "VTIPCUnArchiverFailure: error: fragment gather buffer is nil"},
        Answer{"ACall",
               {header(2) + archiveOf({QStringLiteral("do")})},
               "VTIPCNoMethod: no matching method for call"}),
    RowName());

TEST(Channel, TakesNoAnswerThatCameBeforeItsCallWhenAskedNotTo) {
  const SocketFolder folder;
  RawPeer peer(folder.bytes("server"));
  const auto client = clientOf(folder);
  client->setTimeLimits(kShortLimits);
  const QByteArray halfAMessage = header(1) + QByteArray("x");
  for (const QByteArray& late : {reply("echo:", "yes"), halfAMessage})
    ASSERT_TRUE(peer.send(late, folder.bytes("client")));
  client->discardInput();
  EXPECT_EQ(failureOf([&] { client->forwardInvocation(u"echo:", {true}); }), kTimeout);

  ASSERT_TRUE(peer.send(halfAMessage, folder.bytes("client")));
  EXPECT_EQ(failureOf([&] { client->forwardInvocation(u"echo:", {true}); }), kTimeout);
  client->discardInput();
  ASSERT_TRUE(peer.send(reply("echo:", "no"), folder.bytes("client")));
  EXPECT_EQ(client->forwardInvocation(u"echo:", {true}), ArchiveValue(QStringLiteral("no")))
      << "half a message is forgotten, too";
}

/// What the serving side makes of calls that nobody should make, and that it goes on afterwards.
struct BadCall {
  const char* name;
  QByteArray archive;
  const char* failure;
};
void PrintTo(const BadCall& row, std::ostream* out) { *out << row.name; }

class BadCalls : public testing::TestWithParam<BadCall> {};

TEST_P(BadCalls, AreNamedFailuresAndNoMore) {
  const SocketFolder folder;
  Echo echo;
  const auto server = serverOf(folder, echo);
  RawPeer peer(folder.bytes("client"));
  peer.send(header(2) + GetParam().archive, folder.bytes("server"));
  EXPECT_EQ(failureOf([&] { server->serveInput(); }), GetParam().failure);
  EXPECT_TRUE(echo.performed.empty());
  peer.send(header(2) + archiveOf({QStringLiteral("do")}), folder.bytes("server"));
  server->serveInput();
  EXPECT_EQ(echo.performed, Lines{"do"});
}

INSTANTIATE_TEST_SUITE_P(Calls, BadCalls,
                         testing::Values(BadCall{"UnknownSelector", archiveOf({QStringLiteral("exit")}),
                                                 "VTIPCNoMethod: no matching method for call"},
                                         BadCall{"TooFewArguments", archiveOf({QStringLiteral("echo:")}),
                                                 "VTIPCNoMethod: no matching method for call"},
                                         BadCall{"NoSelector", archiveOf({}),
                                                 "VTIPCUnArchiverFailure: error: the call names no selector"},
                                         BadCall{
                                             "NumberForSelector", archiveOf({qint64{1}}),
                                             "VTIPCUnArchiverFailure: error: the call names no selector"}),
                         RowName());

TEST(Channel, DropsWhatAnotherUserSends) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can send as another user";
  constexpr uid_t kNobody = 65534;
  const SocketFolder folder;
  Echo echo;
  const auto server = serverOf(folder, echo);
  RawPeer peer(folder.bytes("client"));
  const QByteArray call = header(2) + archiveOf({QStringLiteral("do")});
  const QByteArray path = folder.bytes("server");
  const pid_t child = fork();
  if (child == 0) {
    _exit(setresuid(kNobody, kNobody, kNobody) == 0 && peer.send(call, path) ? 0 : 1);
  }
  int status = 0;
  waitpid(child, &status, 0);
  ASSERT_EQ(status, 0);
  LogCollector log;
  server->serveInput();
  EXPECT_TRUE(echo.performed.empty());
  EXPECT_EQ(LogCollector::lines(), Lines{"dropped a datagram from user 65534"});
}

/// A peer that never reads holds up a long call, until its end makes a failure of it.
TEST(Channel, IsFreedByTheEndOfAPeerThatNeverReads) {
  const SocketFolder folder;
  const auto client = clientOf(folder);
  auto deaf = std::make_unique<RawPeer>(folder.bytes("server"));
  Beside ending([&] {
    deaf->awaitInput();
    deaf.reset();
  });
  EXPECT_EQ(failureOf([&] { client->forwardInvocation(u"echo:", {QString(300000, u'x')}); }),
            "VTIPCSend: error occurred trying to send datagram, error: Connection refused (POSIX 111)");
}

TEST(Channel, WaitsForRoomAsLongAsItTakes) {
  const SocketFolder folder;
  const auto client = clientOf(folder);
  client->setTimeLimits({.send = std::chrono::milliseconds(20)});
  RawPeer peer(folder.bytes("server"));
  const QString text(300000, u'x');
  QByteArray gathered;
  Beside reading([&] {
    // Longer than the limit of many single tries; whatever the time, everything arrives.
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    QByteArray datagram;
    do {
      datagram = peer.receive();
      gathered += datagram.mid(4);
    } while (datagram.size() > 4 && (datagram.at(3) & 2) == 0);
    peer.send(reply("echo:", "yes"), folder.bytes("client"));
  });
  EXPECT_EQ(client->forwardInvocation(u"echo:", {text}), ArchiveValue(QStringLiteral("yes")));
  EXPECT_EQ(gathered, archiveOf({QStringLiteral("echo:"), text}));
}

}  // namespace
}  // namespace pendra
