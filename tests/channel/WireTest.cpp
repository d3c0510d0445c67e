#include <QtEndian>

#include "Fixtures.h"
#include "support/Rows.h"

namespace pendra {
namespace {

/// How an archive of a size is cut: header word and payload size of each datagram.
struct Slicing {
  const char* name;
  qsizetype size;
  std::vector<std::pair<quint32, qsizetype>> datagrams;
};
void PrintTo(const Slicing& row, std::ostream* out) { *out << row.name; }

class Slices : public testing::TestWithParam<Slicing> {};

TEST_P(Slices, AreCutByTheRuleOfTheWire) {
  const QByteArray archive(GetParam().size, 'x');
  for (const bool isReply : {false, true}) {
    std::vector<std::pair<quint32, qsizetype>> cut;
    for (const Datagram& datagram : datagramsOf(archive, isReply)) {
      const auto bytes = datagram.header.bytes();
      const QByteArray word(bytes.data(), bytes.size());
      EXPECT_EQ(word, header(static_cast<quint32>(cut.size()) * 4 + (datagram.header.lastDatagram ? 2 : 0) +
                             isReply));
      EXPECT_EQ(DatagramHeader::of(word), datagram.header);
      cut.emplace_back(qFromBigEndian<quint32>(word.constData()) - isReply, datagram.payload.size());
    }
    EXPECT_EQ(cut, GetParam().datagrams);
  }
}

INSTANTIATE_TEST_SUITE_P(Sizes, Slices,
                         testing::Values(Slicing{"Nothing", 0, {}}, Slicing{"One", 1, {{2, 1}}},
                                         Slicing{"OneLessThanASlice", 30719, {{2, 30719}}},
                                         Slicing{"ASliceIsLost", 30720, {{2, 0}}},
                                         Slicing{"OneMoreThanASlice", 30721, {{0, 30720}, {6, 1}}},
                                         Slicing{"TwoSlicesAndOneIsLost", 61440, {{0, 30720}, {6, 0}}},
                                         Slicing{
                                             "Four", 92161, {{0, 30720}, {4, 30720}, {8, 30720}, {14, 1}}}),
                         RowName());

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
    testing::Values(Gathering{"OrderOfArrival", {{0, false}, {9, false}, {3, true}}, {"-", "-", "abc"}},
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
  EXPECT_EQ(gatherer.add(slice, 1, false).error().text.toStdString(), kNil);
}

/// Every length of a text around two slices is written to a length that arrives.
TEST(Wire, AnArchiveIsNeverAnExactMultipleOfASlice) {
  int padded = 0;
  for (qsizetype length = 2 * 30720 - 700; length < 2 * 30720 - 100; ++length) {
    const ArchiveValue value = ArchiveValue::Array{QStringLiteral("submitTime:"), QString(length, u'x')};
    const QByteArray archive = writeArchive(value).value();
    ASSERT_NE(archive.size() % 30720, 0) << length;
    const auto before =
        writeArchive(ArchiveValue::Array{QStringLiteral("submitTime:"), QString(length - 1, u'x')});
    if (archive.size() - before.value().size() == 1) continue;
    ++padded;
    EXPECT_EQ(readArchive(archive).value(), value);
  }
  EXPECT_GE(padded, 1) << "one of the lengths would have been an exact multiple";
}

}  // namespace
}  // namespace pendra
