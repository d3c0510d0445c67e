#include "document/HaltedEntries.h"

#include <QDateTime>
#include <QFileInfo>

#include "store/ObjectContext.h"

namespace pendra {

std::optional<Instant> timeOfLastSave(const QString& path) {
  const QDateTime written = QFileInfo(path).lastModified();
  if (!written.isValid()) return std::nullopt;
  return Instant{static_cast<double>(written.toMSecsSinceEpoch()) / 1000 - kUnixToReference};
}

HaltedEntries haltedEntries(const ObjectContext& context, std::optional<Instant> lastSave) {
  HaltedEntries halted{.entries = {}, .lastSave = lastSave};
  for (TimeEntry* period : context.all<TimeEntry>()) {
    if (period->running() == true && period->storedDuration() == 0) halted.entries.emplace_back(period);
  }
  return halted;
}

}  // namespace pendra
