#pragma once
// Sums of hours are kept in whole microseconds: in whatever order entries are added the sum is the same, and
// what is taken away again leaves nothing behind. An entry counts wholly to the day on which it began.

#include <QLocale>
#include <chrono>
#include <optional>
#include <vector>

#include "platform/Calendar.h"

namespace pendra {

class TimeEntry;
class UserDefaults;

using Length = std::chrono::microseconds;

[[nodiscard]] Length lengthOf(double seconds);
[[nodiscard]] double secondsOf(Length length);

/// An entry as it counts at a moment; what runs is as long as it has run by then.
struct CountedEntry {
  std::optional<Instant> start;
  Length length{};
  bool sent = false;
  bool billable = false;  ///< its activity is
};
[[nodiscard]] CountedEntry countedAt(Instant now, const TimeEntry& entry);

/// The sums of some entries.
struct Hours {
  int entries = 0;
  int unsentEntries = 0;
  Length total{};
  Length sent{};
  Length billable{};

  [[nodiscard]] Length notSent() const { return total - sent; }
  void add(const CountedEntry& entry);
  Hours& operator+=(const Hours& other);
  friend bool operator==(const Hours&, const Hours&) = default;
};

/// Days in a row, both included, as the instants between which an entry must begin.
class Days {
 public:
  Days() = default;
  Days(QDate first, QDate last, const Calendar& calendar)
      : begin_(calendar.startOfDay(first)), end_(calendar.startOfDay(last.addDays(1))) {}

  [[nodiscard]] Instant begin() const { return begin_; }
  [[nodiscard]] bool contain(std::optional<Instant> start) const {
    return start && begin_ <= *start && *start < end_;
  }
  friend bool operator==(const Days&, const Days&) = default;

 private:
  Instant begin_;
  Instant end_;
};

/// The first day of the week in which a day lies.
[[nodiscard]] QDate startOfWeek(QDate day, Qt::DayOfWeek weekBegins);
/// The day with which a week begins: the one that the user has chosen, else that of the region.
[[nodiscard]] Qt::DayOfWeek weekBegins(const UserDefaults& defaults, const QLocale& region);

}  // namespace pendra
