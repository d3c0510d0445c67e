#include "ArchiveScan.h"

#include "channel/Archive.h"
#include "platform/Text.h"

namespace pendra {
namespace {

using Kind = PropertyListReader::Kind;

constexpr std::size_t kKeptShapes = 16;
constexpr qsizetype kBlockOverhead = 32;

/// The keys in the order in which the scan numbers them.
constexpr std::array<QStringView, 7> kKeys{u"$class",
                                           u"$classname",
                                           archive_keys::kArray[0],
                                           u"NS.string",
                                           archive_keys::kListRow[0],
                                           archive_keys::kListRow[1],
                                           archive_keys::kListRow[2]};

/// What a class is to the reader, beside those of the format: a text that stands as an object.
constexpr quint32 kTextClass = kArchiveClassCount;

std::optional<quint32> meaningOf(const PropertyListReader& list, const PropertyListReader::Object& name) {
  for (quint32 index = 0; index < kArchiveClassCount; ++index)
    if (list.isText(name, kArchiveClasses[index].name)) return index;
  if (list.isText(name, u"NSMutableArray")) return kArrayClass;
  if (list.isText(name, u"NSString") || list.isText(name, u"NSMutableString")) return kTextClass;
  return {};
}

}  // namespace

bool ArchiveScan::fail(const QString& why) {
  if (failure_.isEmpty()) failure_ = why;
  return false;
}

bool ArchiveScan::spend(qsizetype bytes) {
  table_.memory += bytes;
  return table_.memory <= kArchiveMemory || fail(QStringLiteral("the archive is too large"));
}

/// Objects of an honest list do not overlap, so their parts together are no more than its bytes.
bool ArchiveScan::work(qsizetype steps) {
  workLeft_ -= steps;
  return workLeft_ >= 0 || fail(QStringLiteral("the objects of the archive overlap"));
}

bool ArchiveScan::run(qsizetype size) {
  if (size > kArchiveMemory) return fail(QStringLiteral("the archive is too large"));
  workLeft_ = 4 * size;
  if (!readTop()) return fail(QStringLiteral("not a keyed archive"));
  const auto count = static_cast<quint32>(objects_.count);
  if (!spend(count * static_cast<qsizetype>(sizeof(ArchiveNode) + 2 * sizeof(quint32)))) return false;
  table_.nodes.resize(count);
  table_.parts.reserve(2 * std::size_t{count});
  shapes_.reserve(kKeptShapes);
  for (quint32 number = 1; number < count; ++number)
    if (!readNode(number)) return fail(QStringLiteral("the archive is damaged"));
  return follow(table_.root, 1) || fail(QStringLiteral("the archive is damaged"));
}

/// The reference of a key's value; one that leads nowhere when the dictionary lacks the key.
quint64 ArchiveScan::referenceFor(const Object& dictionary, QStringView key) const {
  for (qsizetype i = 0; i < dictionary.count; ++i)
    if (list_.isText(list_.object(list_.reference(dictionary, i)), key))
      return list_.reference(dictionary, dictionary.count + i);
  return list_.objectCount();
}

PropertyListReader::Object ArchiveScan::valueFor(const Object& dictionary, QStringView key) const {
  return list_.object(referenceFor(dictionary, key));
}

bool ArchiveScan::readTop() {
  const auto dictionary = list_.object(list_.top());
  if (dictionary.kind != Kind::Dictionary || !work(dictionary.count)) return false;
  const auto version = valueFor(dictionary, u"$version");
  const auto archiver = valueFor(dictionary, u"$archiver");
  const auto top = valueFor(dictionary, u"$top");
  const auto objects = valueFor(dictionary, u"$objects");
  if (version.kind != Kind::Integer || list_.integer(version) != 100000) return false;
  if (!list_.isText(archiver, u"NSKeyedArchiver")) return false;
  if (objects.kind != Kind::Array || objects.count < 1) return false;
  if (top.kind != Kind::Dictionary || !work(top.count)) return false;
  objects_ = objects;
  const auto null = objectNumbered(0);
  if (!list_.isText(null, u"$null")) return false;
  table_.root = numberAt(referenceFor(top, u"root"));
  return table_.root != kNoNumber;
}

PropertyListReader::Object ArchiveScan::objectNumbered(quint32 number) const {
  return list_.object(list_.reference(objects_, number));
}

/// The number that a reference object holds; none when it is no reference or leads out of the archive.
quint32 ArchiveScan::numberAt(quint64 reference) const {
  const quint64 number = list_.uidAt(reference);
  return number < static_cast<quint64>(objects_.count) ? static_cast<quint32>(number) : kNoNumber;
}

/// Rows mostly have their keys in one order, so the last shapes are kept.
const ArchiveScan::Shape* ArchiveScan::shapeOf(const Object& dictionary) {
  const QByteArrayView bytes = list_.keyBytes(dictionary);
  for (const Shape& shape : shapes_)
    if (bytes == shape.keys) return &shape;
  if (!work(dictionary.count)) return nullptr;
  Shape shape{.keys = bytes.toByteArray(), .positions = {}};
  shape.positions.fill(-1);
  for (qsizetype i = dictionary.count; i-- > 0;) {
    const auto name = list_.object(list_.reference(dictionary, i));
    if (name.kind != Kind::Text) return nullptr;
    for (std::size_t key = 0; key < kKeyCount; ++key)
      if (list_.isText(name, kKeys[key])) shape.positions[key] = i;
  }
  if (shapes_.size() < kKeptShapes && bytes.size() <= 1024) return &shapes_.emplace_back(std::move(shape));
  otherShape_ = std::move(shape);
  return &otherShape_;
}

bool ArchiveScan::readNode(quint32 number) {
  ArchiveNode& node = table_.nodes[number];
  if (node.kind == NodeKind::Class) return true;
  const quint64 index = list_.reference(objects_, number);
  const auto object = list_.object(index);
  if (!object) return false;
  if (object.kind == Kind::Dictionary) {
    const Shape* shape = shapeOf(object);
    if (!shape) return false;
    if (shape->positions[kClassName] >= 0) return readClass(number, object, *shape);
    return shape->positions[kClass] < 0 || readInstance(object, *shape, node);
  }
  node.first = static_cast<quint32>(index);
  if (object.kind == Kind::Text) readText(object, node);
  if (object.kind == Kind::Real || object.kind == Kind::Boolean ||
      (object.kind == Kind::Integer && list_.integer(object)))
    node.kind = NodeKind::Number;
  return true;
}

bool ArchiveScan::readClass(quint32 number, const Object& dictionary, const Shape& shape) {
  const auto name = list_.object(list_.reference(dictionary, dictionary.count + shape.positions[kClassName]));
  if (name.kind != Kind::Text) return false;
  const auto meaning = meaningOf(list_, name);
  if (!meaning) return fail(formatted(u"class %@ is not permitted", {list_.text(name).left(100)}));
  table_.nodes[number].kind = NodeKind::Class;
  table_.nodes[number].first = *meaning;
  return true;
}

bool ArchiveScan::readInstance(const Object& dictionary, const Shape& shape, ArchiveNode& node) {
  const auto number = numberAt(list_.reference(dictionary, dictionary.count + shape.positions[kClass]));
  if (number == kNoNumber) return false;
  if (table_.nodes[number].kind != NodeKind::Class) {
    const auto object = objectNumbered(number);
    if (object.kind != Kind::Dictionary) return false;
    const Shape* classShape = shapeOf(object);
    if (!classShape || classShape->positions[kClassName] < 0 || !readClass(number, object, *classShape))
      return false;
    // A shape is good until the next one is asked for.
    const Shape* again = shapeOf(dictionary);
    return again && readInstance(dictionary, *again, node);
  }
  switch (table_.nodes[number].first) {
    case kArrayClass:
      return readArray(dictionary, shape, node);
    case kTextClass:
      return readTextObject(dictionary, shape, node);
    case kListRowClass:
      return readRow(dictionary, shape, node);
    default:
      node.kind = NodeKind::NilMarker;
      return true;
  }
}

/// Room for the numbers of a node's parts; null when it costs too much.
quint32* ArchiveScan::addParts(ArchiveNode& node, NodeKind kind, qsizetype count) {
  if (!spend(2 * count * static_cast<qsizetype>(sizeof(quint32)))) return nullptr;
  node.kind = kind;
  node.first = static_cast<quint32>(table_.parts.size());
  node.count = static_cast<quint32>(count);
  table_.parts.resize(table_.parts.size() + node.count);
  return table_.parts.data() + node.first;
}

bool ArchiveScan::readArray(const Object& dictionary, const Shape& shape, ArchiveNode& node) {
  if (shape.positions[kObjects] < 0) return false;
  const auto elements =
      list_.object(list_.reference(dictionary, dictionary.count + shape.positions[kObjects]));
  if (elements.kind != Kind::Array || !work(elements.count)) return false;
  quint32* part = addParts(node, NodeKind::Array, elements.count);
  if (!part) return false;
  for (qsizetype i = 0; i < elements.count; ++i) {
    const auto number = numberAt(list_.reference(elements, i));
    if (number == kNoNumber) return false;
    *part++ = number;
  }
  return true;
}

bool ArchiveScan::readRow(const Object& dictionary, const Shape& shape, ArchiveNode& node) {
  quint32* part = addParts(node, NodeKind::Row, archive_keys::kListRow.size());
  if (!part) return false;
  for (std::size_t key = kFirstRowKey; key < kKeyCount; ++key, ++part) {
    if (shape.positions[key] < 0) continue;
    const auto number = numberAt(list_.reference(dictionary, dictionary.count + shape.positions[key]));
    if (number == kNoNumber) return false;
    *part = number;
  }
  return true;
}

void ArchiveScan::readText(const Object& text, ArchiveNode& node) {
  node.kind = NodeKind::Text;
  node.wide = text.wide;
  node.first = static_cast<quint32>(text.content);
  node.count = static_cast<quint32>(text.count);
}

/// The plain text of a text object stands in it, or is an object of its own.
bool ArchiveScan::readTextObject(const Object& dictionary, const Shape& shape, ArchiveNode& node) {
  if (shape.positions[kString] < 0) return false;
  quint64 place = list_.reference(dictionary, dictionary.count + shape.positions[kString]);
  if (const auto number = numberAt(place); number != kNoNumber) place = list_.reference(objects_, number);
  const auto text = list_.object(place);
  if (text.kind != Kind::Text) return false;
  readText(text, node);
  return true;
}

/// Walks what the root reaches, and finds cycles, depths, and objects that are no value.
bool ArchiveScan::follow(quint32 number, int depth) {
  if (number == 0) return true;
  ArchiveNode& node = table_.nodes[number];
  if (node.onPath) return fail(QStringLiteral("the archive holds a cycle"));
  if (depth - 1 + node.height > kArchiveDepth) return fail(QStringLiteral("the archive is nested too deep"));
  if (node.seen) return node.shared > 0 || share(node);
  node.seen = true;
  switch (node.kind) {
    case NodeKind::Text:
      return spend(kBlockOverhead + qsizetype{node.count} * 2);
    case NodeKind::Number:
    case NodeKind::NilMarker:
      return true;
    case NodeKind::Array:
      return spend(kBlockOverhead + node.count * static_cast<qsizetype>(sizeof(ArchiveValue))) &&
             followParts(node, depth);
    case NodeKind::Row:
      return followParts(node, depth) && holdsTexts(node);
    default:
      return fail(QStringLiteral("the archive holds an object that is no value"));
  }
}

bool ArchiveScan::holdsTexts(const ArchiveNode& row) {
  for (quint32 i = 0; i < row.count; ++i) {
    const quint32 part = table_.parts[row.first + i];
    const NodeKind kind = table_.nodes[part].kind;
    if (part != 0 && kind != NodeKind::Text && kind != NodeKind::NilMarker)
      return fail(QStringLiteral("a field of a row is no text"));
  }
  return true;
}

/// A value that several hold is kept once more while building.
bool ArchiveScan::share(ArchiveNode& node) {
  node.shared = ++table_.sharedCount;
  return spend(2 * static_cast<qsizetype>(sizeof(ArchiveValue)));
}

bool ArchiveScan::followParts(ArchiveNode& node, int depth) {
  if (depth > kArchiveDepth) return fail(QStringLiteral("the archive is nested too deep"));
  node.onPath = true;
  quint8 height = 0;
  for (quint32 i = 0; i < node.count; ++i) {
    const quint32 part = table_.parts[node.first + i];
    if (!follow(part, depth + 1)) return false;
    height = std::max(height, table_.nodes[part].height);
  }
  node.onPath = false;
  node.height = static_cast<quint8>(height + 1);
  return true;
}

}  // namespace pendra
