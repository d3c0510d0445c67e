#pragma once

#include <functional>
#include <memory>

#include "document/Windows.h"
#include "ui_core/Menus.h"

namespace pendra {

class CommandTarget;
class ListEditor;
class Session;
class TimerWindowController;
struct WindowFrame;

/// Makes the windows, owns them, and ends the program when the last one was closed.
class WindowLoader final : public InterfaceLoader {
 public:
  WindowLoader();
  ~WindowLoader() override;

  /// Given once the session exists, which needs the loader first.
  void connectTo(Session& session, MenuModel& menus, CommandTarget& target, std::function<void()> terminate);

  void load(Interface interface) override;
  void showPreferences();
  /// Ends the program, after the current events, when neither a document nor a window is left.
  void endWithoutWindows();

  /// The windows that are open; none otherwise.
  [[nodiscard]] TimerWindowController* timerWindow() const;
  [[nodiscard]] ListEditor* customerList() const;
  [[nodiscard]] ListEditor* servicesList() const;
  /// The list editor with the keyboard focus, else the one that is open.
  [[nodiscard]] ListEditor* listInFront() const;

 private:
  struct Open;
  void loadTimerWindow();
  template <class Window, class... Arguments>
  Window& open(std::unique_ptr<Window>& place, Arguments&&... arguments);
  [[nodiscard]] WindowFrame frame() const;

  Session* session_ = nullptr;
  MenuModel* menus_ = nullptr;
  CommandTarget* target_ = nullptr;
  std::function<void()> terminate_;
  std::unique_ptr<Open> open_;
};

}  // namespace pendra
