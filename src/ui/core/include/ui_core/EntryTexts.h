#pragma once
// What stands in the fields of an entry is text until it is saved. Reading is lenient on purpose: a length
// always has one, a start by whatever the natural-language reader can make of it.

#include <QString>
#include <optional>

#include "document/Session.h"
#include "ui_core/EditorControls.h"

namespace pendra {

class Activity;
class Notices;
class TimeEntry;

/// The texts of an entry's fields, and what they are judged by.
struct EntryTexts {
  QString startTime;
  QString startTimeAMPM;
  QString startDate;
  QString duration;
  bool entryIsSelected;  ///< whether there is an entry to which they apply
  Instant now;
  Calendar calendar;
};
[[nodiscard]] EntryTexts textsOf(const EntryFields& fields, const Session& session,
                                 bool entryIsSelected = true);

/// The instant that time, marker and date name when they are joined without blanks; none when unreadable.
/// A text that still shows the minute of the start `before` means that minute, without its seconds.
[[nodiscard]] std::optional<Instant> startInstant(const EntryTexts& texts, std::optional<Instant> before);
/// The start that the fields give to an entry; none when they are unreadable. An entry that was added by hand
/// and gets its first length begins early enough not to end after now, unless its start was typed.
[[nodiscard]] std::optional<Instant> typedStart(const TimeEntry& entry, const EntryTexts& texts);
/// The same, and the start that the entry has where the fields name none, because nothing can do without one;
/// a notice says so of a text that was typed.
[[nodiscard]] std::optional<Instant> startToStore(const TimeEntry& entry, const EntryTexts& texts,
                                                  Notices& notices);
/// Stores a start, and the length that a text means. The length of a running entry is the clock's. One that a
/// crash has cut off stays without until one is typed, which is the answer.
void storeTime(TimeEntry& entry, std::optional<Instant> start, const QString& length);
/// When an entry that is to be added by hand begins: where the activity's last entry of today ends, or now.
[[nodiscard]] Instant startOfAddedEntry(const Activity& activity, Instant now, const Calendar& calendar);

/// Puts an entry's start into the three fields, each of which shows its part; none empties them.
void showStart(const EntryFields& fields, std::optional<Instant> start, const Calendar& calendar);
/// Enables or disables the fields of an entry's start and length.
void enableTimeEditFields(const EntryFields& fields, bool enabled);

}  // namespace pendra
