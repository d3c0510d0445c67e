#pragma once

#include <QTimer>
#include <array>

#include "ui/ShellWindows.h"
#include "ui_core/AwayDecision.h"

class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace pendra {

class AwayStrip;

/// "Time Away": asks what becomes of the time in which nobody was there, and blocks nothing meanwhile. Shows
/// the latest absence that waits for an answer, and goes when none does.
class TimeAwayWindow final : public ShellWindow {
 public:
  explicit TimeAwayWindow(const WindowFrame& frame);

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void makeChoices(QLayout& column);
  void makeButtons(QLayout& column);
  void follow();
  /// Takes up what waits for an answer now.
  void update();
  void fillActivities();
  /// Writes what the choice would do, as of now.
  void showChoice();
  void answer();
  [[nodiscard]] AwayChoice choice() const;

  struct Way {
    QRadioButton* button = nullptr;
    QLabel* explanation = nullptr;
  };

  Session& session_;
  AwayEntries shown_;
  std::vector<Ref<Activity>> activities_;  ///< in the order of the combo box
  QLabel* heading_ = nullptr;
  QLabel* words_ = nullptr;
  AwayStrip* strip_ = nullptr;
  std::array<Way, 3> ways_;
  QComboBox* activity_ = nullptr;
  QPushButton* deed_ = nullptr;
  QTimer tick_;
  Notifier::Subscription documents_;
  Subscription edits_;
};

}  // namespace pendra
