#pragma once

#include <QDialog>
#include <QTimer>
#include <array>

#include "ui_core/EarlierTimer.h"

class QLineEdit;
class QPushButton;
class QRadioButton;
class QVBoxLayout;

namespace pendra {

class EchoLine;

/// "Start Earlier" or "Stop Earlier": asks as of when, and says meanwhile what that will do.
class EarlierSheet final : public QDialog {
 public:
  EarlierSheet(Session& session, Activity& activity, EarlierDeed deed, QWidget* window);

  /// Until it has been done or given up.
  void run();

 private:
  [[nodiscard]] QLayout* makeTyped();
  [[nodiscard]] QLayout* makeButtons(const QString& deed);
  QRadioButton* addChoice(EarlierMoment moment, const QString& text);
  [[nodiscard]] EarlierMoment moment() const;
  void showReading();
  void finish();

  Session& session_;
  EarlierTimer timer_;
  std::array<QRadioButton*, 5> choices_{};
  QLineEdit* time_ = nullptr;
  EchoLine* echo_ = nullptr;
  QPushButton* deed_ = nullptr;
  QTimer tick_;
};

/// Asks about the activity over `window`. Nothing happens without one, nor when it runs already (to start it)
/// or does not run (to stop it).
void askWhenEarlier(Session& session, Activity* activity, EarlierDeed deed, QWidget* window);

}  // namespace pendra
