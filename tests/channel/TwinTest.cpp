#include <QFile>

#include "Fixtures.h"

namespace pendra {
namespace {

TEST(Twin, ReadsWhatWeWriteAndIsReadInEverySpelling) {
  ArchiveValue::Array rows;
  for (int i = 0; i < 2000; ++i)
    rows.push_back(ListRow{.name = QStringLiteral("Müller & Söhne %1").arg(i / 2), .id = QString::number(i)});
  const ArchiveValue::Array message{QStringLiteral("submitTime:"),
                                    QStringLiteral("a"),
                                    QStringLiteral("a"),
                                    QStringLiteral("<✓/>"),
                                    NilMarker(),
                                    qint64{-5},
                                    qint64{1} << 40,
                                    0.25,
                                    true,
                                    ArchiveValue::Array{},
                                    rows.first(),
                                    rows};
  const QTemporaryDir folder;
  QFile archive(folder.filePath("archive"));
  ASSERT_TRUE(archive.open(QIODevice::WriteOnly) && archive.write(archiveOf(message).toHex()) > 0);
  archive.close();
  const auto lines = linesOf(kPython + PENDRA_TWIN + " <" + archive.fileName().toStdString());
  ASSERT_EQ(lines.size(), 2);
  EXPECT_TRUE(lines[0].startsWith(
      R"(["submitTime:", "a", "a", "<\u2713/>", null, -5, 1099511627776, 0.25, true, [], )"
      R"({"name": "M\u00fcller & S\u00f6hne 0", "id": "0", "parent": null}, [)"))
      << lines[0].first(200).toStdString();
  const auto read = readArchive(QByteArray::fromHex(lines[1]));
  ASSERT_TRUE(read) << read.error().text.toStdString();
  EXPECT_EQ(read.value(), ArchiveValue(message));
}

}  // namespace
}  // namespace pendra
