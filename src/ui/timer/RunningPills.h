#pragma once

#include <QAbstractButton>
#include <array>
#include <functional>

#include "ui_core/RunningTimers.h"

namespace pendra {

class MenuButton;

/// One timer that runs beside the selected activity: its sign, its name, its time. A press on the sign stops
/// it, elsewhere selects it. By keyboard and for assistive technology a press stops, and Return selects.
class RunningPill final : public QAbstractButton {
  Q_OBJECT
 public:
  RunningPill();
  void showTimer(const RunningTimer& timer);
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 Q_SIGNALS:
  void stopAsked(Activity* activity);
  void selectAsked(Activity* activity);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void enterEvent(QEnterEvent*) override { update(); }
  void leaveEvent(QEvent*) override { update(); }

 private:
  [[nodiscard]] bool isOnSign(const QPointF& place) const;

  Ref<Activity> activity_;
  QString name_;
  QString length_;
  bool besideSign_ = false;  ///< where the mouse went down
};

/// What runs beside the selected activity, in at most two lines; hidden while nothing does.
class RunningPills final : public QWidget {
  Q_OBJECT
 public:
  RunningPills();
  void showTimers(std::vector<RunningTimer> timers);

 Q_SIGNALS:
  void stopAsked(Activity* activity);
  void selectAsked(Activity* activity);

 private:
  void openMenu();

  static constexpr std::size_t kLines = 2;
  std::array<RunningPill*, kLines> pills_;
  MenuButton* more_;
  std::vector<RunningTimer> timers_;
};

}  // namespace pendra
