#pragma once

#include <QLineEdit>
#include <functional>
#include <optional>

#include "platform/DayReading.h"

namespace pendra {

/// A field for a date in words, with a calendar to pick one from. A text that its reader cannot read is
/// marked once it stands, and stops nobody.
class DateField : public QLineEdit {
  Q_OBJECT
 public:
  explicit DateField(QWidget* parent = nullptr);
  /// `days` says when and where the text is read.
  void setReader(std::function<DayReader()> days);
  [[nodiscard]] bool isUnreadable() const;
  /// Opens the calendar below the field. Escape closes it; what is picked there stands in the field as if it
  /// had been typed.
  void openCalendar();

 Q_SIGNALS:
  void unreadableChanged();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  [[nodiscard]] std::optional<DaySpan> reading() const;
  [[nodiscard]] bool canRead() const { return text().isEmpty() || reading(); }
  void lookAtText();
  void setUnreadable(bool unreadable);
  [[nodiscard]] bool isOnSign(const QPoint& place) const;

  std::function<DayReader()> days_;
};

}  // namespace pendra
