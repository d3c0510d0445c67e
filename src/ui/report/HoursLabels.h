#pragma once

#include <QLocale>
#include <QString>
#include <vector>

#include "model/Report.h"

namespace pendra {

/// What stands under a bar, in two lines.
struct BarLabel {
  int bar;
  QString first{};
  QString second{};
  bool isNow = false;  ///< today is in it
};

/// The labels for which there may be room when a bar has so many points: those that say where one is.
[[nodiscard]] std::vector<BarLabel> labelsOf(const Report& report, QDate today, const QLocale& locale,
                                             double columnWidth);
/// "2 h", "0.5 h".
[[nodiscard]] QString hoursOnAxis(double hours, const QLocale& locale);

}  // namespace pendra
