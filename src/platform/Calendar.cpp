#include "platform/Calendar.h"

#include <cmath>

namespace pendra {

namespace {

/// Milliseconds since 1970, rounded down, so that an instant never shows a later day than its own.
qint64 unixMilliseconds(Instant instant) {
  return static_cast<qint64>(std::floor((instant.seconds + kUnixToReference) * 1000));
}

Instant fromUnixMilliseconds(qint64 milliseconds) {
  return {static_cast<double>(milliseconds) / 1000 - kUnixToReference};
}

}  // namespace

Calendar Calendar::ofSystem() { return Calendar(QTimeZone::systemTimeZone()); }

QDateTime Calendar::local(Instant instant) const {
  return QDateTime::fromMSecsSinceEpoch(unixMilliseconds(instant), zone_);
}

Instant Calendar::startOfDay(QDate day) const {
  return fromUnixMilliseconds(day.startOfDay(zone_).toMSecsSinceEpoch());
}

Instant Calendar::instant(QDate day, QTime time) const {
  const QDateTime asUniversal(day, time, Qt::UTC);
  const qint64 wall = asUniversal.toMSecsSinceEpoch();
  // The offsets well before and well after the local time; they differ only around a change of the clock.
  const auto offsetAt = [this](qint64 milliseconds) {
    return qint64{zone_.offsetFromUtc(QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC))} * 1000;
  };
  constexpr qint64 kDay = qint64{24} * 60 * 60 * 1000;
  const qint64 before = wall - offsetAt(wall - kDay);
  if (before + offsetAt(before) == wall) return fromUnixMilliseconds(before);
  const qint64 after = wall - offsetAt(wall + kDay);
  if (after + offsetAt(after) == wall) return fromUnixMilliseconds(after);
  return fromUnixMilliseconds(before);  // in the gap: the old offset lands as far behind the gap
}

}  // namespace pendra
