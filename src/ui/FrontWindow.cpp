#include "ui/FrontWindow.h"

#include <QApplication>
#include <QWidget>

namespace pendra {

QWidget* frontWindow() {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  if (QWidget* active = QApplication::activeWindow()) return active;
  for (QWidget* window : QApplication::topLevelWidgets()) {
    const Qt::WindowType type = window->windowType();
    if (window->isVisible() && (type == Qt::Window || type == Qt::Dialog)) return window;
  }
  return nullptr;
}

}  // namespace pendra
