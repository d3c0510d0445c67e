#pragma once

#include <QHash>
#include <QStringView>
#include <array>
#include <variant>
#include <vector>

#include "ArchiveFormat.h"
#include "channel/ArchiveValue.h"

namespace pendra {

/// Gives every object of an archive its number, in one walk over the value: a class comes after the first
/// object that needs it, and equal texts and equal numbers are one object. The value must outlive it.
class ArchiveNumbering {
 public:
  /// An object of a class; the numbers of its parts stand in `parts`.
  struct Instance {
    ArchiveClassIndex index;
    quint32 firstPart = 0;
    quint32 partCount = 0;
  };
  using Object = std::variant<QStringView, qint64, double, bool, Instance, ArchiveClassIndex>;

  explicit ArchiveNumbering(const ArchiveValue& value);

  /// The objects by their numbers; number 0, which means nil, is the text "$null".
  [[nodiscard]] const std::vector<Object>& objects() const { return objects_; }
  [[nodiscard]] std::span<const quint32> partsOf(const Instance& instance) const {
    return std::span(parts_).subspan(instance.firstPart, instance.partCount);
  }
  /// The number of a class; 0 when no object needs it.
  [[nodiscard]] quint32 classNumber(ArchiveClassIndex index) const { return classNumbers_[index]; }
  [[nodiscard]] quint32 root() const { return root_; }
  [[nodiscard]] bool isTooDeep() const { return tooDeep_; }
  /// How many characters all texts have.
  [[nodiscard]] qsizetype textLength() const { return textLength_; }

 private:
  quint32 add(const ArchiveValue& value, int depth);
  quint32 addKind(std::monostate, int) { return 0; }
  quint32 addKind(NilMarker, int);
  quint32 addKind(const QString& text, int);
  quint32 addKind(bool truth, int) { return addNumber(truth, truth ? 1 : 0); }
  quint32 addKind(qint64 number, int) { return addNumber(number, static_cast<quint64>(number)); }
  quint32 addKind(double number, int);
  quint32 addKind(const ArchiveValue::Array& array, int depth);
  quint32 addKind(const ListRow& row, int depth);

  quint32 next(Object object);
  quint32 addNumber(Object number, quint64 bits);
  quint32 addInstance(ArchiveClassIndex index, quint32 partCount);
  quint32 addField(const std::optional<QString>& field);
  void need(ArchiveClassIndex index);

  std::vector<Object> objects_;
  std::vector<quint32> parts_;
  std::array<quint32, kArchiveClassCount> classNumbers_{};
  QHash<QStringView, quint32> texts_;
  QHash<std::pair<std::size_t, quint64>, quint32> numbers_;  ///< by kind and bits
  qsizetype textLength_ = 0;
  quint32 root_ = 0;
  bool tooDeep_ = false;
};

}  // namespace pendra
