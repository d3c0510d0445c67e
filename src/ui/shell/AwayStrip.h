#pragma once

#include <QWidget>

#include "ui_core/AwayDecision.h"

namespace pendra {

/// An entry as a strip, with the time in which nobody was there, and what would become of it.
class AwayStrip final : public QWidget {
 public:
  explicit AwayStrip(const Calendar& calendar);
  void show(const AwayShape& shape, AwayChoice choice);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void paintTimes(QPainter& painter, const QRectF& bar);
  [[nodiscard]] qreal place(const QRectF& bar, Instant instant) const;

  const Calendar& calendar_;
  AwayShape shape_{};
  AwayChoice choice_ = AwayChoice::Keep;
};

}  // namespace pendra
