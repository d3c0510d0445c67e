#pragma once
// "One day" is the day of the month alone: the 3rd of March and the 3rd of April are merged.

#include <optional>
#include <vector>

#include "link/SubmissionRows.h"
#include "platform/Calendar.h"

namespace pendra {

/// The entries that go out as one record of one activity.
struct MergedRecord {
  std::vector<TimeEntry*> entries;  ///< the base entry first
  std::optional<Instant> start;     ///< the earliest
  std::optional<double> duration;   ///< of several entries the sum of their whole seconds
};

/// The records for the rows that have not been sent, in the order in which they go out: from the last row
/// towards the first. Exactly 1.0 in `dateSubmitted` is unsent here. Linear in the rows.
[[nodiscard]] std::vector<MergedRecord> mergedRecords(const std::vector<SubmissionRow>& rows,
                                                      const Calendar& calendar);

}  // namespace pendra
