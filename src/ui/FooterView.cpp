#include "ui/FooterView.h"

#include <QEvent>
#include <algorithm>

namespace pendra {

FooterView::FooterView(QWidget* container) : QWidget(container) { container->installEventFilter(this); }

bool FooterView::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parent() && event->type() == QEvent::Resize) {
    const QSize room = parentWidget()->size();
    const int height = std::max(room.height(), kFooterHeight);
    setGeometry(x(), room.height() - height, room.width(), height);
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace pendra
