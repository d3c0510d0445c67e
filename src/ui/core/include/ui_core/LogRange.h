#pragma once

#include <QDate>
#include <QLocale>
#include <QStringList>

#include "platform/DayReading.h"

namespace pendra {

/// The ranges of days that the log offers, in the order in which it offers them.
enum class LogRange { Today, Yesterday, ThisWeek, LastWeek, ThisMonth, LastMonth, Dates, AnyTime };

[[nodiscard]] QStringList logRangeTitles();
/// The days of a range that has days of its own.
[[nodiscard]] std::optional<DaySpan> daysOf(LogRange range, const DayReader& reader);
/// A day as the date fields show it, in a form that names the month and so cannot be mistaken: "23 Nov 2026".
[[nodiscard]] QString fieldDate(QDate day, const QLocale& locale);
/// The same, or the word for today.
[[nodiscard]] QString fieldDateOrToday(QDate day, const DayReader& reader);
/// The same in full, to be read out: "Tuesday, 24 November 2026".
[[nodiscard]] QString spokenDays(const DaySpan& days, const QLocale& locale);
/// The days that the text of a date field names; it may be the word for today in the program's own language.
[[nodiscard]] std::optional<DaySpan> readDateField(const QString& text, const DayReader& reader);

}  // namespace pendra
