#pragma once
// The bars are one widget that paints them, and for assistive technology one object for each of them, which
// says what the eye sees of it and can be pressed.

#include <QWidget>

#include "HoursPainter.h"

namespace pendra {

class HoursChart final : public QWidget {
  Q_OBJECT
 public:
  explicit HoursChart(QWidget* parent = nullptr);

  /// Shows the report, which is kept until the next one. `hatches` as in HoursLook.
  void setReport(const Report& report, QDate today, bool hatches);
  /// What the chart says when there are no bars to be seen.
  void setEmptyText(const QString& text);
  [[nodiscard]] const Report& report() const { return report_; }
  [[nodiscard]] int bars() const { return static_cast<int>(report_.bars.size()); }
  /// The bar that the keyboard is at, or the pointer over; -1 for none.
  [[nodiscard]] int barInQuestion() const;
  [[nodiscard]] int currentBar() const { return current_; }
  void setCurrentBar(int bar);
  /// As a click on the bar.
  void pressBar(int bar);
  [[nodiscard]] QRect columnOf(int bar) const;
  [[nodiscard]] int barAt(const QPoint& point) const;
  /// "Wed 25 Nov 2026", and all that is to be said of it.
  [[nodiscard]] QString nameOf(int bar) const;
  [[nodiscard]] QString descriptionOf(int bar) const;
  [[nodiscard]] QSize sizeHint() const override { return {800, 230}; }
  [[nodiscard]] QSize minimumSizeHint() const override { return {320, 140}; }

 Q_SIGNALS:
  /// Another bar is in question, or what it shows is other now.
  void questionChanged();
  void barPressed(int bar);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  [[nodiscard]] HoursPainter painterOfBars() const;
  void setHovered(int bar);
  void tellFocus();

  Report report_;
  QDate today_;
  bool hatches_ = true;
  QString emptyText_;
  int current_ = -1;
  int hovered_ = -1;
};

}  // namespace pendra
