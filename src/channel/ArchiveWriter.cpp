#include "ArchiveNumbering.h"
#include "PropertyListWriter.h"
#include "channel/Archive.h"
#include "channel/Datagram.h"

namespace pendra {
namespace {

using Instance = ArchiveNumbering::Instance;

/// Writes the objects of a numbering. The list holds its fixed objects first, then the names and keys of the
/// classes, then for each number n the reference object UID n and the object itself, then the plain arrays
/// that arrays and class descriptions have within them, and at the end what nothing refers to.
class ArchiveWriter {
 public:
  ArchiveWriter(const ArchiveNumbering& numbering, quint32 unused)
      : numbering_(numbering),
        unused_(unused),
        count_(static_cast<quint32>(numbering.objects().size())),
        firstNumbered_(placeClasses()),
        nextInner_(firstNumbered_ + 2 * count_),
        list_(nextInner_ + innerArrays() + unused, expectedSize()) {}

  QByteArray write() {
    writeFixed();
    writeClassTexts();
    for (quint32 number = 0; number < count_; ++number) {
      list_.begin(referenceTo(number)).uid(number);
      list_.begin(objectAt(number));
      std::visit([this](const auto& object) { writeObject(object); }, numbering_.objects()[number]);
    }
    for (quint32 i = 0; i < unused_; ++i) list_.begin(nextInner_ + i).integer(kSliceSize + i);
    return list_.finish();
  }

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

  /// Gives the texts of each class that is needed their places; answers where the next object goes.
  quint32 placeClasses() {
    quint32 at = kFixedObjects;
    for (quint32 index = 0; index < kArchiveClassCount; ++index) {
      if (numbering_.classNumber(ArchiveClassIndex{index}) == 0) continue;
      classTexts_[index] = at;
      at += 1 + static_cast<quint32>(kArchiveClasses[index].keys.size());
    }
    return at;
  }

  [[nodiscard]] quint32 innerArrays() const {
    quint32 count = 0;
    for (const auto& object : numbering_.objects()) {
      const auto* instance = std::get_if<Instance>(&object);
      count +=
          std::holds_alternative<ArchiveClassIndex>(object) || (instance && instance->index == kArrayClass);
    }
    return count;
  }

  /// Enough when no text needs more than one byte a character.
  [[nodiscard]] qsizetype expectedSize() const {
    return 1024 + numbering_.textLength() + qsizetype{count_} * 34;
  }

  [[nodiscard]] quint32 referenceTo(quint32 number) const { return firstNumbered_ + 2 * number; }
  [[nodiscard]] quint32 objectAt(quint32 number) const { return referenceTo(number) + 1; }

  void writeObject(QStringView text) { list_.text(text); }
  void writeObject(qint64 number) { list_.integer(number); }
  void writeObject(double number) { list_.real(number); }
  void writeObject(bool truth) { list_.boolean(truth); }

  void writeObject(const Instance& instance) {
    const auto parts = numbering_.partsOf(instance);
    const ArchiveClass& described = kArchiveClasses[instance.index];
    const auto keyCount = static_cast<quint32>(described.keys.size());
    list_.dictionaryHead(keyCount + 1);
    for (quint32 i = 1; i <= keyCount; ++i) list_.reference(classTexts_[instance.index] + i);
    list_.reference(kClassKey);
    if (instance.index == kArrayClass) {
      list_.reference(nextInner_);
    } else {
      for (const quint32 part : parts) list_.reference(referenceTo(part));
    }
    list_.reference(referenceTo(numbering_.classNumber(instance.index)));
    if (instance.index != kArrayClass) return;
    list_.begin(nextInner_++).arrayHead(instance.partCount);
    for (const quint32 part : parts) list_.reference(referenceTo(part));
  }

  void writeObject(ArchiveClassIndex index) {
    dictionary({kClassNameKey, kClassesKey}, {classTexts_[index], nextInner_});
    list_.begin(nextInner_++).arrayHead(2);
    list_.reference(classTexts_[index]);
    list_.reference(kRootClassName);
  }

  void dictionary(std::initializer_list<quint32> keys, std::initializer_list<quint32> values) {
    list_.dictionaryHead(static_cast<quint32>(keys.size()));
    for (const quint32 key : keys) list_.reference(key);
    for (const quint32 value : values) list_.reference(value);
  }

  void writeTexts(quint32 first, std::initializer_list<QStringView> texts) {
    for (const QStringView text : texts) list_.begin(first++).text(text);
  }

  void writeClassTexts() {
    for (quint32 index = 0; index < kArchiveClassCount; ++index) {
      quint32 at = classTexts_[index];
      if (at == 0) continue;
      list_.begin(at).text(kArchiveClasses[index].name);
      for (const QStringView key : kArchiveClasses[index].keys) list_.begin(++at).text(key);
    }
  }

  void writeFixed() {
    list_.begin(kTopDictionary);
    dictionary({kVersionKey, kArchiverKey, kTopKey, kObjectsKey}, {kVersion, kArchiver, kTop, kObjects});
    writeTexts(kVersionKey, {u"$version", u"$archiver", u"$top", u"$objects"});
    list_.begin(kVersion).integer(100000);
    list_.begin(kArchiver).text(u"NSKeyedArchiver");
    list_.begin(kTop);
    dictionary({kRootKey}, {referenceTo(numbering_.root())});
    list_.begin(kObjects).arrayHead(count_ + unused_);
    for (quint32 number = 0; number < count_; ++number) list_.reference(objectAt(number));
    for (quint32 i = 0; i < unused_; ++i) list_.reference(nextInner_ + innerArrays() + i);
    writeTexts(kRootKey, {u"root", u"$class", u"$classname", u"$classes", u"NSObject"});
  }

  const ArchiveNumbering& numbering_;
  quint32 unused_;
  quint32 count_;
  std::array<quint32, kArchiveClassCount> classTexts_{};
  quint32 firstNumbered_;
  quint32 nextInner_;
  PropertyListWriter list_;
};

}  // namespace

Result<QByteArray> writeArchive(const ArchiveValue& root) {
  const ArchiveNumbering numbering(root);
  if (numbering.isTooDeep())
    return Error{.domain = QStringLiteral("archive"), .code = 0, .text = QStringLiteral("nested too deep")};
  // Kept for every peer: a message that is a multiple of the slice size loses its last slice on the way, by
  // the rule of the wire, so an archive of such a length gets one more object, which nothing refers to.
  for (quint32 unused = 0;; ++unused) {
    QByteArray archive = ArchiveWriter(numbering, unused).write();
    if (archive.size() % kSliceSize != 0) return archive;
  }
}

}  // namespace pendra
