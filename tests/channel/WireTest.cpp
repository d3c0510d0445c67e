#include <gtest/gtest.h>

#include "Peers.h"
#include "support/Rows.h"

namespace pendra {
namespace {

/// What leaves the socket for an archive of a size: header word and payload size of each datagram.
struct Slicing {
  const char* name;
  qsizetype size;
  std::vector<std::pair<quint32, qsizetype>> datagrams;
};
void PrintTo(const Slicing& row, std::ostream* out) { *out << row.name; }

class Wire : public testing::TestWithParam<Slicing> {};

TEST_P(Wire, CarriesAnArchiveByteByByte) {
  const SocketFolder folder;
  Echo echo;
  const auto server = serverOf(folder, echo);
  QByteArray archive(GetParam().size, '\0');
  for (qsizetype i = 0; i < archive.size(); ++i) archive[i] = static_cast<char>(i * 7 + i / 251);
  for (const bool isReply : {false, true}) {
    RawPeer peer(folder.bytes("client"));
    const auto address = IPCAddress::forPath(folder.bytes("client"));
    Beside sending([&] { EXPECT_TRUE(server->fragmentAndSendArchive(archive, address, isReply)); });
    qsizetype at = 0;
    for (const auto& [word, size] : GetParam().datagrams) {
      EXPECT_EQ(peer.receive(), header(word + (isReply ? 1 : 0)) + archive.mid(at, size)) << word;
      at += size;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Sizes, Wire,
                         testing::Values(Slicing{"Nothing", 0, {}}, Slicing{"One", 1, {{2, 1}}},
                                         Slicing{"OneLessThanASlice", 30719, {{2, 30719}}},
                                         Slicing{"ASliceIsLost", 30720, {{2, 0}}},
                                         Slicing{"OneMoreThanASlice", 30721, {{0, 30720}, {6, 1}}},
                                         Slicing{"TwoSlicesAndOneIsLost", 61440, {{0, 30720}, {6, 0}}},
                                         Slicing{
                                             "Four", 92161, {{0, 30720}, {4, 30720}, {8, 30720}, {14, 1}}}),
                         RowName());

/// The other direction: the same sizes, put on the socket by hand, arrive as one message.
TEST(WireIn, JoinsTheSlicesOfAForeignSender) {
  const SocketFolder folder;
  const auto client = clientOf(folder);
  RawPeer peer(folder.bytes("server"));
  for (const qsizetype length : {5, 30000, 30720, 61000, 100000}) {
    const ArchiveValue::Array reply{QStringLiteral("echo:"), QString(length, u'y')};
    const QByteArray archive = archiveOf(reply);
    Beside answering([&] {
      QByteArray call;
      while ((call = peer.receive()).at(3) % 4 != 2) {
      }
      for (qsizetype at = 0; at < archive.size(); at += 30720) {
        const bool last = at + 30720 >= archive.size();
        const auto word = static_cast<quint32>(at / 30720 * 4 + (last ? 3 : 1));
        EXPECT_TRUE(peer.send(header(word) + archive.mid(at, 30720), folder.bytes("client")));
      }
    });
    EXPECT_EQ(client->forwardInvocation(u"echo:", {QString()}), reply[1]);
  }
}

TEST(WireOut, ACallAndAReplyAreArchivesOfTheirArrays) {
  const SocketFolder folder;
  Echo echo;
  const auto server = serverOf(folder, echo);
  RawPeer peer(folder.bytes("client"));
  const QByteArray archive = archiveOf({QStringLiteral("echo:"), QStringLiteral("text")});
  ASSERT_TRUE(peer.send(header(2) + archive, folder.bytes("server")));
  server->serveInput();
  EXPECT_EQ(peer.receive(), header(3) + archive);
}

/// What the gatherer makes of a run of datagrams; each is named by its sequence and whether it is the last.
struct Gathering {
  const char* name;
  std::vector<std::pair<quint32, bool>> slices;
  std::vector<const char*> results;  ///< "-" for more to come, else the message or the failure
};
void PrintTo(const Gathering& row, std::ostream* out) { *out << row.name; }

class Gatherer : public testing::TestWithParam<Gathering> {};

TEST_P(Gatherer, JoinsOrComplains) {
  DatagramGatherer gatherer;
  std::vector<std::string> results;
  char content = 'a';
  for (const auto& [sequence, last] : GetParam().slices) {
    const auto added = gatherer.add(QByteArrayView(&content, 1), sequence, last);
    ++content;
    if (!added) results.push_back(added.error().text.toStdString());
    if (added) results.push_back(added.value() ? added.value()->toStdString() : "-");
  }
  EXPECT_EQ(results, std::vector<std::string>(GetParam().results.begin(), GetParam().results.end()));
}

constexpr const char* kNotNil = "fragment gather buffer is not nil";
constexpr const char* kNil = "fragment gather buffer is nil";

INSTANTIATE_TEST_SUITE_P(
    Runs, Gatherer,
    testing::Values(Gathering{"Single", {{0, true}}, {"a"}},
                    Gathering{"Two", {{0, false}, {1, true}}, {"-", "ab"}},
                    Gathering{"OrderOfArrival", {{0, false}, {9, false}, {3, true}}, {"-", "-", "abc"}},
                    Gathering{"SingleWithinAnother", {{0, false}, {0, true}, {1, true}}, {"-", "b", "ac"}},
                    Gathering{
                        "ANewMessageBeginsAnew", {{0, false}, {0, false}, {1, true}}, {"-", kNotNil, "bc"}},
                    Gathering{"MiddleOfNothing", {{1, false}, {0, true}}, {kNil, "b"}},
                    Gathering{"EndOfNothing", {{1, true}, {0, false}, {1, true}}, {kNotNil, "-", "bc"}}),
    RowName());

TEST(Gatherer, GivesUpAMessageThatNeverEnds) {
  DatagramGatherer gatherer;
  const QByteArray slice(30720, 'x');
  quint32 sequence = 0;
  auto added = gatherer.add(slice, sequence, false);
  while (added && sequence < 10000) added = gatherer.add(slice, ++sequence, false);
  EXPECT_EQ(sequence, kMessageLimit / 30720);
  EXPECT_TRUE(gatherer.fragmentBuffer().isNull());
}

}  // namespace
}  // namespace pendra
