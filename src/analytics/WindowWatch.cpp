#include "analytics/WindowWatch.h"

#include <QCoreApplication>
#include <QEvent>
#include <QWindow>

#include "analytics/TrackerNotifications.h"

namespace pendra {

WindowWatch::WindowWatch(NotificationCenter& center) : center_(center) {
  QCoreApplication::instance()->installEventFilter(this);
}

bool WindowWatch::eventFilter(QObject* object, QEvent* event) {
  if (event->type() == QEvent::Show && object->isWindowType() && !event->spontaneous()) {
    center_.post(tracker_notifications::kWindowDidBecomeVisible,
                 {qobject_cast<QWindow*>(object)->title(), {}});
  }
  return false;
}

}  // namespace pendra
