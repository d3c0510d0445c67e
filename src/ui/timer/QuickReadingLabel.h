#pragma once

#include <QLabel>

#include "ui_core/QuickReadingTexts.h"

namespace pendra {

/// The sign of the Return key, which stands at what that takes.
void drawReturnKey(QPainter& painter, const QPointF& centre, const QColor& colour);

/// What Return will do, and for what, on a plate with the key's sign; below it in red what will probably be
/// wrong. What is not understood is said in red with the sign of a warning, without a plate.
class QuickReadingLabel final : public QLabel {
  Q_OBJECT
 public:
  explicit QuickReadingLabel(QWidget* parent = nullptr);

  void say(const QuickReadingTexts& texts);
  /// Whether Return does this, or takes a completion instead.
  void setChosen(bool chosen);

  [[nodiscard]] bool hasHeightForWidth() const override { return true; }
  [[nodiscard]] int heightForWidth(int width) const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  struct Line;
  [[nodiscard]] std::vector<Line> lines() const;
  [[nodiscard]] int plateHeight(int width) const;

  QuickReadingTexts texts_;
  bool chosen_ = true;
};

}  // namespace pendra
