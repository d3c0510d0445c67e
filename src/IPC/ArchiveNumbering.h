#pragma once

#include <QHash>
#include <type_traits>
#include <variant>
#include <vector>

#include "IPC/ArchiveValue.h"
#include "IPC/KeyedArchiver.h"
#include "TextIndex.h"

namespace pendra {

/// A class that has been met, and the number of its description once that stands in the archive.
struct ClassEntry {
  QString name;
  QStringList keys;
  quint32 number = 0;
};

/// An array, a record or a nil marker: its class, and where the numbers of its parts stand.
struct Instance {
  quint32 classEntry;
  quint32 firstPart;
  quint32 partCount;
};

struct ClassDescription {
  quint32 classEntry;
};

using Object = std::variant<QStringView, qint64, double, bool, Instance, ClassDescription>;

/// Gives every object its number: an object comes before its parts, a class after the first object of it.
class Numbering {
 public:
  static constexpr quint32 kArrayClass = 0;

  explicit Numbering(const ArchiveValue& root) : Numbering(countOf(root, 0)) {}

  /// False when the value cannot be archived; `failure` says why.
  [[nodiscard]] bool add(const ArchiveValue& value, int depth, quint32& number) {
    return value.visit([&](const auto& kind) { return addKind(kind, depth, number); });
  }

  const std::vector<Object>& objects() const { return objects_; }
  const std::vector<quint32>& parts() const { return parts_; }
  const std::vector<ClassEntry>& classes() const { return classes_; }
  qsizetype textLength() const { return textLength_; }
  const QString& failure() const { return failure_; }

 private:
  struct Count {
    std::size_t texts = 0;
    std::size_t others = 0;
  };

  explicit Numbering(Count count) : texts_(count.texts) {
    objects_.reserve(count.texts + count.others + 4);
    parts_.reserve(count.texts + count.others);
    objects_.emplace_back(QStringView(u"$null"));
    // Two classes are so common that they need not be looked for.
    classes_ = {{.name = QStringLiteral("NSArray"), .keys = {QStringLiteral("NS.objects")}},
                {.name = QStringLiteral("IPCNilArg"), .keys = {}}};
  }

  static constexpr quint32 kNilArgClass = 1;

  /// How many values there are, so that no table has to grow. What is nested too deep fails later.
  static Count countOf(const ArchiveValue& value, int depth) {
    const QList<ArchiveValue>* values = value.as<ArchiveValue::Array>();
    if (const auto* record = value.as<ArchiveRecord>()) values = &record->fields;
    Count count;
    ++(value.as<QString>() ? count.texts : count.others);
    if (!values || depth >= kArchiveDepth) return count;
    for (const ArchiveValue& part : *values) {
      const Count inner = countOf(part, depth + 1);
      count.texts += inner.texts;
      count.others += inner.others;
    }
    return count;
  }

  quint32 append(Object object) {
    objects_.push_back(object);
    return static_cast<quint32>(objects_.size() - 1);
  }

  bool addKind(std::monostate, int, quint32& number) {
    number = 0;
    return true;
  }

  bool addKind(IPCNilArg, int, quint32& number) {
    number = append(Instance{kNilArgClass, 0, 0});
    describe(kNilArgClass);
    return true;
  }

  bool addKind(const QString& text, int, quint32& number) {
    quint32& known = texts_.find(text, [this](quint32 n) { return std::get<QStringView>(objects_[n]); });
    if (known == 0) {
      known = append(QStringView(text));
      textLength_ += text.size();
    }
    number = known;
    return true;
  }

  template <class Number>
  requires std::is_arithmetic_v<Number>
  bool addKind(Number value, int, quint32& number) {
    auto& known = numbersOf(value)[value];
    if (known == 0) known = append(value);
    number = known;
    return true;
  }

  bool addKind(const ArchiveValue::Array& array, int depth, quint32& number) {
    return addParts(array, kArrayClass, depth, number);
  }

  bool addKind(const ArchiveRecord& record, int depth, quint32& number) {
    if (record.fields.size() != record.archiveClass->keys.size()) {
      failure_ = u"a record of class " + record.archiveClass->name + u" does not match its class";
      return false;
    }
    return addParts(record.fields, entryFor(*record.archiveClass), depth, number);
  }

  bool addParts(const QList<ArchiveValue>& values, quint32 classEntry, int depth, quint32& number) {
    if (depth >= kArchiveDepth) {
      failure_ = QStringLiteral("nested too deep");
      return false;
    }
    const auto count = static_cast<quint32>(values.size());
    const auto first = static_cast<quint32>(parts_.size());
    parts_.resize(first + count);
    number = append(Instance{classEntry, first, count});
    for (quint32 i = 0; i < count; ++i) {
      quint32 part = 0;
      if (!add(values[i], depth + 1, part)) return false;
      parts_[first + i] = part;
    }
    describe(classEntry);
    return true;
  }

  quint32 entryFor(const ArchiveClass& wanted) {
    const auto found = std::find_if(classes_.begin() + 2, classes_.end(),
                                    [&](const ClassEntry& entry) { return entry.name == wanted.name; });
    if (found != classes_.end()) return static_cast<quint32>(found - classes_.begin());
    classes_.push_back({.name = wanted.name, .keys = wanted.keys});
    return static_cast<quint32>(classes_.size() - 1);
  }

  void describe(quint32 classEntry) {
    if (classes_[classEntry].number == 0) classes_[classEntry].number = append(ClassDescription{classEntry});
  }

  QHash<qint64, quint32>& numbersOf(qint64) { return integers_; }
  QHash<double, quint32>& numbersOf(double) { return reals_; }
  QHash<bool, quint32>& numbersOf(bool) { return booleans_; }

  std::vector<Object> objects_;
  std::vector<quint32> parts_;
  std::vector<ClassEntry> classes_;
  TextIndex texts_;
  QHash<qint64, quint32> integers_;
  QHash<double, quint32> reals_;
  QHash<bool, quint32> booleans_;
  qsizetype textLength_ = 0;
  QString failure_;
};

}  // namespace pendra
