#pragma once
// Reading goes in two steps. A scan turns the archive into a table of nodes and finds every fault; only then
// is anything built from the table, which cannot fail any more.

#include <QByteArrayView>
#include <optional>
#include <vector>

#include "IPC/SupportedClasses.h"
#include "PropertyListReader.h"

namespace pendra {

/// One object of an archive, found by its number.
struct ArchiveNode {
  enum class Kind : quint8 { Unusable, Text, Number, NilArg, Array, Record, Class };

  Kind kind = Kind::Unusable;
  bool onPath = false;     ///< being looked at, so that a way back to it is a cycle
  quint8 height = 0;       ///< how many arrays and records stand within each other from here down
  quint8 recordClass = 0;  ///< of a record: which of the permitted ones
  quint32 uses = 0;        ///< how many references lead to it from the root
  quint32 first = 0;  ///< of an array or record: where its parts begin; of other kinds: its place in the list
  quint32 count = 0;  ///< how many parts it has
};

/// Everything about an archive that is known before anything is built.
class ArchiveScan {
 public:
  ArchiveScan(const PropertyListReader& list, const SupportedClasses& classes, qsizetype memoryLimit)
      : list_(list), classes_(classes), memoryLimit_(memoryLimit) {}

  /// False when the archive must not be read; `failure` says why. `size` is the whole archive's.
  [[nodiscard]] bool run(qsizetype size);

  [[nodiscard]] const QString& failure() const { return failure_; }
  [[nodiscard]] quint32 root() const { return root_; }
  [[nodiscard]] std::vector<ArchiveNode>& nodes() { return nodes_; }
  [[nodiscard]] const std::vector<quint32>& parts() const { return parts_; }
  /// What the built value will hold, in bytes, rounded up.
  [[nodiscard]] qsizetype valueMemory() const { return valueMemory_; }

 private:
  using Object = PropertyListReader::Object;
  /// Where the keys that matter stand in a dictionary, by their number; -1 for one that it lacks.
  struct Shape {
    QByteArray keys;
    std::vector<qsizetype> positions;
  };

  bool fail(const QString& why);
  bool spend(qsizetype bytes, qsizetype& account);
  bool work(qsizetype steps);

  bool readTop();
  bool readNode(quint32 number);
  bool readInstance(const Object& dictionary, const Shape& shape, ArchiveNode& node);
  bool readArray(const Object& dictionary, const Shape& shape, ArchiveNode& node);
  bool readRecord(const Object& dictionary, const Shape& shape, ArchiveNode& node);
  bool readTextObject(const Object& dictionary, const Shape& shape, ArchiveNode& node);
  bool readClass(quint32 number, const Object& dictionary, const Shape& shape);
  bool readPart(quint64 reference, quint32& number);
  std::optional<quint32> numberAt(quint64 reference) const;
  std::optional<Object> objectNumbered(quint32 number) const;
  const Shape* shapeOf(const Object& dictionary);
  std::optional<Object> valueFor(const Object& dictionary, QStringView key);
  bool follow(quint32 number, int depth);
  bool followParts(ArchiveNode& node, int depth);
  bool count(const ArchiveNode& node);

  const PropertyListReader& list_;
  const SupportedClasses& classes_;
  qsizetype memoryLimit_;
  qsizetype workLeft_ = 0;
  qsizetype tableMemory_ = 0;
  qsizetype valueMemory_ = 0;
  Object objects_;
  quint32 root_ = 0;
  std::vector<ArchiveNode> nodes_;
  std::vector<quint32> parts_;
  std::vector<Shape> shapes_;
  Shape otherShape_;
  std::vector<QString> keys_;
  std::vector<quint32> recordKeys_;  ///< where the keys of each permitted record begin in `keys_`
  QString failure_;
};

}  // namespace pendra
