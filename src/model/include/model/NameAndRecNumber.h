#pragma once

#include <QString>
#include <optional>

namespace pendra {

/// A row of a list that Vantor sends.
struct NameAndRecNumber {
  std::optional<QString> name;
  std::optional<QString> vtObjectID;      ///< the record's identifier
  std::optional<QString> parentObjectID;  ///< the parent record's identifier; none for a top-level record

  static NameAndRecNumber initWithName(QString name, QString ID) {
    return {.name = std::move(name), .vtObjectID = std::move(ID), .parentObjectID = {}};
  }
  friend bool operator==(const NameAndRecNumber&, const NameAndRecNumber&) = default;
};

}  // namespace pendra
