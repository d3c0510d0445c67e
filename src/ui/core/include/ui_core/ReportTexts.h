#pragma once
// What ranges, bars and groups of a report are called, wherever they are shown or written.

#include <QLocale>

#include "model/Report.h"

namespace pendra {

/// "November 2026", "Q4 2026", "23 – 29 Nov 2026".
[[nodiscard]] QString titleOf(const ReportRange& range, const QLocale& locale);
/// "Wed 25 Nov 2026"; of more days as the title of a range.
[[nodiscard]] QString titleOf(const ReportBar& bar, const QLocale& locale);
/// "Nothing was timed in November 2026."
[[nodiscard]] QString emptyText(const ReportRange& range, const QLocale& locale);
/// A name; "No job" where there is none; a job at the top after its customer.
[[nodiscard]] QString titleOf(const ReportGroup& group);
/// What a report groups by, as the head of its names says it: "Customer, job, service".
[[nodiscard]] QString headOf(GroupBy by);
[[nodiscard]] QString lengthText(Length length);
/// "-" when it is nothing.
[[nodiscard]] QString lengthOrDash(Length length);

}  // namespace pendra
