#pragma once

#include <vector>

#include "platform/Alerts.h"

namespace pendra {

/// Alerts that can be kept from the user: what is done for another program asks nobody.
class UnaskedAlerts final : public Alerts {
 public:
  /// `shown` must outlive it.
  explicit UnaskedAlerts(Alerts& shown) : shown_(shown) {}

  int runAlert(const Alert& alert) override;
  void beginSheet(const Alert& alert, std::function<void(int)> answered) override;

  /// While it lives every question is turned back as with Escape, and remembered; news are left out.
  class [[nodiscard]] Silence {
   public:
    explicit Silence(UnaskedAlerts& alerts) : alerts_(alerts) { alerts_.silence_ = this; }
    ~Silence() { alerts_.silence_ = nullptr; }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

    [[nodiscard]] const std::vector<Alert>& notAsked() const { return notAsked_; }

   private:
    friend class UnaskedAlerts;
    UnaskedAlerts& alerts_;
    std::vector<Alert> notAsked_;
  };

 private:
  Alerts& shown_;
  Silence* silence_ = nullptr;
};

}  // namespace pendra
