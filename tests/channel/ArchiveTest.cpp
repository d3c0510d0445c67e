#include <limits>

#include "Fixtures.h"
#include "PropertyLists.h"
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

/// Archives made by hand, out of the layout of the property list.
struct Damaged {
  const char* name;
  std::vector<QByteArray> objects;  ///< of the archive, from number 1 on; the root is number 1
  const char* failure;
};
void PrintTo(const Damaged& row, std::ostream* out) { *out << row.name; }

class DamagedArchive : public testing::TestWithParam<Damaged> {};

TEST_P(DamagedArchive, IsRefusedWithItsReason) {
  const auto read = readArchive(handMade(GetParam().objects));
  ASSERT_FALSE(read);
  EXPECT_EQ(read.error().text.toStdString(), GetParam().failure);
}

constexpr const char* kDamaged = "the archive is damaged";

INSTANTIATE_TEST_SUITE_P(
    Objects, DamagedArchive,
    testing::Values(
        Damaged{"CycleOfOne", {array(2, {1}), classNamed("NSArray")}, "the archive holds a cycle"},
        Damaged{
            "CycleOfTwo", {array(2, {3}), classNamed("NSArray"), array(2, {1})}, "the archive holds a cycle"},
        Damaged{"PartOutOfRange", {array(2, {9}), classNamed("NSArray")}, kDamaged},
        Damaged{"ClassOutOfRange", {array(9, {})}, kDamaged},
        Damaged{"ClassIsAText", {array(2, {}), text("NSArray")}, kDamaged},
        Damaged{"ArrayWithoutParts", {object(2, {}), classNamed("NSArray")}, kDamaged},
        Damaged{"ForeignClass",
                {array(2, {3}), classNamed("NSArray"), object(4, {}), classNamed("NSDate")},
                "class NSDate is not permitted"},
        Damaged{"ForeignClassThatNothingUses",
                {array(2, {}), classNamed("NSArray"), classNamed("NSTask")},
                "class NSTask is not permitted"},
        Damaged{"ClassAsAValue",
                {array(2, {2}), classNamed("NSArray")},
                "the archive holds an object that is no value"},
        Damaged{"DataAsAValue",
                {array(2, {3}), classNamed("NSArray"), QByteArray("\x41x")},
                "the archive holds an object that is no value"},
        Damaged{"NumberInARow",
                {object(2, {{"name", uid(3)}}), classNamed("NameAndRecNumber"), QByteArray("\x10\x01", 2)},
                "a field of a row is no text"},
        Damaged{"TextObjectWithoutText",
                {array(2, {3}), classNamed("NSArray"), object(4, {}), classNamed("NSString")},
                kDamaged}),
    RowName());

TEST(Archive, ReadsOtherSpellings) {
  const auto archive = handMade({array(2, {3, 5, 0}), classNamed("NSMutableArray"),
                                 object(4, {{"NS.string", text("plain")}}), classNamed("NSMutableString"),
                                 object(4, {{"NS.string", uid(6)}, {"later", uid(200)}}), text("plain")});
  const auto read = readArchive(archive);
  ASSERT_TRUE(read) << read.error().text.toStdString();
  const QString plain = QStringLiteral("plain");
  EXPECT_EQ(read.value(), ArchiveValue(ArchiveValue::Array{plain, plain, ArchiveValue()}));
}

/// 63 arrays, each holding the next one twice: two to the power of 62 leaves if sharing were not kept.
TEST(Archive, KeepsSharedValuesShared) {
  std::vector<QByteArray> objects;
  const int depth = kArchiveDepth - 1;
  for (int i = 1; i <= depth; ++i) objects.push_back(array(depth + 2, {i + 1, i + 1}));
  objects.push_back(text("leaf"));
  objects.push_back(classNamed("NSArray"));
  const auto read = readArchive(handMade(objects));
  ASSERT_TRUE(read) << read.error().text.toStdString();
  EXPECT_EQ(read.value().as<ArchiveValue::Array>()->size(), 2);
}

/// The way down is longer over the second path to a shared array than over the first.
TEST(Archive, MeasuresTheDepthOverEveryPath) {
  for (const int depth : {kArchiveDepth, kArchiveDepth + 1}) {
    std::vector<QByteArray> objects{array(2, {depth + 1, 3}), classNamed("NSArray")};
    for (int i = 3; i <= depth; ++i) objects.push_back(array(2, {i + 1}));
    objects.push_back(array(2, {}));
    EXPECT_EQ(static_cast<bool>(readArchive(handMade(objects))), depth == kArchiveDepth) << depth;
  }
}

/// One text of a megabyte, said by a few bytes each time it is used, as an object of its own.
TEST(Archive, IsNotReadIntoMoreMemoryThanAllowed) {
  std::vector<QByteArray> objects{array(2, {}), classNamed("NSArray")};
  std::vector<int> parts;
  const QByteArray body = object(4, {{"NS.string", uid(5)}});
  objects.push_back(QByteArray("\x09"));
  objects.push_back(classNamed("NSString"));
  objects.push_back(text(QByteArray(1 << 20, 'x')));
  for (int i = 0; i < 60; ++i) {
    objects.push_back(body);
    parts.push_back(6 + i);
  }
  objects[0] = array(2, parts);
  const auto read = readArchive(handMade(objects));
  ASSERT_FALSE(read);
  EXPECT_EQ(read.error().text.toStdString(), "the archive is too large");
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
