#pragma once

#include <QObject>
#include <functional>
#include <memory>

#include "document/Windows.h"

namespace pendra {

class CommandTarget;
struct LinkServices;
class Session;
class TimerWindowController;
struct WindowFrame;

/// Makes the windows, owns them, and ends the program when the last one was closed.
class WindowLoader final : public QObject, public InterfaceLoader {
 public:
  WindowLoader();
  ~WindowLoader() override;

  /// Given once the session exists, which needs the loader first.
  void connectTo(Session& session, CommandTarget& target, LinkServices& link,
                 std::function<void()> terminate);

  void load(Interface interface) override;
  void showPreferences();

  /// Lets every window go, while the session still stands.
  void closeAll();
  /// The timer window; none while it is not open.
  [[nodiscard]] TimerWindowController* timerWindow() const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Open;
  template <class Window>
  void retire(std::unique_ptr<Window>& window);
  void loadTimerWindow();
  void endWithoutWindows();
  bool helpFor(QObject* watched);
  template <class Window, class... Arguments>
  Window& open(std::unique_ptr<Window>& place, Arguments&&... arguments);
  [[nodiscard]] WindowFrame frame() const;

  Session* session_ = nullptr;
  CommandTarget* target_ = nullptr;
  LinkServices* link_ = nullptr;
  std::function<void()> terminate_;
  std::unique_ptr<Open> open_;
};

}  // namespace pendra
