#pragma once
// Days, months and times of day exist only in a zone; a Calendar is the user's zone with the Gregorian
// calendar, and everything that asks "which day?" is handed one.

#include <QDateTime>
#include <QTimeZone>

#include "platform/Clock.h"

namespace pendra {

/// The user's calendar. A value; copying is cheap.
class Calendar {
 public:
  explicit Calendar(const QTimeZone& zone) : zone_(zone) {}
  /// The calendar of the machine's zone at this moment.
  static Calendar ofSystem();

  [[nodiscard]] const QTimeZone& zone() const { return zone_; }

  /// The local date and time of an instant, to the millisecond, for display and for fields of dates.
  [[nodiscard]] QDateTime local(Instant instant) const;
  /// The local day on which an instant falls.
  [[nodiscard]] QDate day(Instant instant) const { return local(instant).date(); }
  /// The first instant of a day: midnight, or the first moment after it where midnight does not exist.
  [[nodiscard]] Instant startOfDay(QDate day) const;
  /// The instant of a local date and time. Of two equal local times the first occurrence; a local time
  /// that does not exist is moved forward by the gap.
  [[nodiscard]] Instant instant(QDate day, QTime time) const;

 private:
  QTimeZone zone_;
};

}  // namespace pendra
