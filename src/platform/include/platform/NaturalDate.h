#pragma once
// Reads what a person types for a date: "last monday", "11/24/26", "9:30AM11/14/26", "3 days ago".
// English only; whatever it cannot read wholly is none, never a guess.

#include <QStringView>
#include <optional>

#include "platform/Calendar.h"

namespace pendra {

/// The instant that `text` names, as seen at `now`. A missing date is today, a missing time 12:00.
/// A time may stand before or after the date, spaced or run together; an hour over 12 with a marker is
/// taken as the 24-hour clock's.
std::optional<Instant> readNaturalDate(QStringView text, Instant now, const Calendar& calendar);

}  // namespace pendra
