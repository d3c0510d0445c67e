#include "model/Report.h"

namespace pendra {

namespace {

QDate startOfMonths(QDate day, int months) {
  return {day.year(), (day.month() - 1) / months * months + 1, 1};
}

/// How many months a range of that kind has; 0 when it is made of days.
int monthsOf(RangeKind kind) {
  switch (kind) {
    case RangeKind::Month:
      return 1;
    case RangeKind::Quarter:
      return 3;
    case RangeKind::Year:
      return 12;
    case RangeKind::Week:
    case RangeKind::Dates:
      break;
  }
  return 0;
}

}  // namespace

ReportRange ReportRange::around(RangeKind kind, QDate day, Qt::DayOfWeek weekBegins) {
  if (const int months = monthsOf(kind)) {
    const QDate first = startOfMonths(day, months);
    return {kind, first, first.addMonths(months).addDays(-1)};
  }
  if (kind == RangeKind::Dates) return {kind, day, day};
  const QDate first = startOfWeek(day, weekBegins);
  return {kind, first, first.addDays(6)};
}

ReportRange ReportRange::moved(int by) const {
  if (const int months = monthsOf(kind)) {
    const QDate begin = first.addMonths(by * months);
    return {kind, begin, begin.addMonths(months).addDays(-1)};
  }
  const qint64 days = by * (first.daysTo(last) + 1);
  return {kind, first.addDays(days), last.addDays(days)};
}

}  // namespace pendra
