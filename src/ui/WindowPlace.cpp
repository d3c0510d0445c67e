#include "ui/WindowPlace.h"

#include <QEvent>
#include <QScreen>
#include <QStyle>

namespace pendra {

QSize firstSize(const QWidget& window, QSize wanted) {
  const QSize free = window.screen()->availableSize();
  const int title = window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
  return wanted.boundedTo({free.width(), free.height() - title});
}

WindowPlace::WindowPlace(QWidget& window, UserDefaults& defaults, QString key)
    : QObject(&window), window_(window), defaults_(defaults), key_(std::move(key)) {
  if (const auto place = defaults.text(key_)) {
    window.restoreGeometry(QByteArray::fromBase64(place->toLatin1()));
  }
  window.installEventFilter(this);
}

bool WindowPlace::eventFilter(QObject* watched, QEvent* event) {
  // Not while the desktop hides it, as when it is on another workspace.
  if (event->type() == QEvent::Hide && !event->spontaneous()) {
    defaults_.setText(key_, QString::fromLatin1(window_.saveGeometry().toBase64()));
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace pendra
