#include "ui/BusyPanel.h"

#include <QFrame>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

#include "platform/Text.h"
#include "ui/FrontWindow.h"
#include "ui/Theme.h"

namespace pendra {

BusyPanel::~BusyPanel() { stopSpinner(); }

void BusyPanel::startSpinner() {
  QWidget* window = frontWindow();
  if (panel_ || !window) return;
  window->setCursor(Qt::BusyCursor);  // only here: an alert that comes up meanwhile can be answered
  panel_ = new QFrame(window);
  panel_->setObjectName(QStringLiteral("spinner"));
  panel_->setAccessibleName(QFrame::tr("Progress"));
  panel_->setFrameShape(QFrame::StyledPanel);
  panel_->setAutoFillBackground(true);
  panel_->setBackgroundRole(QPalette::Base);
  words_ = new QLabel(QFrame::tr("Fetching the lists from Vantor…"));
  words_->setAlignment(Qt::AlignCenter);
  bar_ = new QProgressBar;
  bar_->setRange(0, 0);
  bar_->setTextVisible(false);
  auto* column = new QVBoxLayout(panel_);
  column->setContentsMargins(metrics::kGrid * 3, metrics::kGrid * 2, metrics::kGrid * 3, metrics::kGrid * 2);
  column->setSpacing(metrics::kGrid);
  column->addWidget(words_);
  column->addWidget(bar_);
  panel_->setMinimumWidth(280);
  place();
}

void BusyPanel::showProgress(int position, int total) {
  if (!panel_) return;
  words_->setText(
      formatted(QFrame::tr("Sending %@ of %@"), {QString::number(position), QString::number(total)}));
  panel_->setAccessibleDescription(words_->text());
  bar_->setRange(0, total);
  bar_->setValue(position);
  panel_->repaint();  // only the panel: a thousand records must not paint a thousand windows
}

/// Stands in the middle of its window, and is drawn at once.
void BusyPanel::place() {
  panel_->adjustSize();
  const QRect window = panel_->parentWidget()->rect();
  panel_->move(window.center() - panel_->rect().center());
  panel_->show();
  panel_->raise();
  panel_->window()->repaint();  // nothing is drawn by itself while a call waits
}

void BusyPanel::stopSpinner() {
  if (!panel_) return;
  panel_->parentWidget()->unsetCursor();
  panel_->hide();
  panel_->deleteLater();
  panel_.clear();
}

}  // namespace pendra
