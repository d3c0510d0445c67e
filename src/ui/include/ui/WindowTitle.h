#pragma once

#include <QWidget>

namespace pendra {

/// Gives a window exactly this title: the toolkit's own mark for changed documents is taken as text.
inline void setPlainTitle(QWidget& window, QString title) {
  window.setWindowTitle(title.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]")));
}

}  // namespace pendra
