#pragma once

#include "ui/AppWindow.h"

class QCheckBox;

namespace pendra {

/// "About Pendra": what this is and which version.
class AboutBox final : public AppWindow {
 public:
  /// `version` is shown as it stands.
  AboutBox(const WindowFrame& frame, const QString& version);
};

/// "Welcome to Pendra": where to begin.
class WelcomeWindow final : public AppWindow {
 public:
  explicit WelcomeWindow(const WindowFrame& frame);
};

/// "Preferences": three check boxes that act at once.
class PreferencesWindow final : public AppWindow {
 public:
  explicit PreferencesWindow(const WindowFrame& frame);

 private:
  QCheckBox* addPreference(const QString& key, const QString& title, const QString& explanation,
                           bool byDefault);

  UserDefaults& defaults_;
  std::vector<Notifier::Subscription> observations_;
};

}  // namespace pendra
