#pragma once

#include <QString>
#include <optional>

namespace pendra {

/// A note as a table shows it: a marker where there is one, nothing where there is none.
struct Notes {
  std::optional<QString> text;

  /// The key under which `text` is archived.
  static constexpr const char* kTextKey = "text";

  /// The name of the marker's image; none without a text.
  [[nodiscard]] std::optional<QString> value() const {
    if (!text || text->isEmpty()) return std::nullopt;
    return QStringLiteral("Notesbox");
  }
  [[nodiscard]] std::optional<QString> description() const { return value(); }
  [[nodiscard]] Notes copyWithZone() const { return *this; }
};

}  // namespace pendra
