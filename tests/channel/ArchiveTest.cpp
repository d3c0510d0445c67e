#include <limits>

#include "Fixtures.h"

namespace pendra {
namespace {

ArchiveValue row(const char* name, const char* id) {
  return ListRow{.name = QString::fromUtf8(name), .id = QString::fromUtf8(id), .parent = {}};
}

ArchiveValue nested(int depth) {
  ArchiveValue value = ArchiveValue::Array{};
  for (int i = 1; i < depth; ++i) value = ArchiveValue::Array{value};
  return value;
}

TEST(Archive, IsReadAsWhatWasWritten) {
  const QList<ArchiveValue> values{NilMarker(),
                                   ArchiveValue::Array{},
                                   QStringLiteral(""),
                                   QStringLiteral("$null"),
                                   QString(15, u'x'),
                                   QStringLiteral("Müller ✓ \U0001F600"),
                                   QString(70000, u'ü'),
                                   QString(QChar(0xd800)),
                                   qint64{-1},
                                   std::numeric_limits<qint64>::min(),
                                   std::numeric_limits<qint64>::max(),
                                   qint64{0xffffffff},
                                   0.1,
                                   true,
                                   false,
                                   ArchiveValue::Array{row("A", "1"), row("A", "1"), row("B", "2")},
                                   nested(kArchiveDepth - 1)};
  for (qsizetype at = 0; at < values.size(); ++at) {
    const ArchiveValue message = ArchiveValue::Array{QStringLiteral("sel"), values[at]};
    const auto archive = writeArchive(message);
    ASSERT_TRUE(archive) << at;
    const auto read = readArchive(archive.value());
    ASSERT_TRUE(read) << at << ": " << read.error().text.toStdString();
    EXPECT_EQ(read.value(), message) << at;
  }
  EXPECT_FALSE(writeArchive(nested(kArchiveDepth + 1)));
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
