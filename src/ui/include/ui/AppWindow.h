#pragma once

#include <QMainWindow>

#include "document/Session.h"

namespace pendra {

class CommandTarget;

/// What every window of the program has: the whole menu bar, and the line for what is worth knowing.
struct WindowFrame {
  Session& session;
  CommandTarget& target;
};

/// A top-level window beside the timer window: title, menu bar, notice line, content.
class AppWindow : public QMainWindow {
 public:
  AppWindow(const WindowFrame& frame, const QString& title);

  /// The program closes the window: what the user would be asked is not asked.
  virtual void closeUnasked() { close(); }
  void bringToFront();

  /// Told once, after the user or the program closed the window.
  void setClosed(std::function<void()> closed) { closed_ = std::move(closed); }

 protected:
  /// Puts the content below the notice line.
  void setContent(QWidget* content);
  /// Shows no menu bar; its keys work all the same.
  void hideMenuBar();
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void standOverSheet();

  QWidget* frame_ = nullptr;
  QWidget* content_ = nullptr;
  std::function<void()> closed_;
};

}  // namespace pendra
