#pragma once
// What a field holds is text until OK; what OK will make of it stands beside it while it is being typed.

#include <optional>

#include "model/Overlaps.h"
#include "ui_core/DurationReading.h"
#include "ui_core/EntryTexts.h"

namespace pendra {

/// A text beside a field, which is the field's accessible description as well.
struct Echo {
  enum class Tone {
    Quiet,
    Information,  ///< with its sign
    Warning,      ///< with its sign
    Advice,       ///< what a warning adds
    Running,      ///< with the sign of what runs
    Result,       ///< what will be stored, where that stands first
  };

  QString text{};  ///< empty where there is nothing to say
  Tone tone = Tone::Quiet;
};

/// What stands beside the fields of an entry.
struct EntryEchoes {
  Echo job;
  Echo names;  ///< of customer, job and service together
  Echo start;
  Echo duration;
  Echo advice;              ///< below the duration
  bool lengthRuns = false;  ///< the length is the clock's and cannot be typed
};

/// Where an editor shows them.
class EchoDisplay {
 public:
  virtual ~EchoDisplay() = default;
  virtual void showEchoes(const EntryEchoes& echoes) = 0;
};

/// "starts 17:03:00, 4 s dropped", for what the start's fields will make of the entry's start. Nothing where
/// nobody touched them and the start stays as it is shown.
[[nodiscard]] Echo startEcho(const TimeEntry& entry, const EntryTexts& texts, bool touched);
/// "stored as 90 h 00 min".
[[nodiscard]] Echo durationEcho(const DurationReading& reading);
/// What helps where the length is in doubt: when the entry would end, and what to type instead.
[[nodiscard]] Echo adviceEcho(const DurationReading& reading, std::optional<Instant> start,
                              const Calendar& calendar);
/// "Overlaps Acme - Roof and 2 more by 00:35:00"; empty where nothing overlaps.
[[nodiscard]] QString overlapText(const Overlaps& overlaps);
/// "Changes all 10 entries of this activity".
[[nodiscard]] Echo entriesEcho(std::size_t entries);

/// Which of the two somebody has typed into.
struct TimeTouched {
  bool start = false;
  bool length = false;
};
/// Start and length of an entry as its fields will leave them.
void echoTime(EntryEchoes& echoes, const TimeEntry& entry, const EntryTexts& texts,
              const TimeTouched& touched);

}  // namespace pendra
