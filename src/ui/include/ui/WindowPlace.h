#pragma once

#include <QWidget>

#include "platform/UserDefaults.h"

namespace pendra {

/// Opens a window where it was, and as large as it was, when it went last. A child of its window.
class WindowPlace final : public QObject {
 public:
  /// Puts the window there; call it before the window is shown. The defaults must outlive the window.
  WindowPlace(QWidget& window, UserDefaults& defaults, QString key);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget& window_;
  UserDefaults& defaults_;
  QString key_;
};

}  // namespace pendra
