#pragma once

#include "ListWindow.h"
#include "ui_core/ServicesListController.h"

namespace pendra {

/// The window "Service Items".
class ServicesListWindow final : public ListWindow {
  Q_OBJECT
 public:
  explicit ServicesListWindow(const WindowFrame& frame);

 protected:
  void addNew() override;

 private:
  ServicesListController* services_;  // owned by the base
};

}  // namespace pendra
