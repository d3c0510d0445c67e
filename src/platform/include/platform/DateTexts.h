#pragma once
// The fixed date texts. They are written in English with ASCII digits whatever the user's locale is,
// because most of them are read back. The month comes first.

#include <QString>
#include <optional>

#include "platform/Calendar.h"

namespace pendra {

/// "%m/%d/%y" or "MM/dd/yy": "11/24/26".
QString shortDate(Instant instant, const Calendar& calendar);
/// "%m-%d-%Y": "11-24-2026".
QString dashedDate(Instant instant, const Calendar& calendar);
/// "h:mm a": "9:05 AM".
QString timeWithMarker(Instant instant, const Calendar& calendar);
/// "h:mm": "9:05", the time field of an entry, beside its marker.
QString timeOfDay(Instant instant, const Calendar& calendar);
/// "AM" or "PM".
QString dayHalf(Instant instant, const Calendar& calendar);
/// "2024-05-12 14:30:00 +0000", always in UTC, whole seconds, truncated.
QString universalDateTime(Instant instant);

/// Reads "MM/dd/yy", the whole text: one or two digits for month and day; a two-digit year lies in
/// 1950 to 2049, a longer one stands as it is. None when it is no such date.
std::optional<QDate> readShortDate(QStringView text);
/// Reads "HH:mm", the whole text, one or two digits each, 0:00 to 23:59. None when it is no such time.
std::optional<QTime> readTime(QStringView text);

}  // namespace pendra
