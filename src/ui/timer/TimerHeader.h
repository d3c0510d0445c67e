#pragma once

#include <QWidget>

class QBoxLayout;
class QLabel;
class QPushButton;

namespace pendra {

class BigButton;
class MenuButton;
class RunningPills;
class ShownText;
class TabularLabel;

/// The head of the timer window: button, time and name of the selected activity, beside them what else runs.
class TimerHeader final : public QWidget {
  Q_OBJECT
 public:
  TimerHeader();

  /// Less high, as on a low screen.
  void setLow(bool low);
  /// The button, the time and its weight, and the words that say that it is the length of a last entry.
  void showRunning(bool running);
  void showElapsedTime(const QString& text);
  void showIsLastEntry(bool isLastEntry);
  void showName(const QString& name);

  BigButton* startStopButton;
  TabularLabel* elapsedTimeDisplay;
  QLabel* lastEntry;
  ShownText* customerJobLabel;
  MenuButton* latestButton;
  RunningPills* pills;
  QPushButton* addActivityButton;
  QPushButton* submitTimeButton;

 protected:
  bool event(QEvent* event) override;

 private:
  [[nodiscard]] QBoxLayout* makeTexts();
  void fitHeight();

  bool low_ = false;
};

}  // namespace pendra
