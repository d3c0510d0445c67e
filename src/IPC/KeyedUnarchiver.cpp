#include "IPC/KeyedUnarchiver.h"

#include "ArchiveScan.h"

namespace pendra {
namespace {

/// Builds values from a table without faults. A value that several hold is built once and shared.
class ValueBuilder {
 public:
  ValueBuilder(const PropertyListReader& list, ArchiveScan& scan, const SupportedClasses& classes)
      : list_(list), nodes_(scan.nodes()), parts_(scan.parts()), classes_(classes) {}

  ArchiveValue build(quint32 number) {
    if (number == 0) return {};
    ArchiveNode& node = nodes_[number];
    if (node.uses == 1) return make(node);
    // The mark of a walk that is over tells from here on that the value stands in `shared_`.
    if (!node.onPath) {
      shared_.push_back(make(node));
      node.onPath = true;
      node.first = static_cast<quint32>(shared_.size() - 1);
    }
    return shared_[node.first];
  }

 private:
  ArchiveValue make(const ArchiveNode& node) {
    switch (node.kind) {
      case ArchiveNode::Kind::Text:
        return list_.text(*list_.object(node.first));
      case ArchiveNode::Kind::Number:
        return number(*list_.object(node.first));
      case ArchiveNode::Kind::Array:
        return parts(node);
      case ArchiveNode::Kind::Record:
        return ArchiveRecord{classes_.records[node.recordClass], parts(node)};
      default:
        return IPCNilArg::nilArg();
    }
  }

  ArchiveValue number(const PropertyListReader::Object& object) const {
    if (object.kind == PropertyListReader::Kind::Real) return list_.real(object);
    if (object.kind == PropertyListReader::Kind::Boolean) return object.wide;
    return list_.integer(object).value_or(0);
  }

  QList<ArchiveValue> parts(const ArchiveNode& node) {
    QList<ArchiveValue> values;
    values.reserve(node.count);
    for (quint32 i = 0; i < node.count; ++i) values.push_back(build(parts_[node.first + i]));
    return values;
  }

  const PropertyListReader& list_;
  std::vector<ArchiveNode>& nodes_;
  const std::vector<quint32>& parts_;
  const SupportedClasses& classes_;
  std::vector<ArchiveValue> shared_;
};

Error archiveError(const QString& why) {
  return {.domain = QStringLiteral("archive"), .code = 0, .text = why};
}

}  // namespace

Result<Unarchived> unarchivedValue(QByteArrayView archive, const SupportedClasses& classes,
                                   qsizetype memoryLimit) {
  const auto list = PropertyListReader::of(archive);
  if (!list) return archiveError(QStringLiteral("not a property list"));
  ArchiveScan scan(*list, classes, memoryLimit);
  if (!scan.run(archive.size())) return archiveError(scan.failure());
  return Unarchived{ValueBuilder(*list, scan, classes).build(scan.root()), scan.valueMemory()};
}

}  // namespace pendra
