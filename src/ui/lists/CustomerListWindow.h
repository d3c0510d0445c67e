#pragma once

#include "ListWindow.h"
#include "ui_core/CustomerListController.h"

namespace pendra {

/// The window "Customers and Jobs".
class CustomerListWindow final : public ListWindow {
  Q_OBJECT
 public:
  explicit CustomerListWindow(const WindowFrame& frame);
  void standaloneChanged() override;

 protected:
  void addNew() override;

 private:
  void addJob();

  CustomerListController* customers_;  // owned by the base
};

}  // namespace pendra
