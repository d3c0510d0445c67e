#pragma once

#include <QWidget>

#include "platform/UserDefaults.h"

namespace pendra {

/// The size in which a window opens for the first time: at most what its screen has free,
/// with room for a title bar.
[[nodiscard]] QSize firstSize(const QWidget& window, QSize wanted);

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
