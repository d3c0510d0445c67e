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
  content_ = content;
  frame_->layout()->addWidget(content);
  giveAccessKeys(*this);
}

/// Where the window does not say itself where the keyboard begins it is in the content. Else it would be in a
/// notice that happens to stand, and Space would do what that offers.
void AppWindow::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  if (focusWidget() || !content_) return;
  for (QWidget* next = content_; next != frame_; next = next->nextInFocusChain()) {
    const bool takesKeys = next->focusPolicy() & Qt::TabFocus && next->isEnabled() && next->isVisibleTo(this);
    if (takesKeys && (next == content_ || content_->isAncestorOf(next))) return next->setFocus();
  }
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
