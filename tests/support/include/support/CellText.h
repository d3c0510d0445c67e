#pragma once

#include "ui_core/RowTable.h"

namespace pendra {

/// What a table shows in a column of that identifier; empty where there is no such column or row.
template <class Row>
QString cellText(const RowTable<Row>& table, QStringView identifier, int row) {
  const auto column = table.columnOf(identifier);
  return column ? table.text(row, *column) : QString();
}

}  // namespace pendra
