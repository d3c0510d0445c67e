#pragma once
// What can be done to the entries that are selected in the log, besides sending and deleting them. Each is
// one edit. What cannot be done now has a reason, which whoever offers it shows.

#include "model/CutAndJoin.h"
#include "ui_core/EntryEchoes.h"

namespace pendra {

class LogController;

enum class Correction { Split, Duplicate, Merge, StartAgain };

/// Why it cannot be done to the selected entries, as a sentence; empty when it can.
[[nodiscard]] QString whyNot(Correction correction, const LogController& log);

/// Why the time of an entry is not to be touched, as a sentence.
[[nodiscard]] QString whyHeld(TimeHold hold);

/// A copy of each selected entry, not sent, of the same time; of a running one, as long as it is by now. The
/// copies are selected. Answers what is to be said: over what they lie.
[[nodiscard]] QString duplicateSelected(LogController& log);
/// One entry of all that are selected. Answers what is to be said.
[[nodiscard]] QString mergeSelected(LogController& log);
/// Starts the activity of the selected entry, which is listed again where it was complete.
void startSelectedAgain(LogController& log);

/// What the window says that asks where an entry is cut.
struct SplitTexts {
  QString title;     ///< of its activity
  QString span;      ///< "Mon 23 Nov, 13:00 to 14:01, 01:00:59"
  QString proposal;  ///< the middle of the entry; of a running one, now
};
[[nodiscard]] SplitTexts splitTexts(const TimeEntry& entry);

/// Where a text cuts an entry.
struct SplitReading {
  std::optional<Instant> at;  ///< none when it cannot
  Echo echo;                  ///< how long the parts are, or why there are none
};
/// A time of day that comes several times within the entry is its first.
[[nodiscard]] SplitReading readSplit(const TimeEntry& entry, const QString& text);
/// Cuts the entry unless it has changed so that it cannot be cut there any more.
void split(TimeEntry& entry, Instant at);

}  // namespace pendra
