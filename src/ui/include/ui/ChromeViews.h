#pragma once
// The header and the footer fill the view that contains them, and are never lower than a height of their own:
// in a window too small for them, the header is cut off at the bottom and the footer at the top.

#include <QRectF>
#include <QWidget>

namespace pendra {

inline constexpr double kTopViewHeight = 124.0;
inline constexpr double kBottomViewHeight = 247.0;

/// Where the header stands in a container of that size; y counts down from the container's top.
[[nodiscard]] QRectF topViewFrame(double x, const QSizeF& container);
/// Where the footer stands; `bottomOrigin` is how far its bottom edge lies above the container's.
[[nodiscard]] QRectF bottomViewFrame(double x, double bottomOrigin, const QSizeF& container);

/// A view that places itself anew whenever the view that contains it changes its size.
class ContainedView : public QWidget {
  Q_OBJECT
 public:
  explicit ContainedView(QWidget* parent);
  /// Takes the place that fits the container's present size.
  void followContainer(const QSize& oldSize);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  [[nodiscard]] virtual QRectF frameIn(const QSizeF& container) const = 0;
};

/// The header of the timer window.
class PendraTopView : public ContainedView {
  Q_OBJECT
 public:
  using ContainedView::ContainedView;

 protected:
  [[nodiscard]] QRectF frameIn(const QSizeF& container) const override;
};

/// The footer of the timer window.
class PendraBottomView : public ContainedView {
  Q_OBJECT
 public:
  using ContainedView::ContainedView;

 protected:
  [[nodiscard]] QRectF frameIn(const QSizeF& container) const override;

 private:
  double bottomOrigin_ = 0;
};

}  // namespace pendra
