#pragma once
// A row of the time log is a snapshot of one entry. Its names are those at the last reload and are shared by
// the rows of an activity; its raw values become text only when a cell is shown.

#include <memory>

#include "model/Activity.h"
#include "model/TimeEntry.h"
#include "ui_core/RowTable.h"

class QLocale;

namespace pendra {

/// What the rows of one activity have in common.
struct LogActivity {
  Ref<Activity> activity;
  QString customer;
  QString job;
  QString service;
};

struct LogRow {
  std::shared_ptr<const LogActivity> of;
  Ref<TimeEntry> period;
  std::optional<Instant> start;
  double duration = 0;          ///< seconds; of a running entry, as of the last tick
  double submittedSeconds = 0;  ///< from the reference instant

  [[nodiscard]] Activity* activity() const { return of->activity.get(); }
  [[nodiscard]] const QString& customer() const { return of->customer; }
  [[nodiscard]] const QString& job() const { return of->job; }
  [[nodiscard]] const QString& service() const { return of->service; }
  /// Whether the log shows the row as sent. Kept: exactly one second counts as sent here, which marking
  /// as unsent and the export take as not sent.
  [[nodiscard]] bool showsAsSent() const { return submittedSeconds >= 1.0; }
};

/// The columns "customer", "job", "service", "date", "duration", "submitted" and "edit". The locale shapes
/// the date column alone.
[[nodiscard]] RowTable<LogRow> makeLogTable(const Calendar& calendar, const QLocale& locale);

}  // namespace pendra
