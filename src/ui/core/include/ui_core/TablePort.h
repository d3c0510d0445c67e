#pragma once
// The logic of a list owns its rows and their order (a RowTable); the table that shows them owns the
// selection. Between them stands this port, so that every rule of a list is tested without a window.

#include <vector>

namespace pendra {

/// What a list of rows asks of the table that shows it. Row indexes count from 0; -1 is none.
class TablePort {
 public:
  virtual ~TablePort() = default;

  /// The rows were replaced or sorted anew. The table keeps its selection, by object, and reports nothing.
  virtual void reloadData() = 0;
  /// One row's cells changed.
  virtual void redrawRow(int row) = 0;

  /// The selected rows, ascending.
  [[nodiscard]] virtual std::vector<int> selectedRows() const = 0;
  [[nodiscard]] int selectedRow() const {
    const auto rows = selectedRows();
    return rows.empty() ? -1 : rows.front();
  }
  /// Makes this row the only selected one; reported like a selection by the user, also when it is the
  /// same one again.
  virtual void selectRow(int row) = 0;
  /// Deselects all; reported when something was selected.
  virtual void clearSelection() = 0;
};

}  // namespace pendra
