#pragma once

#include <QDialog>

namespace pendra {

/// The introduction of a first run: three sentences and one button, as a sheet of the timer window.
class IntroSheet final : public QDialog {
 public:
  explicit IntroSheet(QWidget* window);

  /// Shows the sheet and lets everything go on; it goes with its button.
  void show() { open(); }

 private:
  void endIntro() { accept(); }
};

}  // namespace pendra
