#pragma once

#include "ui/AppWindow.h"

namespace pendra {

/// A window of words and a few buttons: as large as they need, gone with Escape.
class ShellWindow : public AppWindow {
 public:
  ShellWindow(const WindowFrame& frame, const QString& title);
};

/// "About Pendra": what this is and which version.
class AboutBox final : public ShellWindow {
 public:
  /// `version` is shown as it stands.
  AboutBox(const WindowFrame& frame, const QString& version);
};

/// "Welcome to Pendra": where to begin.
class WelcomeWindow final : public ShellWindow {
 public:
  explicit WelcomeWindow(const WindowFrame& frame);
};

}  // namespace pendra
