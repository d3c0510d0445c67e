#include "ui_core/LogRange.h"

#include "model/Hours.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

DaySpan month(QDate day) {
  const QDate first(day.year(), day.month(), 1);
  return {first, first.addMonths(1).addDays(-1)};
}

}  // namespace

QStringList logRangeTitles() {
  return {tr("Today"),      tr("Yesterday"),  tr("This Week"), tr("Last Week"),
          tr("This Month"), tr("Last Month"), tr("Dates"),     tr("Any Time")};
}

std::optional<DaySpan> daysOf(LogRange range, const DayReader& reader) {
  const QDate today = reader.today;
  const QDate week = startOfWeek(today, reader.weekBegins);
  switch (range) {
    case LogRange::Today:
      return DaySpan{today, today};
    case LogRange::Yesterday:
      return DaySpan{today.addDays(-1), today.addDays(-1)};
    case LogRange::ThisWeek:
      return DaySpan{week, week.addDays(6)};
    case LogRange::LastWeek:
      return DaySpan{week.addDays(-7), week.addDays(-1)};
    case LogRange::ThisMonth:
      return month(today);
    case LogRange::LastMonth:
      return month(today.addMonths(-1));
    case LogRange::Dates:
    case LogRange::AnyTime:
      break;
  }
  return std::nullopt;
}

QString fieldDate(QDate day, const QLocale& locale) {
  const QString month = locale.monthName(day.month(), QLocale::ShortFormat);
  // Where months have numbers for names, the year stands first.
  if (!month.isEmpty() && month[0].isDigit()) return locale.toString(day, QLocale::ShortFormat);
  return locale.toString(day, QStringLiteral("d MMM yyyy"));
}

QString fieldDateOrToday(QDate day, const DayReader& reader) {
  return day == reader.today ? tr("today") : fieldDate(day, reader.locale);
}

QString spokenDays(const DaySpan& days, const QLocale& locale) {
  const QString first = locale.toString(days.first, QLocale::LongFormat);
  return days.first == days.last ? first : first + u" - " + locale.toString(days.last, QLocale::LongFormat);
}

std::optional<DaySpan> readDateField(const QString& text, const DayReader& reader) {
  if (text.trimmed().compare(tr("today"), Qt::CaseInsensitive) == 0)
    return DaySpan{reader.today, reader.today};
  return readDays(text, reader);
}

}  // namespace pendra
