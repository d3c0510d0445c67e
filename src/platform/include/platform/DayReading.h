#pragma once
// What a person types where days are asked for. Everything that the program shows as a date can be typed
// back: its own forms, and those of the desktop's language, short and long, with and without day of the week,
// year and time of day. Besides, the words that people say in English: "monday", "this week", "a week ago".
// What cannot be read wholly is none, never a guess.

#include <QLocale>
#include <QStringView>
#include <optional>

#include "platform/Calendar.h"

namespace pendra {

/// Days in a row, both included; mostly one.
struct DaySpan {
  QDate first;
  QDate last;
  friend bool operator==(const DaySpan&, const DaySpan&) = default;
};

/// When and where it is read.
struct DayReader {
  QDate today;
  QLocale locale{};
  Qt::DayOfWeek weekBegins = Qt::Monday;
};

/// The days that a text names. A missing year is this one, a day of the week the latest that is not in the
/// future. What `readNaturalDate` reads means the same here; but a date in figures with four
/// for the year is read as the locale writes it.
[[nodiscard]] std::optional<DaySpan> readDays(QStringView text, const DayReader& reader);

}  // namespace pendra
