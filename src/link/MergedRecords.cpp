#include "link/MergedRecords.h"

#include <QHash>
#include <cmath>

#include "model/Activity.h"

namespace pendra {

namespace {

void merge(MergedRecord& record, TimeEntry& match) {
  if (match.start() && (!record.start || match.start() < record.start)) record.start = match.start();
  record.duration = std::trunc(record.duration.value_or(0)) + std::trunc(match.storedDuration());
  record.entries.push_back(&match);
}

}  // namespace

std::vector<MergedRecord> mergedRecords(const std::vector<SubmissionRow>& rows, const Calendar& calendar) {
  std::vector<MergedRecord> records;
  QHash<std::pair<qint64, int>, std::size_t> known;  // by activity and day
  for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
    TimeEntry* period = row->period.get();
    if (!period || !period->activity() || period->sentSeconds() > 1.0) continue;
    const int day = period->start() ? calendar.day(*period->start()).day() : 0;
    const std::pair key(period->activity()->objectID(), day);
    if (const auto found = known.constFind(key); found != known.constEnd()) {
      merge(records[*found], *period);
    } else {
      known.insert(key, records.size());
      records.push_back({.entries = {period}, .start = period->start(), .duration = period->duration()});
    }
  }
  return records;
}

}  // namespace pendra
