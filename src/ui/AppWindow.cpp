#include "ui/AppWindow.h"

#include <QCloseEvent>
#include <QVBoxLayout>

#include "ui/MenuBar.h"
#include "ui/NoticeLine.h"
#include "ui/WindowTitle.h"

namespace pendra {

AppWindow::AppWindow(const WindowFrame& frame, const QString& title) : frame_(new QWidget) {
  setPlainTitle(*this, title);
  setMenuBar(new MenuBar(frame.target, this));
  auto* column = new QVBoxLayout(frame_);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(new NoticeLine(frame.session.notices()));
  setCentralWidget(frame_);
}

void AppWindow::setContent(QWidget* content) { frame_->layout()->addWidget(content); }

void AppWindow::bringToFront() {
  show();
  raise();
  activateWindow();
}

void AppWindow::closeEvent(QCloseEvent* event) {
  QMainWindow::closeEvent(event);
  if (event->isAccepted()) {
    if (const auto closed = std::exchange(closed_, {})) closed();
  }
}

}  // namespace pendra
