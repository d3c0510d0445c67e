#pragma once

#include <QGradientStops>
#include <QSplitter>

namespace pendra {

/// A split view whose divider is painted with a gradient across its thickness.
class GradientDividerSplitView : public QSplitter {
  Q_OBJECT
 public:
  explicit GradientDividerSplitView(QWidget* parent = nullptr);

  /// From the palette's control background to its control shadow.
  [[nodiscard]] QGradientStops dividerGradient() const;
  /// The gradient, and on it the divider's ordinary drawing.
  void drawDividerInRect(QPainter& painter, const QRect& rect) const;

 protected:
  QSplitterHandle* createHandle() override;
};

}  // namespace pendra
