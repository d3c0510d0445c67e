#pragma once
// A row of the time log shows one entry: the names as the document has them at the moment, and raw values of
// the entry, taken when the row was made or its entry edited. They become text only when a cell is shown.

#include "model/Activity.h"
#include "model/TimeEntry.h"
#include "ui_core/RowTable.h"

class QLocale;

namespace pendra {

struct LogRow {
  Ref<TimeEntry> entry;
  Ref<Activity> of;
  std::optional<Instant> start;
  double duration = 0;          ///< seconds; of a running entry, as of the last tick
  double submittedSeconds = 0;  ///< from the reference instant

  [[nodiscard]] Activity* activity() const { return of.get(); }
  [[nodiscard]] QString customer() const;
  [[nodiscard]] QString job() const;
  [[nodiscard]] QString service() const;
  /// Whether the log shows the row as sent. Kept: exactly one second counts as sent here, which marking
  /// as unsent and the export take as not sent.
  [[nodiscard]] bool showsAsSent() const { return submittedSeconds >= 1.0; }
};

/// The columns "customer", "job", "service", "date", "duration", "submitted" and "edit". The locale shapes
/// the date column alone.
[[nodiscard]] RowTable<LogRow> makeLogTable(const Calendar& calendar, const QLocale& locale);

}  // namespace pendra
