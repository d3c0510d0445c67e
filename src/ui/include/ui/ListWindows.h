#pragma once

#include <memory>

#include "ui/AppWindow.h"
#include "ui_core/ListEditor.h"

namespace pendra {

/// A list in its window, kept by keyboard or mouse.
class ListEditorWindow : public AppWindow, public ListEditor {
 public:
  using AppWindow::AppWindow;
  /// Stores what is being typed; false when it was refused, which the user has been told.
  [[nodiscard]] virtual bool finishEditing() = 0;
};

/// "Customers and Jobs".
[[nodiscard]] std::unique_ptr<ListEditorWindow> makeCustomerList(const WindowFrame& frame);
/// "Service Items".
[[nodiscard]] std::unique_ptr<ListEditorWindow> makeServicesList(const WindowFrame& frame);

}  // namespace pendra
