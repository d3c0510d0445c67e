#pragma once
// The part of an entry's text that says when and how long: "@9:30-11", "90m", "-10", "yesterday", in any
// order. It says days and times of day; which instants these are is another question.

#include <QDate>
#include <QStringView>
#include <QTime>
#include <optional>

#include "platform/DayReading.h"

namespace pendra {

/// Where in a text something could not be read, and why.
struct TextFault {
  qsizetype at = 0;
  qsizetype length = 0;
  QString reason;
};

/// What a text says about time.
struct TimesSaid {
  std::optional<QDate> day;
  std::optional<QTime> start;
  std::optional<QTime> end;
  std::optional<double> length;  ///< in seconds
  std::optional<double> ago;     ///< in seconds
  std::optional<TextFault> fault;

  [[nodiscard]] bool isEmpty() const { return !day && !start && !length && !ago; }
  /// Whether it says more than a day, which may be a word of a note as well.
  [[nodiscard]] bool saysWhenOrHowLong() const { return start || length || ago; }
};

/// Reads a text that says nothing else. A fault ends the reading.
[[nodiscard]] TimesSaid readTimes(QStringView text, const DayReader& days);

/// Whether a time of day is meant to begin here: "@9".
[[nodiscard]] bool beginsClock(QStringView text);

}  // namespace pendra
