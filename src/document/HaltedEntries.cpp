#include "document/HaltedEntries.h"

#include <QDateTime>
#include <QFileInfo>

#include "model/Queries.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

/// A sign of life is stored every two minutes while time runs, and may come late. A file that was written
/// longer after the last one was written by a copy.
constexpr double kLongestSilence = 180;

bool isCutOff(const TimeEntry& entry) {
  return entry.isRunning() && entry.storedDuration() == 0 && entry.start() && !entry.timeIsFixed();
}

/// Whoever stored these entries lived then, and when they began.
Instant lastSignOfLife(const ObjectContext& context, const std::vector<TimeEntry*>& cutOff,
                       std::optional<Instant> lastSave) {
  const DocumentSettings* settings = queries::firstDocument(context);
  const auto stored = settings ? settings->aliveAt() : std::nullopt;
  Instant alive = stored.value_or(lastSave.value_or(kReferenceInstant));
  for (const TimeEntry* entry : cutOff) alive = std::max(alive, *entry->start());
  if (lastSave && *lastSave > alive && *lastSave - alive < kLongestSilence) alive = *lastSave;
  return std::min(alive, context.clock().now());
}

}  // namespace

std::optional<Instant> timeOfLastSave(const QString& path) {
  const QDateTime written = QFileInfo(path).lastModified();
  if (!written.isValid()) return std::nullopt;
  return Instant{static_cast<double>(written.toMSecsSinceEpoch()) / 1000 - kUnixToReference};
}

void haltRunningEntries(ObjectContext& context, std::optional<Instant> lastSave) {
  std::vector<TimeEntry*> running;
  std::vector<TimeEntry*> cutOff;
  for (TimeEntry* entry : context.all<TimeEntry>()) {
    if (entry->running() == false) continue;
    running.push_back(entry);
    if (isCutOff(*entry)) cutOff.push_back(entry);
  }
  if (!cutOff.empty()) {
    const Instant until = lastSignOfLife(context, cutOff, lastSave);
    for (TimeEntry* entry : cutOff) entry->setHaltedAt(until);
  }
  for (TimeEntry* entry : running) entry->setRunning(false);
}

HaltedEntries haltedEntries(const ObjectContext& context) {
  HaltedEntries halted;
  for (TimeEntry* entry : context.all<TimeEntry>()) {
    if (!entry->isHalted()) continue;
    if (halted.entries.empty() || halted.until < *entry->haltedAt()) halted = {{}, *entry->haltedAt()};
    if (halted.until == *entry->haltedAt()) halted.entries.push_back(entry);
  }
  return halted;
}

void setToLastSave(ObjectContext& context, const std::vector<Ref<TimeEntry>>& entries) {
  std::ignore = context.edit(tr("Set to Last Save"), [&] {
    for (const Ref<TimeEntry>& entry : entries) {
      if (!entry || !entry->isHalted()) continue;
      const Instant until = *entry->haltedAt();
      entry->setDuration(std::max(0.0, until - entry->start().value_or(until)));
      entry->setHaltedAt(std::nullopt);
    }
  });
}

void runOn(ObjectContext& context, const std::vector<Ref<TimeEntry>>& entries) {
  std::ignore = context.edit(tr("Run On"), [&] {
    for (const Ref<TimeEntry>& entry : entries) {
      if (entry && canRunOn(*entry)) entry->startTimer();
    }
  });
}

bool canRunOn(const TimeEntry& entry) {
  const Activity* activity = entry.activity();
  return entry.isHalted() && activity && activity->completed() != true && !activity->isRunning();
}

}  // namespace pendra
