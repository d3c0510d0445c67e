#include "IPC/KeyedArchiver.h"

#include "ArchiveNumbering.h"
#include "PropertyListWriter.h"

namespace pendra {
namespace {

/// Writes the numbered objects. The list holds its fixed objects first, then the texts of the classes and
/// their keys, then, for each number n, the reference object UID n, the object itself, and the plain array
/// that an array or a class has within it.
class ArchiveWriter {
 public:
  ArchiveWriter(const Numbering& numbering, quint32 root)
      : numbering_(numbering),
        root_(root),
        count_(static_cast<quint32>(numbering.objects().size())),
        names_(namesOf(numbering)),
        places_(placesOf(numbering, kFixedObjects + static_cast<quint32>(names_.size()))),
        writer_(places_.back(), expectedSize()) {}

  QByteArray write() {
    writeFixed();
    for (const QString& name : names_) writer_.text(name);
    for (quint32 n = 0; n < count_; ++n) {
      writer_.uid(n);
      std::visit([this, n](const auto& object) { writeObject(object, n); }, numbering_.objects()[n]);
    }
    return writer_.finish();
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

  static QStringList namesOf(const Numbering& numbering) {
    QStringList names;
    for (const ClassEntry& entry : numbering.classes()) names += QStringList(entry.name) + entry.keys;
    return names;
  }

  /// Enough for everything when no text needs more than one byte a character.
  qsizetype expectedSize() const {
    const qsizetype width = PropertyListWriter::referenceWidth(places_.back());
    const auto parts = static_cast<qsizetype>(numbering_.parts().size());
    return 1024 + numbering_.textLength() + 6 * qsizetype{places_.back()} +
           width * (2 * parts + 3 * qsizetype{count_});
  }

  /// Where the reference object of each number stands, and last the count of all objects.
  static std::vector<quint32> placesOf(const Numbering& numbering, quint32 first) {
    std::vector<quint32> places;
    places.reserve(numbering.objects().size() + 1);
    for (const Object& object : numbering.objects()) {
      places.push_back(first);
      const auto* instance = std::get_if<Instance>(&object);
      const bool holdsArray = std::holds_alternative<ClassDescription>(object) ||
                              (instance && instance->classEntry == Numbering::kArrayClass);
      first += holdsArray ? 3 : 2;
    }
    places.push_back(first);
    return places;
  }

  quint32 uidAt(quint32 number) const { return places_[number]; }
  quint32 at(quint32 number) const { return places_[number] + 1; }
  quint32 innerArrayAt(quint32 number) const { return places_[number] + 2; }

  /// Where the name of a class stands; its keys follow it.
  quint32 nameAt(quint32 classEntry) const {
    quint32 at = kFixedObjects;
    for (quint32 i = 0; i < classEntry; ++i)
      at += 1 + static_cast<quint32>(numbering_.classes()[i].keys.size());
    return at;
  }

  void dictionary(std::initializer_list<quint32> keys, std::initializer_list<quint32> values) {
    writer_.dictionaryHead(static_cast<quint32>(keys.size()));
    for (const quint32 key : keys) writer_.reference(key);
    for (const quint32 value : values) writer_.reference(value);
  }

  void writeFixed() {
    dictionary({kVersionKey, kArchiverKey, kTopKey, kObjectsKey}, {kVersion, kArchiver, kTop, kObjects});
    for (const auto* key : {u"$version", u"$archiver", u"$top", u"$objects"}) writer_.text(QStringView(key));
    writer_.integer(100000);
    writer_.text(u"NSKeyedArchiver");
    dictionary({kRootKey}, {uidAt(root_)});
    writer_.arrayHead(count_);
    for (quint32 n = 0; n < count_; ++n) writer_.reference(at(n));
    for (const auto* key : {u"root", u"$class", u"$classname", u"$classes", u"NSObject"})
      writer_.text(QStringView(key));
  }

  void writeObject(QStringView text, quint32) { writer_.text(text); }
  void writeObject(qint64 number, quint32) { writer_.integer(number); }
  void writeObject(double number, quint32) { writer_.real(number); }
  void writeObject(bool truth, quint32) { writer_.boolean(truth); }

  void writeObject(const Instance& instance, quint32 number) {
    const ClassEntry& entry = numbering_.classes()[instance.classEntry];
    const auto keyCount = static_cast<quint32>(entry.keys.size());
    const quint32 firstKey = nameAt(instance.classEntry) + 1;
    writer_.dictionaryHead(keyCount + 1);
    for (quint32 i = 0; i < keyCount; ++i) writer_.reference(firstKey + i);
    writer_.reference(kClassKey);
    const bool isArray = instance.classEntry == Numbering::kArrayClass;
    if (isArray) writer_.reference(innerArrayAt(number));
    if (!isArray) writeParts(instance);
    writer_.reference(uidAt(entry.number));
    if (!isArray) return;
    writer_.arrayHead(instance.partCount);
    writeParts(instance);
  }

  void writeParts(const Instance& instance) {
    for (const quint32 part : std::span(numbering_.parts()).subspan(instance.firstPart, instance.partCount))
      writer_.reference(uidAt(part));
  }

  void writeObject(const ClassDescription& description, quint32 number) {
    const quint32 name = nameAt(description.classEntry);
    dictionary({kClassNameKey, kClassesKey}, {name, innerArrayAt(number)});
    writer_.arrayHead(2);
    writer_.reference(name);
    writer_.reference(kRootClassName);
  }

  const Numbering& numbering_;
  quint32 root_;
  quint32 count_;
  QStringList names_;
  std::vector<quint32> places_;
  PropertyListWriter writer_;
};

}  // namespace

Result<QByteArray> archivedData(const ArchiveValue& root) {
  Numbering numbering(root);
  quint32 number = 0;
  if (!numbering.add(root, 0, number))
    return Error{.domain = QStringLiteral("archive"), .code = 0, .text = numbering.failure()};
  return ArchiveWriter(numbering, number).write();
}

}  // namespace pendra
