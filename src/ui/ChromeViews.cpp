#include "ui/ChromeViews.h"

#include <QResizeEvent>

namespace pendra {

QRectF topViewFrame(double x, const QSizeF& container) {
  const double height = container.height() > kTopViewHeight ? container.height() : kTopViewHeight;
  return {x, 0, container.width(), height};
}

QRectF bottomViewFrame(double x, double bottomOrigin, const QSizeF& container) {
  const double height = container.height() > kBottomViewHeight ? container.height() : kBottomViewHeight;
  return {x, container.height() - bottomOrigin - height, container.width(), height};
}

ContainedView::ContainedView(QWidget* parent) : QWidget(parent) {
  Q_ASSERT(parent);
  parent->installEventFilter(this);
}

bool ContainedView::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parent() && event->type() == QEvent::Resize) {
    followContainer(static_cast<QResizeEvent*>(event)->oldSize());
  }
  return QWidget::eventFilter(watched, event);
}

void ContainedView::followContainer(const QSize&) { setGeometry(frameIn(parentWidget()->size()).toRect()); }

QRectF PendraTopView::frameIn(const QSizeF& container) const { return topViewFrame(x(), container); }

QRectF PendraBottomView::frameIn(const QSizeF& container) const {
  return bottomViewFrame(x(), bottomOrigin_, container);
}

}  // namespace pendra
