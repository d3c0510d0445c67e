#pragma once
// The one painter of a report's bars, for the window, for paper and for PDF. What was sent is solid, what was
// not is hatched in an outline, so that the two are told apart without colour.

#include <QFont>
#include <QLocale>
#include <QRectF>

#include "model/Report.h"
#include "ui/Theme.h"

class QPainter;

namespace pendra {

/// How the bars are to look.
struct HoursLook {
  const Colours* colours = nullptr;
  QFont font{};
  QLocale locale{};
  QDate today{};
  bool hatches = true;  ///< false where nothing is ever sent
  int marked = -1;      ///< the bar whose column is tinted
  int focused = -1;     ///< the bar that has the keyboard
};

/// The colour of the group at a place of the report.
[[nodiscard]] QColor colourOfGroup(const Colours& colours, std::size_t place);

/// Fills a rectangle, solid or hatched.
void drawShare(QPainter& painter, const QRectF& rect, const QColor& colour, bool hatched);

/// A sum in two parts: what was sent and, behind it, what was not.
struct Shares {
  double sent = 0;
  double notSent = 0;
};
/// Draws both from left to right, `scale` points a unit.
void drawShares(QPainter& painter, const QRectF& rect, const Shares& shares, double scale,
                const QColor& colour);

/// The bars of a report in a rectangle, with their axes.
class HoursPainter {
 public:
  /// The report must outlive it.
  HoursPainter(const Report& report, HoursLook look, const QRectF& place);

  void paint(QPainter& painter) const;
  /// The whole height of the bar's place.
  [[nodiscard]] QRectF columnOf(int bar) const;
  /// The bar whose column holds a point; -1 for none.
  [[nodiscard]] int barAt(const QPointF& point) const;

 private:
  void paintAxis(QPainter& painter) const;
  void paintBar(QPainter& painter, int bar) const;
  void paintLabels(QPainter& painter) const;
  [[nodiscard]] double heightOf(Length length) const;

  const Report& report_;
  HoursLook look_;
  QRectF plot_;
  double step_ = 2;  ///< hours between two lines
  double top_ = 8;   ///< hours at the top line
};

}  // namespace pendra
