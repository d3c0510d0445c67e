#include "platform/UnaskedAlerts.h"

namespace pendra {

int UnaskedAlerts::runAlert(const Alert& alert) {
  if (!silence_) return shown_.runAlert(alert);
  silence_->notAsked_.push_back(alert);
  return kFirstButton + static_cast<int>(alert.buttons.size()) - 1;
}

void UnaskedAlerts::beginSheet(const Alert& alert, std::function<void(int)> answered) {
  if (!silence_) shown_.beginSheet(alert, std::move(answered));
}

}  // namespace pendra
