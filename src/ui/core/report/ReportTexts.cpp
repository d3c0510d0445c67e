#include "ui_core/ReportTexts.h"

#include "model/DurationText.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

QString day(QDate date, const QLocale& locale) {
  return locale.toString(date, QStringLiteral("ddd d MMM yyyy"));
}

/// "23 – 29 Nov 2026": what both ends share is said once.
QString span(QDate first, QDate last, const QLocale& locale) {
  if (first == last) return day(first, locale);
  const bool sameYear = first.year() == last.year();
  const bool sameMonth = sameYear && first.month() == last.month();
  const QString begin = sameMonth  ? QStringLiteral("d")
                        : sameYear ? QStringLiteral("d MMM")
                                   : QStringLiteral("d MMM yyyy");
  return locale.toString(first, begin) + u" – " + locale.toString(last, QStringLiteral("d MMM yyyy"));
}

QString month(QDate date, const QLocale& locale) {
  return locale.standaloneMonthName(date.month()) + u' ' + QString::number(date.year());
}

bool isWholeMonth(QDate first, QDate last) {
  return first.day() == 1 && last == first.addMonths(1).addDays(-1);
}

}  // namespace

QString titleOf(const ReportRange& range, const QLocale& locale) {
  switch (range.kind) {
    case RangeKind::Month:
      return month(range.first, locale);
    case RangeKind::Quarter:
      return tr("Q%1 %2").arg((range.first.month() + 2) / 3).arg(range.first.year());
    case RangeKind::Year:
      return QString::number(range.first.year());
    case RangeKind::Week:
    case RangeKind::Dates:
      break;
  }
  return span(range.first, range.last, locale);
}

QString titleOf(const ReportBar& bar, const QLocale& locale) {
  return isWholeMonth(bar.first, bar.last) ? month(bar.first, locale) : span(bar.first, bar.last, locale);
}

QString emptyText(const ReportRange& range, const QLocale& locale) {
  const bool isOneDay = range.first == range.last;
  return (isOneDay ? tr("Nothing was timed on %1.") : tr("Nothing was timed in %1."))
      .arg(titleOf(range, locale));
}

QString titleOf(const ReportGroup& group) {
  QString name = group.name;
  if (name.isEmpty()) {
    name = group.kind == GroupBy::Customer ? tr("No customer")
           : group.kind == GroupBy::Job    ? tr("No job")
                                           : tr("No service");
  }
  return group.customer.isEmpty() ? name : group.customer + u" - " + name;
}

QString headOf(GroupBy by) {
  switch (by) {
    case GroupBy::Customer:
      return tr("Customer, job, service");
    case GroupBy::Job:
      return tr("Job, service");
    case GroupBy::Service:
      return tr("Service, customer, job");
  }
  return {};
}

QString lengthText(Length length) { return durationText(secondsOf(length)); }

QString lengthOrDash(Length length) { return length == Length() ? QStringLiteral("-") : lengthText(length); }

}  // namespace pendra
