#pragma once

#include <QObject>

#include "platform/NotificationCenter.h"

namespace pendra {

/// Posts "_NSWindowDidBecomeVisible" for each window of this program that is shown, with its title. Made
/// once, after the QGuiApplication.
class WindowWatch final : public QObject {
 public:
  /// `center` outlives the watch.
  explicit WindowWatch(NotificationCenter& center);

  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  NotificationCenter& center_;
};

}  // namespace pendra
