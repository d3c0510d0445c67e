#pragma once
// What the menu bar asks of a list editor, whichever of the two it is. A list editor acts on its selected row
// and on the rows that it lists, never on what a search has left out.

namespace pendra {

/// A list editor as the program's commands see it.
class ListEditor {
 public:
  virtual ~ListEditor() = default;

  /// Asks for confirmation and deletes what the selected row shows.
  virtual void deleteRow() = 0;
  /// Whether a row is selected that is there.
  [[nodiscard]] virtual bool canDelete() const = 0;
  virtual void markAllShown() = 0;
  virtual void markNoneShown() = 0;
};

}  // namespace pendra
