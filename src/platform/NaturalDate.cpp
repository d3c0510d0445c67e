#include "platform/NaturalDate.h"

#include <QRegularExpression>

#include "platform/DateTexts.h"

namespace pendra {

namespace {

using Match = QRegularExpressionMatch;

/// What has been read of the text so far. A part that is named twice makes the text unreadable.
struct Reading {
  QDate today;
  std::optional<QDate> date;
  std::optional<QTime> time;
  bool isNow = false;

  bool take(QDate named) { return !std::exchange(date, named) && named.isValid(); }
  bool take(QTime named) { return !std::exchange(time, named) && named.isValid(); }
};

/// One way of naming a date or a time. `read` fails when it names none, like the 30th of February.
struct Rule {
  QRegularExpression pattern;
  bool (*read)(const Match& match, Reading& reading);
};

/// The position of a three-letter beginning in a run of such, counted from 1.
int position(QStringView name, QStringView beginnings) {
  return static_cast<int>(beginnings.indexOf(name.first(3), 0, Qt::CaseInsensitive) / 3) + 1;
}

int monthNumber(QStringView name) { return position(name, u"janfebmaraprmayjunjulaugsepoctnovdec"); }
int weekdayNumber(QStringView name) { return position(name, u"montuewedthufrisatsun"); }

bool isText(QStringView text, QStringView word) { return text.compare(word, Qt::CaseInsensitive) == 0; }

/// An hour over 12 says by itself which half of the day it means.
int hourOfDay(int hour, QStringView marker) {
  if (marker.isEmpty() || hour > 12) return hour;
  return hour % 12 + (isText(marker, u"pm") ? 12 : 0);
}

bool readClock(const Match& match, Reading& reading) {
  const int hour = hourOfDay(match.captured(u"hour").toInt(), match.capturedView(u"marker"));
  return reading.take(QTime(hour, match.captured(u"minute").toInt(), match.captured(u"second").toInt()));
}

bool readNamedTime(const Match& match, Reading& reading) {
  return reading.take(QTime(isText(match.capturedView(1), u"noon") ? 12 : 0, 0));
}

bool readNow(const Match&, Reading& reading) {
  reading.isNow = true;
  return reading.take(reading.today) && reading.take(QTime(12, 0));
}

bool readNamedDay(const Match& match, Reading& reading) {
  const QStringView name = match.capturedView(1);
  return reading.take(reading.today.addDays(isText(name, u"today") ? 0 : isText(name, u"tomorrow") ? 1 : -1));
}

bool readIsoDate(const Match& match, Reading& reading) {
  return reading.take(QDate(match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt()));
}

bool readSlashedDate(const Match& match, Reading& reading) {
  return reading.take(readShortDate(match.captured(1)).value_or(QDate()));
}

bool readMonthAndDay(const Match& match, Reading& reading) {
  const QString year = match.captured(u"year");
  return reading.take(QDate(year.isEmpty() ? reading.today.year() : year.toInt(),
                            monthNumber(match.capturedView(u"month")), match.captured(u"day").toInt()));
}

bool readWeekday(const Match& match, Reading& reading) {
  const int ahead = (weekdayNumber(match.capturedView(2)) - reading.today.dayOfWeek() + 7) % 7;
  const bool next = isText(match.capturedView(1), u"next");
  return reading.take(reading.today.addDays(next && ahead == 0 ? 7 : next ? ahead : ahead - 7));
}

QDate moved(QDate day, int count, QStringView unit) {
  if (unit.startsWith(u"day", Qt::CaseInsensitive)) return day.addDays(count);
  if (unit.startsWith(u"week", Qt::CaseInsensitive)) return day.addDays(7 * qint64{count});
  if (unit.startsWith(u"month", Qt::CaseInsensitive)) return day.addMonths(count);
  return day.addYears(count);
}

bool readNeighbour(const Match& match, Reading& reading) {
  return reading.take(
      moved(reading.today, isText(match.capturedView(1), u"next") ? 1 : -1, match.capturedView(2)));
}

bool readAgo(const Match& match, Reading& reading) {
  return reading.take(moved(reading.today, -match.captured(1).toInt(), match.capturedView(2)));
}

QRegularExpression pattern(QString text) {
  text.replace(u"{marker}"_qs, u"(?<marker>[ap]m)(?![a-z])"_qs);
  text.replace(u"{month}"_qs,
               u"(?<month>jan(?:uary)?|feb(?:ruary)?|mar(?:ch)?|apr(?:il)?|may|june?|july?|aug(?:ust)?|"
               u"sep(?:t(?:ember)?)?|oct(?:ober)?|nov(?:ember)?|dec(?:ember)?)(?![a-z])\\.?"_qs);
  text.replace(u"{day}"_qs, u"(?<day>\\d\\d?)(?:st|nd|rd|th)?(?![\\d:/])"_qs);
  text.replace(u"{year}"_qs, u"(?:,?\\s*(?<year>\\d{4})(?![\\d:/-]))?"_qs);
  return QRegularExpression(text, QRegularExpression::CaseInsensitiveOption);
}

/// In order of trial: a rule that could swallow the beginning of another comes after it.
const std::array<Rule, 13>& rules() {
  static const std::array<Rule, 13> all{{
      {pattern(QStringLiteral(R"((today|tomorrow|yesterday)(?![a-z]))")), readNamedDay},
      {pattern(QStringLiteral(R"(now(?![a-z]))")), readNow},
      {pattern(QStringLiteral(R"((?:at\s+)?(noon|midnight)(?![a-z]))")), readNamedTime},
      {pattern(QStringLiteral(
           R"((last|next)\s+(mon|tues?|wed(?:nes)?|thu(?:rs)?|fri|sat(?:ur)?|sun)(?:day)?(?![a-z]))")),
       readWeekday},
      {pattern(QStringLiteral(R"((last|next)\s+(week|month|year)(?![a-z]))")), readNeighbour},
      {pattern(QStringLiteral(R"((\d{1,4})\s+(days?|weeks?|months?|years?)\s+ago(?![a-z]))")), readAgo},
      {pattern(QStringLiteral(R"((\d{4})-(\d\d?)-(\d\d?)(?:t(?=\d)|(?!\d)))")), readIsoDate},
      {pattern(QStringLiteral(R"((\d\d?/\d\d?/\d+))")), readSlashedDate},
      {pattern(QStringLiteral(R"({month}\s*{day}{year})")), readMonthAndDay},
      {pattern(QStringLiteral(R"({day}\s*{month}{year})")), readMonthAndDay},
      {pattern(QStringLiteral(
           R"((?:at\s+)?(?<hour>\d\d?):(?<minute>\d\d?)(?::(?<second>\d\d?))?(?![\d:])(?:\s*{marker})?)")),
       readClock},
      {pattern(QStringLiteral(R"((?:at\s+)?(?<hour>\d\d?)\s*{marker})")), readClock},
      {pattern(QStringLiteral(R"((?:at\s+)?(?<hour>\d\d?)(?![\d:/-]))")), readClock},
  }};
  return all;
}

/// Reads the one thing that stands at `at` and moves behind it.
bool readNext(const QString& text, qsizetype& at, Reading& reading) {
  for (const Rule& rule : rules()) {
    const Match match = rule.pattern.match(text, at, QRegularExpression::NormalMatch,
                                           QRegularExpression::AnchorAtOffsetMatchOption);
    if (!match.hasMatch()) continue;
    at = match.capturedEnd();
    return rule.read(match, reading);
  }
  return false;
}

/// Moves behind blanks and the comma between a date and a time.
void skipGap(const QString& text, qsizetype& at) {
  static const QRegularExpression gap(QStringLiteral(R"(\s*(?:,(?=\s*\S))?\s*)"));
  at = gap.match(text, at, QRegularExpression::NormalMatch, QRegularExpression::AnchorAtOffsetMatchOption)
           .capturedEnd();
}

}  // namespace

std::optional<Instant> readNaturalDate(QStringView text, Instant now, const Calendar& calendar) {
  const QString trimmed = text.trimmed().toString();
  if (trimmed.isEmpty()) return std::nullopt;
  Reading reading{.today = calendar.day(now), .date = {}, .time = {}};
  for (qsizetype at = 0; at < trimmed.size(); skipGap(trimmed, at)) {
    if (!readNext(trimmed, at, reading)) return std::nullopt;
  }
  if (reading.isNow) return now;
  return calendar.instant(reading.date.value_or(reading.today), reading.time.value_or(QTime(12, 0)));
}

}  // namespace pendra
