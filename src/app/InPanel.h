#pragma once

#include "platform/DesktopPanel.h"
#include "ui/PanelIcon.h"
#include "ui_core/Menus.h"

namespace pendra {

class Commands;
class WindowRegistry;

/// Pendra in the panel of the desktop, and the window that closes into it.
class InPanel {
 public:
  /// All must outlive it. `busyWith` says why nothing may be changed now; empty when it may.
  InPanel(Session& session, DesktopPanel& panel, WindowRegistry& windows, Commands& commands,
          std::function<QString()> busyWith);

  /// What the key does that acts from everywhere.
  void startOrStop() { state_.startOrStop(); }
  /// Whether the timer window hides instead of closing: the user wants it, and can get it back.
  [[nodiscard]] bool keepsWindow() const;

 private:
  void inWindows(Commands& commands, Command command);
  void bringBack();

  Session& session_;
  DesktopPanel& panel_;
  WindowRegistry& windows_;
  PanelState state_;
  PanelIcon icon_;
  Notifier::Subscription panels_;
};

}  // namespace pendra
