#pragma once
// A time of day that somebody types means an instant only beside a day, and in the night in which the clocks
// are set back even two of them.

#include <QLocale>
#include <QString>
#include <vector>

#include "platform/Calendar.h"

namespace pendra {

/// The instants that a text names, ascending: a time of day ("14:30", "2:30 PM", "1430", "9") on each of the
/// days, or one moment with its own day ("yesterday 14:30", "now"), as seen at `now`. None when it cannot be
/// read wholly.
[[nodiscard]] std::vector<Instant> momentsNamed(const QString& text, QDate first, QDate last, Instant now,
                                                const Calendar& calendar);

/// "14:30", with seconds where there are any; with its day unless that is `day`.
[[nodiscard]] QString momentText(Instant instant, QDate day, const Calendar& calendar);
/// The desktop's own short form of a time of day.
[[nodiscard]] QString clockText(Instant instant, const Calendar& calendar, const QLocale& locale);

}  // namespace pendra
