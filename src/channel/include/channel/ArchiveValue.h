#pragma once
// The one distinction of this header: nil and the nil marker are two things. Nil is the absent field of a
// record; an array holds an `IPCNilArg` in its place.

#include <QList>
#include <QString>
#include <QStringList>
#include <variant>

#include "channel/IPCNilArg.h"

namespace pendra {

class ArchiveValue;

/// A class whose objects may travel: its name on the wire and the keys of its fields. Whoever owns the class
/// makes one constant of this, which lives as long as the program, and hands it to the channel, which knows
/// no such class by itself.
struct ArchiveClass {
  QString name;
  QStringList keys;
};

/// An object of an `ArchiveClass`: one value for each key, in the order of the class's keys.
struct ArchiveRecord {
  const ArchiveClass* archiveClass;
  QList<ArchiveValue> fields;
};

/// What an archive can hold. A value is cheap to copy: texts, arrays and records share what they hold.
class ArchiveValue {
 public:
  using Array = QList<ArchiveValue>;

  ArchiveValue() = default;  ///< nil
  ArchiveValue(IPCNilArg marker) : value_(marker) {}
  ArchiveValue(bool truth) : value_(truth) {}
  ArchiveValue(qint64 number) : value_(number) {}
  ArchiveValue(double number) : value_(number) {}
  ArchiveValue(QString text) : value_(std::move(text)) {}
  ArchiveValue(Array elements) : value_(std::move(elements)) {}
  ArchiveValue(ArchiveRecord record) : value_(std::move(record)) {}
  ArchiveValue(const char16_t*) = delete;  // would become a truth value

  [[nodiscard]] bool isNil() const { return std::holds_alternative<std::monostate>(value_); }
  [[nodiscard]] bool isNilArg() const { return std::holds_alternative<IPCNilArg>(value_); }

  /// The value as one of its kinds; null when it is another kind.
  template <class Kind>
  [[nodiscard]] const Kind* as() const {
    return std::get_if<Kind>(&value_);
  }

  /// Calls the visitor with the kind that it is; nil is a `std::monostate`.
  template <class Visitor>
  decltype(auto) visit(Visitor&& visitor) const {
    return std::visit(std::forward<Visitor>(visitor), value_);
  }

  friend bool operator==(const ArchiveValue& a, const ArchiveValue& b);

 private:
  std::variant<std::monostate, IPCNilArg, bool, qint64, double, QString, Array, ArchiveRecord> value_;
};

/// Records are equal when their classes have the same name and their fields are equal.
inline bool operator==(const ArchiveRecord& a, const ArchiveRecord& b) {
  return a.archiveClass->name == b.archiveClass->name && a.fields == b.fields;
}

inline bool operator==(const ArchiveValue& a, const ArchiveValue& b) { return a.value_ == b.value_; }

}  // namespace pendra
