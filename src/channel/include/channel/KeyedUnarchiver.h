#pragma once
// Reads what may come from anybody: every offset, count and reference is checked before it is followed, and
// all of it before anything is built.

#include <QByteArray>
#include <memory>
#include <span>

#include "channel/ArchiveValue.h"
#include "channel/SupportedClasses.h"
#include "platform/Result.h"

namespace pendra {

struct ArchiveContent;

/// What reading one archive may hold at once, tables and result together, unless told otherwise.
inline constexpr qsizetype kUnarchiverMemory = qsizetype{44} << 20;

/// Takes the records of a list while they are built.
class RecordTaker {
 public:
  virtual ~RecordTaker() = default;
  /// So many records will come.
  virtual void expect(qsizetype count) = 0;
  /// The fields of one record in the order of its class's keys, absent where they are nil. They may be moved
  /// away.
  virtual void take(std::span<std::optional<QString>> fields) = 0;
};

/// An archive that was found without fault. It keeps the bytes, and builds what stands in them when it is
/// asked for it: the whole value, or an element of the array that it is.
class KeyedUnarchiver {
 public:
  /// Looks through an archive, whatever the order and sharing of its objects, in linear time. Fails, in the
  /// domain "archive", on anything that is not of the layout, on a class outside of `classes` anywhere in it,
  /// on a cycle, a depth over `kArchiveDepth`, and when more than `memoryLimit` bytes would be needed.
  static Result<KeyedUnarchiver> initForReadingFromData(QByteArray archive, const SupportedClasses& classes,
                                                        qsizetype memoryLimit = kUnarchiverMemory);
  KeyedUnarchiver(KeyedUnarchiver&&) noexcept;
  KeyedUnarchiver& operator=(KeyedUnarchiver&&) noexcept;
  ~KeyedUnarchiver();

  /// What this and all that is built from it hold, in bytes, rounded up.
  [[nodiscard]] qsizetype memory() const;

  [[nodiscard]] ArchiveValue value() const;
  [[nodiscard]] bool isArray() const;
  /// How many elements the array has; 0 when it is none.
  [[nodiscard]] qsizetype count() const;
  /// Whether an element is nil, as it is beyond the end.
  [[nodiscard]] bool isNil(qsizetype i) const;
  [[nodiscard]] bool isNilArg(qsizetype i) const;
  [[nodiscard]] bool isText(qsizetype i, QStringView text) const;
  [[nodiscard]] ArchiveValue element(qsizetype i) const;
  /// Hands over the records of an element that is an array of records of one class, with nothing but texts in
  /// their fields. False when it is anything else, which may turn out late.
  [[nodiscard]] bool takeRecords(qsizetype i, const ArchiveClass& recordClass, RecordTaker& taker) const;

 private:
  explicit KeyedUnarchiver(std::unique_ptr<const ArchiveContent> content);

  std::unique_ptr<const ArchiveContent> content_;
};

/// Reads the value of an archive.
Result<ArchiveValue> unarchivedValue(QByteArrayView archive, const SupportedClasses& classes,
                                     qsizetype memoryLimit = kUnarchiverMemory);

}  // namespace pendra
