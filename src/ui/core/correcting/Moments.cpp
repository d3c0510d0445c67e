#include "ui_core/Moments.h"

#include <QRegularExpression>
#include <optional>

#include "platform/NaturalDate.h"

namespace pendra {

namespace {

/// As it is said, or as the desktop writes it.
std::optional<QTime> timeOfDay(const QString& text) {
  static const QRegularExpression clock(
      uR"(^\s*(?<hour>\d\d?)(?:[:.h]?(?<minute>\d\d)(?:[:.](?<second>\d\d))?)?\s*(?:(?<half>[ap])\.?m?\.?)?\s*$)"_qs,
      QRegularExpression::CaseInsensitiveOption);
  const QRegularExpressionMatch match = clock.match(text);
  if (!match.hasMatch()) {
    const QTime shown = QLocale().toTime(text, QLocale::ShortFormat);
    return shown.isValid() ? std::optional(shown) : std::nullopt;
  }
  int hour = match.captured(u"hour").toInt();
  if (const QString half = match.captured(u"half").toLower(); !half.isEmpty()) {
    if (hour < 1 || hour > 12) return std::nullopt;
    hour = hour % 12 + (half == u"p" ? 12 : 0);
  }
  const QTime time(hour, match.captured(u"minute").toInt(), match.captured(u"second").toInt());
  return time.isValid() ? std::optional(time) : std::nullopt;
}

/// A time of day that comes twice, because the clocks are set back by an hour or by half of one.
void addSecondOccurrence(std::vector<Instant>& moments, const Calendar& calendar) {
  const QDateTime first = calendar.local(moments.back());
  for (const double later : {1800.0, 3600.0}) {
    const Instant again = moments.back() + later;
    const QDateTime local = calendar.local(again);
    if (local.date() == first.date() && local.time() == first.time()) return moments.push_back(again);
  }
}

}  // namespace

std::vector<Instant> momentsNamed(const QString& text, QDate first, QDate last, Instant now,
                                  const Calendar& calendar) {
  const auto time = timeOfDay(text.simplified());
  if (!time) {
    const auto moment = readNaturalDate(text, now, calendar);
    return moment ? std::vector{*moment} : std::vector<Instant>();
  }
  std::vector<Instant> moments;
  for (QDate day = first; day <= last; day = day.addDays(1)) {
    moments.push_back(calendar.instant(day, *time));
    addSecondOccurrence(moments, calendar);
  }
  return moments;
}

QString momentText(Instant instant, QDate day, const Calendar& calendar) {
  const QDateTime local = calendar.local(instant);
  const QString time =
      local.toString(local.time().second() == 0 ? QStringLiteral("HH:mm") : QStringLiteral("HH:mm:ss"));
  return local.date() == day ? time : local.toString(QStringLiteral("ddd d MMM, ")) + time;
}

QString clockText(Instant instant, const Calendar& calendar, const QLocale& locale) {
  return locale.toString(calendar.local(instant).time(), QLocale::ShortFormat);
}

}  // namespace pendra
