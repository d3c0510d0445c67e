#pragma once
// A row of the time log shows one entry: the names as the document has them at the moment, and raw values of
// the entry, taken when the row was made or its entry edited. They become text only when a cell is shown.

#include "model/Activity.h"
#include "model/TimeEntry.h"
#include "ui_core/RowTable.h"

class QLocale;

namespace pendra {

/// Whether the log shows as sent what was sent so long after the reference instant. Kept: promised to those
/// who hide what is sent: exactly one second counts as sent here, which marking as unsent and the export take
/// as not sent.
constexpr bool showsAsSent(double sentSeconds) { return sentSeconds >= 1.0; }

struct LogRow {
  Ref<TimeEntry> entry;
  Ref<Activity> of;
  std::optional<Instant> start;
  double duration = 0;     ///< seconds; of a running entry, as of the last tick
  double sentSeconds = 0;  ///< from the reference instant
  int searchPlace = -1;    ///< among what a search has gathered; -1: none

  [[nodiscard]] Activity* activity() const { return of.get(); }
  [[nodiscard]] QString customer() const;
  [[nodiscard]] QString job() const;
  [[nodiscard]] QString service() const;
  [[nodiscard]] QString notes() const;
  /// Its start and its length.
  [[nodiscard]] std::optional<Instant> end() const;
  /// Whether its activity can be started again: it is there and does not run.
  [[nodiscard]] bool canStart() const;
  [[nodiscard]] bool showsAsSent() const { return pendra::showsAsSent(sentSeconds); }
};

/// The columns "state", "customer", "job", "service", "notes", "edit", "date", "start", "end", "duration" and
/// "submitted". The locale shapes days and times of day. While the start has a column of its own
/// (`showsStart`), the date says the day only.
[[nodiscard]] RowTable<LogRow> makeLogTable(const Calendar& calendar, const QLocale& locale,
                                            const std::function<bool()>& showsStart);
/// A day of every name in every month, late in the evening: one of these texts is the widest of the column
/// "date", whatever the font.
[[nodiscard]] QStringList widestLogDates(const QLocale& locale, bool withTime);

}  // namespace pendra
