#include <limits>

#include "Fixtures.h"
#include "support/Rows.h"

namespace pendra {
namespace {

ArchiveValue row(const char* name, const char* id) {
  return ListRow{.name = QString::fromUtf8(name), .id = QString::fromUtf8(id), .parent = {}};
}

struct Message {
  const char* name;
  ArchiveValue value;
};
void PrintTo(const Message& message, std::ostream* out) { *out << message.name; }

class ArchiveRoundTrip : public testing::TestWithParam<Message> {};

TEST_P(ArchiveRoundTrip, GivesTheSameValue) {
  const ArchiveValue message = ArchiveValue::Array{QStringLiteral("sel"), GetParam().value};
  const auto archive = writeArchive(message);
  ASSERT_TRUE(archive);
  const auto read = readArchive(archive.value());
  ASSERT_TRUE(read) << read.error().text.toStdString();
  EXPECT_EQ(read.value(), message);
}

ArchiveValue nested(int depth) {
  ArchiveValue value = ArchiveValue::Array{};
  for (int i = 1; i < depth; ++i) value = ArchiveValue::Array{value};
  return value;
}

INSTANTIATE_TEST_SUITE_P(
    Values, ArchiveRoundTrip,
    testing::Values(Message{"NilMarker", NilMarker()}, Message{"Empty", ArchiveValue::Array{}},
                    Message{"EmptyText", QStringLiteral("")},
                    Message{"TextLikeNull", QStringLiteral("$null")}, Message{"Ascii15", QString(15, u'x')},
                    Message{"Wide", QStringLiteral("Müller ✓ \U0001F600")},
                    Message{"Long", QString(70000, u'ü')}, Message{"LoneSurrogate", QString(QChar(0xd800))},
                    Message{"Negative", qint64{-1}}, Message{"Least", std::numeric_limits<qint64>::min()},
                    Message{"Greatest", std::numeric_limits<qint64>::max()},
                    Message{"FourBytes", qint64{0xffffffff}}, Message{"Real", 0.1}, Message{"True", true},
                    Message{"False", false},
                    Message{"Records", ArchiveValue::Array{row("A", "1"), row("A", "1"), row("B", "2")}},
                    Message{"AsDeepAsCanBe", nested(kArchiveDepth - 1)}),
    RowName());

TEST(Archive, IsNotWrittenTooDeep) { EXPECT_FALSE(writeArchive(nested(kArchiveDepth + 1))); }

TEST(Archive, WritesEqualTextsAndNumbersOnce) {
  const QString name = QStringLiteral("Wilhelmine");
  const ArchiveValue::Array twice{name, name, qint64{7777}, qint64{7777}};
  const QByteArray archive = archiveOf(twice);
  EXPECT_EQ(archive.count("Wilhelmine"), 1);
  EXPECT_EQ(archive.count(QByteArray("\x11\x1e\x61")), 1);
}

TEST(Archive, IsReadOnlyWhenItIsGood) {
  const auto lines = linesOf(kPython + PENDRA_ARCHIVES);
  EXPECT_GT(lines.size(), 10);
  for (const QByteArray& line : lines) {
    const auto fields = line.split('\t');
    ASSERT_EQ(fields.size(), 3);
    const auto read = readArchive(QByteArray::fromHex(fields[2]));
    EXPECT_EQ(read ? "good" : read.error().text.toStdString(), fields[1].toStdString())
        << fields[0].toStdString();
  }
}

/// Every truncation and many single changes of a good archive: read or refused, never more.
TEST(Archive, SurvivesCutsAndChanges) {
  const QByteArray good = archiveOf({QStringLiteral("sel"), row("Müller", "1"), qint64{5}, 0.5, nested(3)});
  for (qsizetype size = 0; size < good.size(); ++size)
    EXPECT_FALSE(readArchive(QByteArrayView(good).first(size))) << size;
  int refused = 0;
  for (qsizetype at = 0; at < good.size(); ++at) {
    for (const char change : {'\x01', '\x10', '\xff'}) {
      QByteArray bad = good;
      bad[at] = static_cast<char>(bad[at] ^ change);
      if (!readArchive(bad)) ++refused;
    }
  }
  EXPECT_GT(refused, good.size());
}

}  // namespace
}  // namespace pendra
