#pragma once
// How a person has arranged a table: by what it is sorted, which columns are shown, in which order, and how
// wide. It is remembered as one line of text, which a person could read and which may come from another
// version.

#include <QMap>

#include "ui_core/TableModel.h"

namespace pendra {

struct TableArrangement {
  SortOrder sort{};
  QStringList order{};  ///< all columns by their identifiers, from the left; empty: as they are by themselves
  QStringList hidden{};
  QMap<QString, int> widths{};  ///< of those that were set by hand
  friend bool operator==(const TableArrangement&, const TableArrangement&) = default;
};

/// "sort date down; order state customer; hidden notes end; widths customer 180"; what is as usual is left
/// out.
[[nodiscard]] QString textOf(const TableArrangement& arrangement);
/// None when the text is not of that form or names something that the table does not have.
[[nodiscard]] std::optional<TableArrangement> readArrangement(const QString& text, const TableModel& table);

}  // namespace pendra
