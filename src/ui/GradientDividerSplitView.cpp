#include "ui/GradientDividerSplitView.h"

#include <QPainter>
#include <QSplitterHandle>

#include "ui/Theme.h"

namespace pendra {

namespace {

constexpr int kThickness = 8;
constexpr QSizeF kGrip(26, 3);

class Divider final : public QSplitterHandle {
 public:
  explicit Divider(GradientDividerSplitView* view)
      : QSplitterHandle(view->orientation(), view), view_(view) {}

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    view_->drawDividerInRect(painter, rect());
  }

 private:
  GradientDividerSplitView* view_;
};

void drawGrip(QPainter& painter, const QRect& rect, bool standing, const QColor& colour) {
  QRectF grip(QPointF(), standing ? kGrip.transposed() : kGrip);
  grip.moveCenter(QRectF(rect).center());
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colour);
  painter.drawRoundedRect(grip, kGrip.height() / 2, kGrip.height() / 2);
}

}  // namespace

GradientDividerSplitView::GradientDividerSplitView(QWidget* parent) : QSplitter(Qt::Vertical, parent) {
  setHandleWidth(kThickness);
  setChildrenCollapsible(false);
}

QGradientStops GradientDividerSplitView::dividerGradient() const {
  const Colours& colours = Theme::colours(palette());
  return {{0, colours.window},
          {1, Theme::isDark(palette()) ? colours.base : mixed(colours.line, colours.quiet, 0.2)}};
}

void GradientDividerSplitView::drawDividerInRect(QPainter& painter, const QRect& rect) const {
  const bool standing = orientation() == Qt::Horizontal;
  QLinearGradient gradient(rect.topLeft(), standing ? QPointF(rect.right() + 1, rect.top())
                                                    : QPointF(rect.left(), rect.bottom() + 1));
  gradient.setStops(dividerGradient());
  painter.fillRect(rect, gradient);
  const Colours& colours = Theme::colours(palette());
  drawGrip(painter, rect, standing, mixed(colours.line, colours.quiet, 0.6));
}

QSplitterHandle* GradientDividerSplitView::createHandle() { return new Divider(this); }

}  // namespace pendra
