#pragma once
// The one distinction of this header: an instant is a point on the world's time line, never a date on
// somebody's wall. Dates, days and times of day exist only through a Calendar.

#include <compare>

namespace pendra {

/// A point in time: seconds since 2001-01-01T00:00:00Z, with fractions.
struct Instant {
  double seconds = 0;

  friend constexpr auto operator<=>(Instant, Instant) = default;
};

/// The reference instant. In `dateSubmitted` it means "not sent".
inline constexpr Instant kReferenceInstant{0};

/// Seconds from 1970-01-01T00:00:00Z to the reference instant.
inline constexpr double kUnixToReference = 978307200;

/// The length of time from `from` to `to`, in seconds.
constexpr double operator-(Instant to, Instant from) { return to.seconds - from.seconds; }
/// The instant `length` seconds after `start`.
constexpr Instant operator+(Instant start, double length) { return {start.seconds + length}; }

/// Tells the time. Nothing else in the program asks the system for it.
class Clock {
 public:
  virtual ~Clock() = default;
  /// The wall clock's time; it may jump when the user sets the clock.
  [[nodiscard]] virtual Instant now() const = 0;
};

/// The machine's own clock.
class SystemClock final : public Clock {
 public:
  [[nodiscard]] Instant now() const override;
};

}  // namespace pendra
