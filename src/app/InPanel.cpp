#include "InPanel.h"

#include "Commands.h"
#include "WindowRegistry.h"
#include "platform/Preferences.h"

namespace pendra {

InPanel::InPanel(Session& session, DesktopPanel& panel, WindowRegistry& windows, Commands& commands,
                 std::function<QString()> busyWith)
    : session_(session),
      panel_(panel),
      windows_(windows),
      state_(session, std::move(busyWith)),
      icon_(state_, panel,
            {.quickEntry = [this, &commands] { inWindows(commands, Command::QuickEntry); },
             .open = [&windows] { windows.bringToFront(); },
             .quit = [this, &commands] { inWindows(commands, Command::Quit); }}),
      panels_(panel.changes().observe([this] { bringBack(); })) {
  windows_.setKeeper([this] { return keepsWindow(); });
}

bool InPanel::keepsWindow() const {
  return panel_.isThere() && session_.ports().defaults.boolean(preferences::kKeepInPanel);
}

/// What goes on in the windows, where it is also seen why it cannot.
void InPanel::inWindows(Commands& commands, Command command) {
  if (command != Command::Quit || !state_.refusal().isEmpty()) windows_.bringToFront();
  if (state_.refusal().isEmpty()) commands.perform(command, nullptr);
}

/// What was hidden in a panel that has gone could not be found again.
void InPanel::bringBack() {
  if (!panel_.isThere() && windows_.isHidden()) windows_.show(WindowKind::Timer);
}

}  // namespace pendra
