#pragma once

#include "ui/ShellWindows.h"

class QStackedWidget;
class QTabBar;

namespace pendra {

/// "Preferences": a page for each subject, all of one height. Whatever is changed acts at once.
class PreferencesWindow final : public ShellWindow {
 public:
  explicit PreferencesWindow(const WindowFrame& frame);

 private:
  void addPage(const QString& title, QWidget* page);
  void addKeys();

  QTabBar* tabs_;
  QStackedWidget* pages_;
};

}  // namespace pendra
