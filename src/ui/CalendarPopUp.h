#pragma once

#include <QCalendarWidget>
#include <QFrame>

namespace pendra {

/// A calendar below a field, from which one day is picked by mouse or keyboard.
class CalendarPopUp final : public QFrame {
  Q_OBJECT
 public:
  CalendarPopUp(QWidget& field, QDate day, Qt::DayOfWeek weekBegins);
  /// Shows it; it goes with the pick, with Escape or a press elsewhere.
  void open();

 Q_SIGNALS:
  void picked(QDate day);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void wearColours();

  QWidget& field_;
  QCalendarWidget* calendar_;
};

}  // namespace pendra
