#pragma once

#include <QAccessibleWidget>
#include <QHash>

#include "HoursChart.h"

namespace pendra {

/// The accessible side of a HoursChart: its children are the bars.
class HoursChartAccessible final : public QAccessibleWidget {
 public:
  explicit HoursChartAccessible(HoursChart* chart) : QAccessibleWidget(chart, QAccessible::Chart) {}
  ~HoursChartAccessible() override;
  /// From now on every HoursChart is seen through this class.
  static void install();

  [[nodiscard]] int childCount() const override { return chart()->bars(); }
  [[nodiscard]] QAccessibleInterface* child(int index) const override;
  [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
  [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;
  [[nodiscard]] QAccessibleInterface* focusChild() const override;

 private:
  [[nodiscard]] HoursChart* chart() const { return static_cast<HoursChart*>(object()); }

  mutable QHash<int, QAccessible::Id> bars_;
};

}  // namespace pendra
