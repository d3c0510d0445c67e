#pragma once

#include <QColor>
#include <QIcon>
#include <QRectF>

class QPainter;

namespace pendra {

/// The program's own signs. Each is a shape without a colour of its own.
enum class Symbol {
  Play,
  Pause,
  CheckOn,
  CheckOff,
  Notes,
  Warning,
  Information,
  Away,
  Search,
  Cross,
  Calendar
};

/// Draws a sign in one colour, sharp at every scale.
void drawSymbol(QPainter& painter, const QRectF& rect, Symbol symbol, const QColor& colour);

/// The sign of what opens a list below itself.
void drawChevron(QPainter& painter, const QPointF& centre, const QColor& colour);
/// The same as an icon, which draws it when it is shown.
[[nodiscard]] QIcon chevronIcon();

/// The program's own sign, drawn anew at whatever size.
[[nodiscard]] QIcon programIcon();

/// The same for the title and the task bar, where each usual size has a drawing of its own.
[[nodiscard]] QIcon windowIcon();

}  // namespace pendra
