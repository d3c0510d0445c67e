#include "ui/FrontWindow.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>
#include <algorithm>

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

bool isBlocked(const QWidget& window) {
  const auto windows = QApplication::topLevelWidgets();
  return std::any_of(windows.begin(), windows.end(), [&window](const QWidget* other) {
    if (!other->isVisible() || !other->isModal() || other->isAncestorOf(&window) || other == &window)
      return false;
    if (other->windowModality() == Qt::ApplicationModal) return true;
    const QWidget* blocked = other->parentWidget();
    return blocked && blocked->window() == window.window();
  });
}

}  // namespace pendra
