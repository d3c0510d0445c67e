#include "model/Hours.h"

#include <cmath>

#include "model/Activity.h"
#include "model/TimeEntry.h"
#include "platform/Preferences.h"

namespace pendra {

Length lengthOf(double seconds) { return Length(std::llround(seconds * std::micro::den)); }

double secondsOf(Length length) { return static_cast<double>(length.count()) / std::micro::den; }

CountedEntry countedAt(Instant now, const TimeEntry& entry) {
  const Activity* activity = entry.activity();
  return {.start = entry.start(),
          .length = lengthOf(entry.lengthAt(now)),
          .sent = entry.wasSent(),
          .billable = activity && activity->billable() == true};
}

void Hours::add(const CountedEntry& entry) {
  ++entries;
  total += entry.length;
  if (entry.sent) {
    sent += entry.length;
  } else {
    ++unsentEntries;
  }
  if (entry.billable) billable += entry.length;
}

Hours& Hours::operator+=(const Hours& other) {
  entries += other.entries;
  unsentEntries += other.unsentEntries;
  total += other.total;
  sent += other.sent;
  billable += other.billable;
  return *this;
}

QDate startOfWeek(QDate day, Qt::DayOfWeek weekBegins) {
  return day.addDays(-((day.dayOfWeek() - weekBegins + 7) % 7));
}

Qt::DayOfWeek weekBegins(const UserDefaults& defaults, const QLocale& region) {
  const int chosen = defaults.text(preferences::kWeekBegins).value_or(QString()).toInt();
  const bool isDay = chosen >= Qt::Monday && chosen <= Qt::Sunday;
  return isDay ? static_cast<Qt::DayOfWeek>(chosen) : region.firstDayOfWeek();
}

}  // namespace pendra
