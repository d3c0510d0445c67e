#pragma once

#include <functional>

#include "LinkServices.h"
#include "WindowRegistry.h"
#include "document/Documents.h"
#include "ui_core/ListEditor.h"
#include "ui_core/UndoHistory.h"

namespace pendra {

class GlobalKey;

/// What the rules of the commands look at, and what their deeds act on.
struct CommandContext {
  Session& session;
  WindowRegistry& windows;
  LinkServices& link;
  UndoHistory& history;
  const std::function<void()>& terminate;
  GlobalKey* key = nullptr;   ///< none where the desktop is not asked for one
  QWidget* sender = nullptr;  ///< the window whose menu or control asked; none for no window

  /// The windows that are open; none otherwise.
  [[nodiscard]] TimerWindowController* timer() const { return windows.timerWindow(); }
  [[nodiscard]] ListEditor* customers() const { return windows.customerList(); }
  [[nodiscard]] ListEditor* services() const { return windows.servicesList(); }
};

}  // namespace pendra
