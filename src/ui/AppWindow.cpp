#include "ui/AppWindow.h"

#include "ui/AccessKeys.h"

#include <QApplication>
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

void AppWindow::setContent(QWidget* content) {
  frame_->layout()->addWidget(content);
  giveAccessKeys(*this);
}

void AppWindow::hideMenuBar() { menuBar()->setFixedHeight(0); }

/// A window that a sheet opens takes everything until it is closed, as the sheet does below it; the commands
/// in its menus are for when nothing waits.
void AppWindow::standOverSheet() {
  hide();
  setWindowModality(Qt::ApplicationModal);
  menuBar()->setEnabled(false);
}

void AppWindow::bringToFront() {
  const QWidget* sheet = QApplication::activeModalWidget();
  if (sheet && sheet != this && sheet->windowModality() == Qt::ApplicationModal) standOverSheet();
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
