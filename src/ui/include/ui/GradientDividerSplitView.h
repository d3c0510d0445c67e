#pragma once

#include <QGradientStops>
#include <QSplitter>
#include <optional>

namespace pendra {

/// A split view whose divider is painted with a gradient across its thickness.
class GradientDividerSplitView : public QSplitter {
  Q_OBJECT
 public:
  explicit GradientDividerSplitView(QWidget* parent = nullptr);

  /// From the palette's control background to its control shadow, unless one was set.
  [[nodiscard]] QGradientStops dividerGradient() const;
  void setDividerGradient(const QGradientStops& gradient);
  /// The gradient, and on it the divider's ordinary drawing.
  void drawDividerInRect(QPainter& painter, const QRect& rect) const;

 protected:
  QSplitterHandle* createHandle() override;

 private:
  std::optional<QGradientStops> ownGradient_;
};

}  // namespace pendra
