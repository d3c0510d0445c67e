#include "channel/KeyedUnarchiver.h"

#include <QtEndian>
#include <array>

#include "ArchiveScan.h"
#include "TextSlab.h"

namespace pendra {

/// The bytes of an archive and what a scan found in them.
struct ArchiveContent {
  QByteArray bytes;
  PropertyListReader list;
  std::vector<const ArchiveClass*> recordClasses;
  ArchiveTable table;

  [[nodiscard]] std::span<const quint32> partsOf(const ArchiveNode& node) const {
    return std::span(table.parts).subspan(node.first, node.count);
  }
  [[nodiscard]] const ArchiveNode& node(quint32 number) const { return table.nodes[number]; }
  [[nodiscard]] const ArchiveNode& root() const { return node(table.root); }
  /// The number of an element of the root, 0 beyond its end.
  [[nodiscard]] quint32 element(qsizetype i) const {
    return root().kind == ArchiveNode::Kind::Array && i < root().count
               ? partsOf(root())[static_cast<std::size_t>(i)]
               : 0;
  }
};

namespace {

using NodeKind = ArchiveNode::Kind;

/// Makes the texts of an archive.
class TextBuilder {
 public:
  explicit TextBuilder(const ArchiveContent& content) : list_(content.list) {}

  QString build(const ArchiveNode& node) {
    const char* const bytes = list_.bytesAt(node.first);
    return slab_.text(node.count, [&](char16_t* to) {
      if (node.wide) return qFromBigEndian<quint16>(bytes, node.count, to);
      for (quint32 i = 0; i < node.count; ++i) to[i] = static_cast<unsigned char>(bytes[i]);
    });
  }

 private:
  const PropertyListReader& list_;
  TextSlab slab_;
};

/// Builds values. A value that several hold is built once and shared.
class ValueBuilder {
 public:
  explicit ValueBuilder(const ArchiveContent& content)
      : content_(content), texts_(content), shared_(content.table.sharedCount) {}

  ArchiveValue build(quint32 number) {
    if (number == 0) return {};
    const ArchiveNode& node = content_.node(number);
    if (node.shared == 0) return make(node);
    if (shared_[node.shared - 1].isNil()) {
      ArchiveValue made = make(node);
      shared_[node.shared - 1] = std::move(made);
    }
    return shared_[node.shared - 1];
  }

 private:
  ArchiveValue make(const ArchiveNode& node) {
    switch (node.kind) {
      case NodeKind::Text:
        return texts_.build(node);
      case NodeKind::Number:
        return number(content_.list.object(node.first));
      case NodeKind::Array:
        return parts(node);
      case NodeKind::Record:
        return ArchiveRecord{content_.recordClasses[node.recordClass], parts(node)};
      default:
        return IPCNilArg::nilArg();
    }
  }

  ArchiveValue number(const PropertyListReader::Object& object) const {
    if (object.kind == PropertyListReader::Kind::Real) return content_.list.real(object);
    if (object.kind == PropertyListReader::Kind::Boolean) return object.wide;
    return content_.list.integer(object).value_or(0);
  }

  QList<ArchiveValue> parts(const ArchiveNode& node) {
    QList<ArchiveValue> values;
    values.reserve(node.count);
    for (const quint32 part : content_.partsOf(node)) values.push_back(build(part));
    return values;
  }

  const ArchiveContent& content_;
  TextBuilder texts_;
  std::vector<ArchiveValue> shared_;
};

/// Builds the fields of records that hold nothing but texts.
class RecordBuilder {
 public:
  explicit RecordBuilder(const ArchiveContent& content)
      : content_(content), texts_(content), shared_(content.table.sharedCount) {}

  /// False when the field is another thing than a text or nil.
  [[nodiscard]] bool build(quint32 number, std::optional<QString>& field) {
    const ArchiveNode& node = content_.node(number);
    if (number == 0 || node.kind == NodeKind::NilArg) {
      field.reset();
      return true;
    }
    if (node.kind != NodeKind::Text) return false;
    if (node.shared == 0) {
      field = texts_.build(node);
      return true;
    }
    QString& shared = shared_[node.shared - 1];
    if (shared.isNull()) shared = texts_.build(node);
    field = shared;
    return true;
  }

 private:
  const ArchiveContent& content_;
  TextBuilder texts_;
  std::vector<QString> shared_;
};

Error archiveError(const QString& why) {
  return {.domain = QStringLiteral("archive"), .code = 0, .text = why};
}

}  // namespace

KeyedUnarchiver::KeyedUnarchiver(std::unique_ptr<const ArchiveContent> content)
    : content_(std::move(content)) {}
KeyedUnarchiver::KeyedUnarchiver(KeyedUnarchiver&&) noexcept = default;
KeyedUnarchiver& KeyedUnarchiver::operator=(KeyedUnarchiver&&) noexcept = default;
KeyedUnarchiver::~KeyedUnarchiver() = default;

Result<KeyedUnarchiver> KeyedUnarchiver::initForReadingFromData(QByteArray archive,
                                                                const SupportedClasses& classes,
                                                                qsizetype memoryLimit) {
  auto list = PropertyListReader::of(archive);
  if (!list) return archiveError(QStringLiteral("not a property list"));
  ArchiveScan scan(*list, classes, memoryLimit);
  if (!scan.run(archive.size())) return archiveError(scan.failure());
  return KeyedUnarchiver(std::make_unique<const ArchiveContent>(
      ArchiveContent{std::move(archive), *list, classes.records, scan.takeTable()}));
}

qsizetype KeyedUnarchiver::memory() const { return content_->bytes.size() + content_->table.memory; }

ArchiveValue KeyedUnarchiver::value() const { return ValueBuilder(*content_).build(content_->table.root); }

bool KeyedUnarchiver::isArray() const {
  return content_->table.root != 0 && content_->root().kind == NodeKind::Array;
}

qsizetype KeyedUnarchiver::count() const { return isArray() ? content_->root().count : 0; }

bool KeyedUnarchiver::isNil(qsizetype i) const { return content_->element(i) == 0; }

bool KeyedUnarchiver::isNilArg(qsizetype i) const {
  return content_->node(content_->element(i)).kind == NodeKind::NilArg;
}

bool KeyedUnarchiver::isText(qsizetype i, QStringView text) const {
  const ArchiveNode& node = content_->node(content_->element(i));
  return node.kind == NodeKind::Text &&
         content_->list.isText({PropertyListReader::Kind::Text, node.wide, node.first, node.count}, text);
}

ArchiveValue KeyedUnarchiver::element(qsizetype i) const {
  return ValueBuilder(*content_).build(content_->element(i));
}

bool KeyedUnarchiver::takeRecords(qsizetype i, const ArchiveClass& recordClass, RecordTaker& taker) const {
  const ArchiveNode& list = content_->node(content_->element(i));
  if (list.kind != NodeKind::Array) return false;
  taker.expect(list.count);
  RecordBuilder builder(*content_);
  std::vector<std::optional<QString>> fields(static_cast<std::size_t>(recordClass.keys.size()));
  for (const quint32 number : content_->partsOf(list)) {
    const ArchiveNode& record = content_->node(number);
    if (record.kind != NodeKind::Record || content_->recordClasses[record.recordClass] != &recordClass)
      return false;
    auto field = fields.begin();
    for (const quint32 part : content_->partsOf(record))
      if (!builder.build(part, *field++)) return false;
    taker.take(fields);
  }
  return true;
}

Result<ArchiveValue> unarchivedValue(QByteArrayView archive, const SupportedClasses& classes,
                                     qsizetype memoryLimit) {
  const auto read = KeyedUnarchiver::initForReadingFromData(
      QByteArray::fromRawData(archive.data(), archive.size()), classes, memoryLimit);
  if (!read) return read.error();
  return read.value().value();
}

}  // namespace pendra
