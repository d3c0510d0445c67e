#include <QtEndian>

#include "Fixtures.h"

namespace pendra {
namespace {

TEST(Wire, SlicesAreCutByItsRule) {
  // Of each archive's size, the header word and the payload's size of each datagram.
  const std::pair<qsizetype, std::vector<std::pair<quint32, qsizetype>>> rows[] = {
      {0, {}},
      {1, {{2, 1}}},
      {30719, {{2, 30719}}},
      {30720, {{2, 0}}},  // a slice is lost
      {30721, {{0, 30720}, {6, 1}}},
      {61440, {{0, 30720}, {6, 0}}},
      {92161, {{0, 30720}, {4, 30720}, {8, 30720}, {14, 1}}}};
  for (const auto& [size, datagrams] : rows) {
    for (const bool isReply : {false, true}) {
      std::vector<std::pair<quint32, qsizetype>> cut;
      for (const Datagram& datagram : datagramsOf(QByteArray(size, 'x'), isReply)) {
        const auto bytes = datagram.header.bytes();
        const QByteArray word(bytes.data(), bytes.size());
        EXPECT_EQ(DatagramHeader::of(word), datagram.header);
        cut.emplace_back(qFromBigEndian<quint32>(word.constData()) - isReply, datagram.payload.size());
      }
      EXPECT_EQ(cut, datagrams) << size;
    }
  }
}

constexpr const char* kNotNil = "fragment gather buffer is not nil";
constexpr const char* kNil = "fragment gather buffer is nil";

TEST(Gatherer, JoinsInTheOrderOfArrivalOrComplains) {
  // Each datagram's sequence and whether it is the last; "-" for more to come, else the message or the
  // failure.
  const std::pair<std::vector<std::pair<quint32, bool>>, std::vector<std::string>> rows[] = {
      {{{0, false}, {9, false}, {3, true}}, {"-", "-", "abc"}},
      {{{0, false}, {0, true}, {1, true}}, {"-", "b", "ac"}},  // a message within another
      {{{0, false}, {0, false}, {1, true}}, {"-", kNotNil, "bc"}},
      {{{1, false}, {0, true}}, {kNil, "b"}},
      {{{1, true}, {0, false}, {1, true}}, {kNotNil, "-", "bc"}}};
  for (const auto& [slices, expected] : rows) {
    DatagramGatherer gatherer;
    std::vector<std::string> results;
    char content = 'a';
    for (const auto& [sequence, last] : slices) {
      const auto added = gatherer.add(QByteArrayView(&content, 1), sequence, last);
      ++content;
      if (!added) results.push_back(added.error().text.toStdString());
      if (added) results.push_back(added.value() ? added.value()->toStdString() : "-");
    }
    EXPECT_EQ(results, expected);
  }
}

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
