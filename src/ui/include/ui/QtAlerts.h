#pragma once

#include "platform/Alerts.h"
#include "platform/ModalDepth.h"

namespace pendra {

/// Alerts as message boxes. Return presses the first button, except where that one destroys something:
/// then it presses the last.
class QtAlerts final : public Alerts {
 public:
  /// Application-modal alerts are counted there; it must outlive the alerts.
  explicit QtAlerts(ModalDepth& modals) : modals_(modals) {}

  int runAlert(const Alert& alert) override;
  void beginSheet(const Alert& alert, std::function<void(int)> answered) override;

 private:
  ModalDepth& modals_;
};

}  // namespace pendra
