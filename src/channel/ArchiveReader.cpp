#include "ArchiveScan.h"
#include "channel/Archive.h"

namespace pendra {
namespace {

using NodeKind = ArchiveNode::Kind;

/// Builds values of a table in which no fault was found. A value that several hold is built once.
class ValueBuilder {
 public:
  ValueBuilder(const PropertyListReader& list, const ArchiveTable& table)
      : list_(list), table_(table), shared_(table.sharedCount) {}

  ArchiveValue build(quint32 number) {
    if (number == 0) return {};
    const ArchiveNode& node = table_.nodes[number];
    return node.shared == 0 ? make(node) : shared(node);
  }

 private:
  const ArchiveValue& shared(const ArchiveNode& node) {
    // Its parts may be shared in turn, but no part is the node itself.
    if (shared_[node.shared - 1].isNil()) shared_[node.shared - 1] = make(node);
    return shared_[node.shared - 1];
  }

  ArchiveValue make(const ArchiveNode& node) {
    switch (node.kind) {
      case NodeKind::Text:
        return text(node);
      case NodeKind::Number:
        return number(list_.object(node.first));
      case NodeKind::Array:
        return array(node);
      case NodeKind::Row:
        return ListRow{.name = field(node, 0), .id = field(node, 1), .parent = field(node, 2)};
      default:
        return NilMarker();
    }
  }

  [[nodiscard]] QString text(const ArchiveNode& node) const {
    return list_.text({PropertyListReader::Kind::Text, node.wide, node.first, node.count});
  }

  [[nodiscard]] ArchiveValue number(const PropertyListReader::Object& object) const {
    if (object.kind == PropertyListReader::Kind::Real) return list_.real(object);
    if (object.kind == PropertyListReader::Kind::Boolean) return object.wide;
    return list_.integer(object).value_or(0);
  }

  ArchiveValue::Array array(const ArchiveNode& node) {
    ArchiveValue::Array values;
    values.reserve(node.count);
    for (quint32 i = 0; i < node.count; ++i) values.push_back(build(table_.parts[node.first + i]));
    return values;
  }

  std::optional<QString> field(const ArchiveNode& row, quint32 i) {
    const quint32 part = table_.parts[row.first + i];
    const ArchiveNode& node = table_.nodes[part];
    if (part == 0 || node.kind == NodeKind::NilMarker) return {};
    return node.shared == 0 ? text(node) : *shared(node).as<QString>();
  }

  const PropertyListReader& list_;
  const ArchiveTable& table_;
  std::vector<ArchiveValue> shared_;
};

Error archiveError(const QString& why) {
  return {.domain = QStringLiteral("archive"), .code = 0, .text = why};
}

}  // namespace

Result<ArchiveValue> readArchive(QByteArrayView archive) {
  const auto list = PropertyListReader::of(archive);
  if (!list) return archiveError(QStringLiteral("not a property list"));
  ArchiveScan scan(*list);
  if (!scan.run(archive.size())) return archiveError(scan.failure());
  const ArchiveTable table = scan.takeTable();
  return ValueBuilder(*list, table).build(table.root);
}

}  // namespace pendra
