#pragma once

#include "platform/Alerts.h"
#include "platform/ModalDepth.h"

class QWidget;

namespace pendra {

/// Alerts as message boxes. Return presses the first button, except where that one destroys something:
/// then it presses the last. The one that destroys is drawn as such and stands out never.
class QtAlerts final : public Alerts {
 public:
  /// Application-modal alerts are counted there; it must outlive the alerts.
  explicit QtAlerts(ModalDepth& modals) : modals_(modals) {}

  /// Says where the timer window is found, which is none while it is not open.
  void setTimerWindow(std::function<QWidget*()> timerWindow) { timerWindow_ = std::move(timerWindow); }

  int runAlert(const Alert& alert) override;
  void beginSheet(const Alert& alert, std::function<void(int)> answered) override;

 private:
  [[nodiscard]] QWidget* windowOf(const Alert& alert) const;

  ModalDepth& modals_;
  std::function<QWidget*()> timerWindow_;
};

}  // namespace pendra
