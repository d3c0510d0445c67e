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
    TimeEntry* entry = row->entry.get();
    if (!entry || !entry->activity() || entry->wasSent()) continue;
    const int day = entry->start() ? calendar.day(*entry->start()).day() : 0;
    const std::pair key(entry->activity()->objectID(), day);
    if (const auto found = known.constFind(key); found != known.constEnd()) {
      merge(records[*found], *entry);
    } else {
      known.insert(key, records.size());
      records.push_back({.entries = {entry}, .start = entry->start(), .duration = entry->duration()});
    }
  }
  return records;
}

}  // namespace pendra
