#pragma once

#include <QString>

class QWidget;

namespace pendra {

/// Says where the help book explains a window, or a part of one.
void setHelpAnchor(QWidget& widget, const QString& anchor);

/// Where the book explains the widget, or else the nearest one around it; the timer window where none says.
[[nodiscard]] QString helpAnchorOf(const QWidget* widget);

}  // namespace pendra
