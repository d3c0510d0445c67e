#include "ui/FrontWindow.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>

namespace pendra {

QWidget* frontWindow() {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  // Just after an alert has closed no window is active, or it still is; the one before it is meant.
  static QPointer<QWidget> last;
  if (QWidget* active = QApplication::activeWindow(); active && active->isVisible()) return last = active;
  if (last && last->isVisible()) return last;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    const Qt::WindowType type = window->windowType();
    if (window->isVisible() && (type == Qt::Window || type == Qt::Dialog)) return window;
  }
  return nullptr;
}

}  // namespace pendra
