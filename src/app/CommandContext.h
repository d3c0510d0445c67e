#pragma once

#include <functional>

#include "LinkServices.h"
#include "WindowLoader.h"
#include "document/Documents.h"
#include "ui_core/ListEditor.h"
#include "ui_core/UndoHistory.h"

namespace pendra {

/// What the rules of the commands look at, and what their deeds act on.
struct CommandContext {
  Session& session;
  WindowLoader& windows;
  LinkServices& link;
  UndoHistory& history;
  const std::function<void()>& terminate;
  QWidget* sender = nullptr;  ///< the window whose menu or control asked; none for no window

  /// The windows that are open; none otherwise.
  [[nodiscard]] TimerWindowController* timer() const { return windows.timerWindow(); }
  [[nodiscard]] ListEditor* customers() const { return listEditorOf(session.customerListController); }
  [[nodiscard]] ListEditor* services() const { return listEditorOf(session.servicesListController); }
  /// The list editor at the front, else the one that is open.
  [[nodiscard]] ListEditor* listInFront() const;
};

}  // namespace pendra
