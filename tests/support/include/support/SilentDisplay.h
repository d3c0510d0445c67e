#pragma once

#include "ui_core/TimerState.h"

namespace pendra {

/// The display of a timer window that nobody looks at.
class SilentDisplay final : public TimerDisplay {
 public:
  void showElapsedTime(const QString&) override {}
  void showCustomerJobLabel(const QString&) override {}
  void showMainButton(bool) override {}
  void hideSendTime() override {}
  void showActivitySheet(bool) override {}
};

}  // namespace pendra
