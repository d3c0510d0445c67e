#pragma once
// What the menu bar asks of a list editor, whichever of the two it is. A list editor acts on its selected row
// and on the rows that it lists, never on what a search has left out.

#include "document/Windows.h"

namespace pendra {

/// A list editor as the program's commands see it.
class ListEditor {
 public:
  virtual ~ListEditor() = default;

  /// Asks for confirmation and deletes what the selected row shows.
  virtual void deleteRow() = 0;
  /// Whether a row is selected that is there.
  [[nodiscard]] virtual bool isDeleteOK() const = 0;
  virtual void markAllShown() = 0;
  virtual void markNoneShown() = 0;
};

/// The list editor that a window of the session is; none for none and for another kind of window.
[[nodiscard]] inline ListEditor* listEditorOf(AuxiliaryWindow* window) {
  return dynamic_cast<ListEditor*>(window);
}

class Session;

/// Lists > Customers and Jobs: opens the editor, or brings the one that is open to the front.
void showCustomerList(Session& session);
/// Lists > Service Items: the same for its editor.
void showServicesList(Session& session);

}  // namespace pendra
