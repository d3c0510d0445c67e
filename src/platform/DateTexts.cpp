#include "platform/DateTexts.h"

namespace pendra {

namespace {

/// The hour on a clock face: 12, 1, 2 ... 11.
int faceHour(QTime time) { return (time.hour() + 11) % 12 + 1; }

const char* marker(QTime time) { return time.hour() < 12 ? "AM" : "PM"; }

/// The number that a field of `fewest` to `most` ASCII digits holds.
std::optional<int> readField(QStringView text, qsizetype fewest, qsizetype most) {
  if (text.size() < fewest || text.size() > most) return std::nullopt;
  int number = 0;
  for (const QChar digit : text) {
    if (digit < u'0' || digit > u'9') return std::nullopt;
    number = number * 10 + digit.unicode() - u'0';
  }
  return number;
}

int fullYear(int year, qsizetype digits) {
  if (digits > 2) return year;
  return year < 50 ? 2000 + year : 1900 + year;
}

}  // namespace

QString shortDate(Instant instant, const Calendar& calendar) {
  const QDate date = calendar.day(instant);
  return QString::asprintf("%02d/%02d/%02d", date.month(), date.day(), date.year() % 100);
}

QString dashedDate(Instant instant, const Calendar& calendar) {
  const QDate date = calendar.day(instant);
  return QString::asprintf("%02d-%02d-%04d", date.month(), date.day(), date.year());
}

QString timeWithMarker(Instant instant, const Calendar& calendar) {
  return timeOfDay(instant, calendar) + u' ' + dayHalf(instant, calendar);
}

QString timeOfDay(Instant instant, const Calendar& calendar) {
  const QTime time = calendar.local(instant).time();
  return QString::asprintf("%d:%02d", faceHour(time), time.minute());
}

QString dayHalf(Instant instant, const Calendar& calendar) {
  return QLatin1StringView(marker(calendar.local(instant).time()));
}

QString universalDateTime(Instant instant) {
  const QDateTime universal = Calendar(QTimeZone::utc()).local(instant);
  const QDate date = universal.date();
  const QTime time = universal.time();
  return QString::asprintf("%04d-%02d-%02d %02d:%02d:%02d +0000", date.year(), date.month(), date.day(),
                           time.hour(), time.minute(), time.second());
}

std::optional<QDate> readShortDate(QStringView text) {
  const auto fields = text.split(u'/');
  if (fields.size() != 3) return std::nullopt;
  const auto month = readField(fields[0], 1, 2);
  const auto day = readField(fields[1], 1, 2);
  const auto year = readField(fields[2], 2, 6);
  if (!month || !day || !year) return std::nullopt;
  const QDate date(fullYear(*year, fields[2].size()), *month, *day);
  return date.isValid() ? std::optional(date) : std::nullopt;
}

std::optional<QTime> readTime(QStringView text) {
  const auto fields = text.split(u':');
  if (fields.size() != 2) return std::nullopt;
  const auto hour = readField(fields[0], 1, 2);
  const auto minute = readField(fields[1], 1, 2);
  if (!hour || !minute) return std::nullopt;
  const QTime time(*hour, *minute);
  return time.isValid() ? std::optional(time) : std::nullopt;
}

}  // namespace pendra
