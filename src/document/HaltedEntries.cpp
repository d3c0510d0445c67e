#include "document/HaltedEntries.h"

#include <QDateTime>
#include <QFileInfo>

#include "model/Queries.h"

namespace pendra {

std::optional<Instant> timeOfLastSave(const QString& path) {
  const QDateTime written = QFileInfo(path).lastModified();
  if (!written.isValid()) return std::nullopt;
  return Instant{static_cast<double>(written.toMSecsSinceEpoch()) / 1000 - kUnixToReference};
}

HaltedEntries haltedEntries(const ObjectContext& context, std::optional<Instant> lastSave) {
  const DocumentSettings* settings = queries::firstDocument(context);
  const std::optional<Instant> alive = settings ? settings->aliveAt() : std::nullopt;
  const bool livedOn = alive && (!lastSave || *lastSave < *alive);
  HaltedEntries halted{.entries = {}, .lastSave = livedOn ? alive : lastSave};
  for (TimeEntry* entry : context.all<TimeEntry>()) {
    if (entry->running() == true && entry->storedDuration() == 0) halted.entries.emplace_back(entry);
  }
  return halted;
}

}  // namespace pendra
