#pragma once

#include "ui/AppWindow.h"

class QCheckBox;
class QLayout;

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

/// "Preferences": check boxes, a number and the folder of the backups, all of which act at once.
class PreferencesWindow final : public ShellWindow {
 public:
  explicit PreferencesWindow(const WindowFrame& frame);

 private:
  QCheckBox* addPreference(const QString& key, const QString& title, const QString& explanation,
                           bool byDefault);
  [[nodiscard]] QLayout* makeBackupFolder();
  /// After how long an absence is asked about.
  [[nodiscard]] QLayout* makeAwayMinutes();

  Session& session_;
  UserDefaults& defaults_;
  std::vector<Notifier::Subscription> observations_;
};

}  // namespace pendra
