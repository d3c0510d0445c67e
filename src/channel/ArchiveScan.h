#pragma once
// Reading goes in two steps. A scan turns the archive into a table of nodes and finds every fault; only then
// is anything built from the table, which cannot fail any more.

#include <QByteArrayView>
#include <vector>

#include "ArchiveFormat.h"
#include "PropertyListReader.h"

namespace pendra {

/// One object of an archive, found by its number.
struct ArchiveNode {
  enum class Kind : quint8 { Unusable, Text, Number, NilMarker, Array, Row, Class };

  Kind kind = Kind::Unusable;
  bool wide : 1 = false;    ///< of a text: in UTF-16
  bool onPath : 1 = false;  ///< being looked at, so that a way back to it is a cycle
  bool seen : 1 = false;    ///< reached from the root
  quint8 height = 0;        ///< how many arrays and rows stand within each other from here down
  quint32 shared = 0;       ///< a number of its own among the nodes that several references lead to; else 0
  quint32 first = 0;  ///< of an array or row: where its parts begin; of a text: where its content begins;
                      ///< of other kinds: its index in the list
  quint32 count = 0;  ///< how many parts or characters it has
};

/// What a scan leaves: the nodes by their numbers, and the numbers of the parts of arrays and rows.
struct ArchiveTable {
  std::vector<ArchiveNode> nodes;
  std::vector<quint32> parts;
  quint32 root = 0;
  quint32 sharedCount = 0;
  qsizetype memory = 0;  ///< of the table and of what is built from it, in bytes, rounded up
};

/// Everything about an archive that is known before anything is built.
class ArchiveScan {
 public:
  /// The list must outlive it.
  explicit ArchiveScan(const PropertyListReader& list) : list_(list) {}

  /// False when the archive must not be read; `failure` says why. `size` is the whole archive's.
  [[nodiscard]] bool run(qsizetype size);

  [[nodiscard]] const QString& failure() const { return failure_; }
  /// The table, once the scan has succeeded. It can be taken once.
  [[nodiscard]] ArchiveTable takeTable() { return std::move(table_); }

 private:
  using Object = PropertyListReader::Object;
  using NodeKind = ArchiveNode::Kind;
  // The keys that mean something to the reader.
  enum Key : std::size_t { kClass, kClassName, kObjects, kString, kFirstRowKey };
  static constexpr std::size_t kKeyCount = kFirstRowKey + archive_keys::kListRow.size();

  /// Where the keys that matter stand in a dictionary; -1 for one that it lacks.
  struct Shape {
    QByteArray keys;
    std::array<qsizetype, kKeyCount> positions{};
  };

  bool fail(const QString& why);
  bool spend(qsizetype bytes);
  bool work(qsizetype steps);

  bool readTop();
  bool readNode(quint32 number);
  bool readInstance(const Object& dictionary, const Shape& shape, ArchiveNode& node);
  bool readArray(const Object& dictionary, const Shape& shape, ArchiveNode& node);
  bool readRow(const Object& dictionary, const Shape& shape, ArchiveNode& node);
  void readText(const Object& text, ArchiveNode& node);
  bool readTextObject(const Object& dictionary, const Shape& shape, ArchiveNode& node);
  bool readClass(quint32 number, const Object& dictionary, const Shape& shape);
  quint32* addParts(ArchiveNode& node, ArchiveNode::Kind kind, qsizetype count);
  static constexpr quint32 kNoNumber = ~quint32{0};
  [[nodiscard]] quint32 numberAt(quint64 reference) const;
  [[nodiscard]] Object objectNumbered(quint32 number) const;
  const Shape* shapeOf(const Object& dictionary);
  [[nodiscard]] quint64 referenceFor(const Object& dictionary, QStringView key) const;
  [[nodiscard]] Object valueFor(const Object& dictionary, QStringView key) const;
  bool follow(quint32 number, int depth);
  bool followParts(ArchiveNode& node, int depth);
  bool holdsTexts(const ArchiveNode& row);
  bool share(ArchiveNode& node);

  const PropertyListReader& list_;
  qsizetype workLeft_ = 0;
  Object objects_;
  ArchiveTable table_;
  std::vector<Shape> shapes_;
  Shape otherShape_;
  QString failure_;
};

}  // namespace pendra
