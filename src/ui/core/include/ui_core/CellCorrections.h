#pragma once
// In the log a note, a start, an end and a length are typed over where they stand, by the rules of the
// entry's sheet. Only what is typed changes: a start leaves the length as it is, to the second, and an end is
// another way to give a length, so that it is typed in whole minutes, too.

#include <QLocale>

#include "model/TimeEntry.h"
#include "ui_core/CellReading.h"
#include "ui_core/TableModel.h"

namespace pendra {

class LogController;

/// A cell of the log that can be typed over.
enum class LogCell { Notes, Start, End, Duration };
[[nodiscard]] std::optional<LogCell> logCellOf(QStringView column);

/// Why nothing can be typed into it, as a sentence; empty when something can.
[[nodiscard]] QString whyNotTyped(const TimeEntry& entry, LogCell cell);
/// What stands in it before something is typed. The locale shapes times of day.
[[nodiscard]] QString textForTyping(const TimeEntry& entry, LogCell cell, const QLocale& locale);
/// What a text will make of the entry. An end is the first such time after the start; on another day it must
/// be within twelve hours or name that day.
[[nodiscard]] CellReading readTyped(const TimeEntry& entry, LogCell cell, const QString& text,
                                    const QLocale& locale);
/// Stores it in one edit, unless it is refused or says what stood there.
void storeTyped(TimeEntry& entry, LogCell cell, const QString& text, const QLocale& locale);

/// How the log's table is typed into.
[[nodiscard]] TableModel::EditRules logEditRules(LogController& log, const QLocale& locale);

}  // namespace pendra
