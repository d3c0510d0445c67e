#pragma once

#include <QObject>
#include <functional>
#include <memory>

#include "document/Windows.h"

namespace pendra {

class AppWindow;
class CommandTarget;
class ListEditor;
class ListEditorWindow;
class ReportWindow;
struct LinkServices;
class Session;
class TimerWindowController;
class UndoHistory;
struct WindowFrame;

/// Makes the windows, owns them, and ends the program when the last one was closed.
class WindowRegistry final : public QObject, public Windows {
 public:
  WindowRegistry();
  ~WindowRegistry() override;

  /// Given once the session exists, which needs the loader first.
  void connectTo(Session& session, CommandTarget& target, LinkServices& link, UndoHistory& history,
                 std::function<void()> terminate);

  void show(WindowKind kind) override;
  [[nodiscard]] bool isOpen(WindowKind kind) const override;
  void close(WindowKind kind) override;
  [[nodiscard]] bool finishEditing() override;

  /// Says whether the timer window hides when it is closed, with everything as it is.
  void setKeeper(std::function<bool()> keeps) { keeps_ = std::move(keeps); }
  /// Hides the timer window, with everything as it is.
  void hideTimerWindow();
  /// Whether the timer window stands there unseen.
  [[nodiscard]] bool isHidden() const;
  /// Shows what is open, and where to begin when nothing is; whatever asks stays in front. By the leave that
  /// the desktop gave to whoever asks for it, where it gave one.
  void bringToFront(const QString& activation = {});

  /// Lets every window go, while the session still stands.
  void closeAll();
  /// The windows that commands act on; none while they are not open.
  [[nodiscard]] TimerWindowController* timerWindow() const;
  [[nodiscard]] ListEditor* customerList() const;
  [[nodiscard]] ListEditor* servicesList() const;
  /// The list at the front, else the one that is open.
  [[nodiscard]] ListEditorWindow* listInFront() const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Open;
  template <class Window>
  void retire(std::unique_ptr<Window>& window);
  void makeTimerWindow();
  [[nodiscard]] std::unique_ptr<ReportWindow> makeReport();
  /// The window of that kind beside the timer window; none while it is not open.
  [[nodiscard]] AppWindow* windowBeside(WindowKind kind) const;
  void endWithoutWindows();
  bool helpFor(QObject* watched);
  bool hideInstead(QObject* watched, QEvent& closing);
  bool takesDocument(QEvent& drag);
  template <class Window, class Make>
  void open(std::unique_ptr<Window>& place, const Make& make);
  [[nodiscard]] WindowFrame frame() const;

  Session* session_ = nullptr;
  CommandTarget* target_ = nullptr;
  LinkServices* link_ = nullptr;
  UndoHistory* history_ = nullptr;
  std::function<void()> terminate_;
  std::function<bool()> keeps_;
  std::unique_ptr<Open> open_;
};

}  // namespace pendra
