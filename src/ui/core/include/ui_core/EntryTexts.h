#pragma once
// What stands in the fields of an entry is text until it is saved. Reading is lenient on purpose: a length
// is read by its leading digits, a start by whatever the natural-language reader can make of it.

#include <QString>
#include <optional>

#include "document/Session.h"
#include "ui_core/EditorControls.h"

namespace pendra {

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

/// The number at the beginning of a text, after blanks and with its sign; 0 when there is none.
[[nodiscard]] qint64 integerValue(QStringView text);
/// The seconds that "hours:minutes" means. Minutes are not limited; whatever follows them is ignored.
[[nodiscard]] double durationInSeconds(const QString& text);
/// The instant that time, marker and date name when they are joined without blanks; none when unreadable.
/// A text that still shows the minute of the start `before` means that minute, without its seconds.
[[nodiscard]] std::optional<Instant> startInstant(const EntryTexts& texts, std::optional<Instant> before);
/// Gives the entry the start that its fields name. Where they name none it keeps its own, because nothing can
/// do without one; a notice says so of a text that was typed.
void takeStart(TimeEntry& period, const EntryTexts& texts, Notices& notices);

/// Puts an entry's start into the three fields, each of which shows its part; none empties them.
void showStart(const EntryFields& fields, std::optional<Instant> start, const Calendar& calendar);
/// Enables or disables the fields of an entry's start and length.
void enableTimeEditFields(const EntryFields& fields, bool enabled);

}  // namespace pendra
