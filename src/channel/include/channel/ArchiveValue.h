#pragma once
// Nil and the nil marker are two things: a field of a row may be nil, but an array cannot hold nil, so a nil
// argument or answer travels as the marker.

#include <QList>
#include <QString>
#include <optional>
#include <variant>

namespace pendra {

/// Stands in a message wherever an argument or an answer is nil. It has no state.
struct NilMarker {
  friend bool operator==(NilMarker, NilMarker) = default;
};

/// A row of Vantor's lists, "NameAndRecNumber" on the wire.
struct ListRow {
  std::optional<QString> name{};
  std::optional<QString> id{};      ///< the record's identifier
  std::optional<QString> parent{};  ///< the parent record's identifier; none for a top-level record

  friend bool operator==(const ListRow&, const ListRow&) = default;
};

/// What an archive can hold. Texts and arrays share what they hold with their copies.
class ArchiveValue {
 public:
  using Array = QList<ArchiveValue>;

  ArchiveValue() = default;  ///< nil
  ArchiveValue(NilMarker marker) : value_(marker) {}
  ArchiveValue(bool truth) : value_(truth) {}
  ArchiveValue(qint64 number) : value_(number) {}
  ArchiveValue(double number) : value_(number) {}
  ArchiveValue(QString text) : value_(std::move(text)) {}
  ArchiveValue(Array elements) : value_(std::move(elements)) {}
  ArchiveValue(ListRow row) : value_(std::move(row)) {}
  ArchiveValue(const char16_t*) = delete;  // would become a truth value

  [[nodiscard]] bool isNil() const { return std::holds_alternative<std::monostate>(value_); }
  [[nodiscard]] bool isNilMarker() const { return std::holds_alternative<NilMarker>(value_); }

  /// The value as one of its kinds; null when it is another kind.
  template <class Kind>
  [[nodiscard]] const Kind* as() const {
    return std::get_if<Kind>(&value_);
  }
  template <class Kind>
  [[nodiscard]] Kind* as() {
    return std::get_if<Kind>(&value_);
  }

  /// Calls the visitor with the kind that it is; nil is a `std::monostate`.
  template <class Visitor>
  decltype(auto) visit(Visitor&& visitor) const {
    return std::visit(std::forward<Visitor>(visitor), value_);
  }

  friend bool operator==(const ArchiveValue& a, const ArchiveValue& b) { return a.value_ == b.value_; }

 private:
  std::variant<std::monostate, NilMarker, bool, qint64, double, QString, Array, ListRow> value_;
};

}  // namespace pendra
