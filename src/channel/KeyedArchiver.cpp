#include "channel/KeyedArchiver.h"

#include <QHash>
#include <algorithm>
#include <memory>
#include <span>
#include <type_traits>

#include "ArchiveCensus.h"
#include "PropertyListWriter.h"
#include "TextIndex.h"

namespace pendra {
namespace {

/// A class that is written, and the number of its description once that stands in the archive.
struct ClassEntry {
  const ArchiveClass* archiveClass = nullptr;  ///< of a record
  QString name;
  QStringList keys;
  quint32 nameAt = 0;  ///< where its name stands; its keys follow it
  quint32 number = 0;
};

/// Writes a value in one walk, every object as soon as its parts have their numbers. The list holds its fixed
/// objects first, then the texts of the classes and their keys, then the plain arrays that arrays and class
/// descriptions have within them, and from `firstNumbered_` on, for each number n, the reference object UID n
/// and the object itself.
class ArchiveWriter {
 public:
  explicit ArchiveWriter(const ArchiveValue& root) : ArchiveWriter(ArchiveCensus(root)) {}

  /// False when the value cannot be archived; `failure` says why.
  [[nodiscard]] bool add(const ArchiveValue& value, int depth, quint32& number) {
    return value.visit([&](const auto& kind) { return addKind(kind, depth, number); });
  }

  QByteArray finish(quint32 root) {
    writeFixed(root);
    // A text that stands several times left its places free, which were the last ones.
    return writer_.finish(firstNumbered_ + 2 * count_);
  }

  const QString& failure() const { return failure_; }

 private:
  // The order of the fixed objects.
  enum Fixed : quint32 {
    kTopDictionary,
    kVersionKey,
    kArchiverKey,
    kTopKey,
    kObjectsKey,
    kVersion,
    kArchiver,
    kTop,
    kObjects,
    kRootKey,
    kClassKey,
    kClassNameKey,
    kClassesKey,
    kRootClassName,
    kFixedObjects
  };
  static constexpr std::size_t kArrayClass = 0;
  static constexpr std::size_t kNilArgClass = 1;
  static constexpr std::size_t kFirstRecordClass = 2;
  /// How many elements of an array ahead the index of texts is told.
  static constexpr qsizetype kLookAhead = 8;

  explicit ArchiveWriter(const ArchiveCensus& census)
      : classes_(classesOf(census)),
        nextInnerArray_(classes_.back().nameAt + 1 + static_cast<quint32>(classes_.back().keys.size())),
        firstNumbered_(nextInnerArray_ + static_cast<quint32>(census.arrays + census.classes())),
        writer_(firstNumbered_ + 2 * static_cast<quint32>(census.objects()), expectedSize(census)),
        index_(census.texts),
        texts_(std::make_unique_for_overwrite<const QString*[]>(census.objects())) {
    for (const ClassEntry& entry : classes_) {
      writer_.begin(entry.nameAt).text(entry.name);
      quint32 at = entry.nameAt;
      for (const QString& key : entry.keys) writer_.begin(++at).text(key);
    }
    beginNumbered(count_++).text(u"$null");
  }

  static std::vector<ClassEntry> classesOf(const ArchiveCensus& census) {
    std::vector<ClassEntry> classes{
        {.name = QStringLiteral("NSArray"), .keys = {QStringLiteral("NS.objects")}},
        {.name = QStringLiteral("IPCNilArg"), .keys = {}}};
    for (const ArchiveClass* record : census.records)
      classes.push_back({.archiveClass = record, .name = record->name, .keys = record->keys});
    quint32 at = kFixedObjects;
    for (ClassEntry& entry : classes) {
      entry.nameAt = at;
      at += 1 + static_cast<quint32>(entry.keys.size());
    }
    return classes;
  }

  /// Enough for everything when most objects are texts and no text needs more than one byte a character.
  static qsizetype expectedSize(const ArchiveCensus& census) {
    const auto objects = static_cast<quint32>(census.objects());
    return 1024 + census.textLength +
           qsizetype{objects} * (14 + 5 * PropertyListWriter::referenceWidth(2 * objects));
  }

  bool addKind(std::monostate, int, quint32& number) {
    number = 0;
    return true;
  }

  bool addKind(IPCNilArg, int, quint32& number) {
    number = count_++;
    writeInstance(number, classes_[kNilArgClass], {});
    return true;
  }

  bool addKind(const QString& text, int, quint32& number) {
    quint32& known = index_.find(text, [this](quint32 n) { return QStringView(*texts_[n]); });
    if (known == 0) {
      known = count_++;
      texts_[known] = &text;
      beginNumbered(known).text(text);
    }
    number = known;
    return true;
  }

  template <class Number>
  requires std::is_arithmetic_v<Number>
  bool addKind(Number value, int, quint32& number) {
    auto& known = numbersOf(value)[value];
    if (known == 0) {
      known = count_++;
      write(value, beginNumbered(known));
    }
    number = known;
    return true;
  }

  static void write(qint64 number, PropertyListWriter& writer) { writer.integer(number); }
  static void write(double number, PropertyListWriter& writer) { writer.real(number); }
  static void write(bool truth, PropertyListWriter& writer) { writer.boolean(truth); }

  bool addKind(const ArchiveValue::Array& array, int depth, quint32& number) {
    number = count_++;
    const std::size_t first = parts_.size();
    if (!addParts(array, depth)) return false;
    const quint32 inner = nextInnerArray_++;
    writeInstance(number, classes_[kArrayClass], std::span(&inner, 1));
    writer_.begin(inner).arrayHead(static_cast<quint32>(array.size()));
    for (std::size_t i = first; i < parts_.size(); ++i) writer_.reference(uidAt(parts_[i]));
    parts_.resize(first);
    return true;
  }

  bool addKind(const ArchiveRecord& record, int depth, quint32& number) {
    ClassEntry& entry = entryFor(*record.archiveClass);
    if (record.fields.size() != entry.keys.size()) {
      failure_ = u"a record of class " + entry.name + u" does not match its class";
      return false;
    }
    number = count_++;
    const std::size_t first = parts_.size();
    if (!addParts(record.fields, depth)) return false;
    for (std::size_t i = first; i < parts_.size(); ++i) parts_[i] = uidAt(parts_[i]);
    writeInstance(number, entry, std::span(parts_).subspan(first));
    parts_.resize(first);
    return true;
  }

  /// Puts the numbers of the parts at the end of `parts_`.
  bool addParts(const QList<ArchiveValue>& values, int depth) {
    if (depth >= kArchiveDepth) {
      failure_ = QStringLiteral("nested too deep");
      return false;
    }
    for (qsizetype i = 0; i < values.size(); ++i) {
      if (i + kLookAhead < values.size()) expectTexts(values[i + kLookAhead]);
      quint32 number = 0;
      if (!add(values[i], depth + 1, number)) return false;
      parts_.push_back(number);
    }
    return true;
  }

  void expectTexts(const ArchiveValue& value) {
    if (const auto* text = value.as<QString>()) index_.expect(*text);
    if (const auto* record = value.as<ArchiveRecord>())
      for (const ArchiveValue& field : record->fields)
        if (const auto* text = field.as<QString>()) index_.expect(*text);
  }

  ClassEntry& entryFor(const ArchiveClass& wanted) {
    const auto isSame = [&](const ClassEntry& entry) {
      return entry.archiveClass == &wanted || entry.name == wanted.name;
    };
    return *std::find_if(classes_.begin() + kFirstRecordClass, classes_.end(), isSame);
  }

  /// Writes an object of a class, its values given as indices, and its class if it is the first one.
  void writeInstance(quint32 number, ClassEntry& entry, std::span<const quint32> values) {
    const bool isFirst = entry.number == 0;
    if (isFirst) entry.number = count_++;
    beginNumbered(number).dictionaryHead(static_cast<quint32>(values.size()) + 1);
    for (quint32 i = 0; i < values.size(); ++i) writer_.reference(entry.nameAt + 1 + i);
    writer_.reference(kClassKey);
    for (const quint32 value : values) writer_.reference(value);
    writer_.reference(uidAt(entry.number));
    if (isFirst) describe(entry);
  }

  void describe(const ClassEntry& entry) {
    const quint32 names = nextInnerArray_++;
    beginNumbered(entry.number);
    dictionary({kClassNameKey, kClassesKey}, {entry.nameAt, names});
    writer_.begin(names).arrayHead(2);
    writer_.reference(entry.nameAt);
    writer_.reference(kRootClassName);
  }

  quint32 uidAt(quint32 number) const { return firstNumbered_ + 2 * number; }

  /// Writes the reference object of a number and announces the object itself.
  PropertyListWriter& beginNumbered(quint32 number) {
    writer_.begin(uidAt(number)).uid(number);
    return writer_.begin(uidAt(number) + 1);
  }

  void dictionary(std::initializer_list<quint32> keys, std::initializer_list<quint32> values) {
    writer_.dictionaryHead(static_cast<quint32>(keys.size()));
    for (const quint32 key : keys) writer_.reference(key);
    for (const quint32 value : values) writer_.reference(value);
  }

  void writeTexts(quint32 first, std::initializer_list<QStringView> texts) {
    for (const QStringView text : texts) writer_.begin(first++).text(text);
  }

  void writeFixed(quint32 root) {
    writer_.begin(kTopDictionary);
    dictionary({kVersionKey, kArchiverKey, kTopKey, kObjectsKey}, {kVersion, kArchiver, kTop, kObjects});
    writeTexts(kVersionKey, {u"$version", u"$archiver", u"$top", u"$objects"});
    writer_.begin(kVersion).integer(100000);
    writer_.begin(kArchiver).text(u"NSKeyedArchiver");
    writer_.begin(kTop);
    dictionary({kRootKey}, {uidAt(root)});
    writer_.begin(kObjects).arrayHead(count_);
    for (quint32 n = 0; n < count_; ++n) writer_.reference(uidAt(n) + 1);
    writeTexts(kRootKey, {u"root", u"$class", u"$classname", u"$classes", u"NSObject"});
  }

  QHash<qint64, quint32>& numbersOf(qint64) { return integers_; }
  QHash<double, quint32>& numbersOf(double) { return reals_; }
  QHash<bool, quint32>& numbersOf(bool) { return booleans_; }

  std::vector<ClassEntry> classes_;
  quint32 nextInnerArray_;
  quint32 firstNumbered_;
  quint32 count_ = 0;
  PropertyListWriter writer_;
  TextIndex index_;
  std::unique_ptr<const QString*[]> texts_;  ///< by their numbers
  std::vector<quint32> parts_;               ///< of the arrays and records that are being written
  QHash<qint64, quint32> integers_;
  QHash<double, quint32> reals_;
  QHash<bool, quint32> booleans_;
  QString failure_;
};

}  // namespace

Result<QByteArray> archivedData(const ArchiveValue& root) {
  ArchiveWriter writer(root);
  quint32 number = 0;
  if (!writer.add(root, 0, number))
    return Error{.domain = QStringLiteral("archive"), .code = 0, .text = writer.failure()};
  return writer.finish(number);
}

}  // namespace pendra
