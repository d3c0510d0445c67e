#include "ui_core/EntryTexts.h"

#include <cmath>

#include "model/Absence.h"
#include "model/Activity.h"
#include "model/DurationText.h"
#include "model/TimeEntry.h"
#include "platform/DateTexts.h"
#include "platform/NaturalDate.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "ui_core/DurationReading.h"

namespace pendra {

namespace {

constexpr double kMinute = 60;
const QString kStartNoticeKey = QStringLiteral("start");

Instant wholeMinute(Instant instant) { return {std::floor(instant.seconds / kMinute) * kMinute}; }

/// Whether two instants have the same date and time of day, which in the night when the clock is set back two
/// instants have that lie an hour apart.
bool looksLike(Instant one, Instant other, const Calendar& calendar) {
  const QDateTime local = calendar.local(one);
  const QDateTime otherLocal = calendar.local(other);
  return local.date() == otherLocal.date() && local.time() == otherLocal.time();
}

}  // namespace

EntryTexts textsOf(const EntryFields& fields, const Session& session, bool entryIsSelected) {
  return {.startTime = fields.startTimeField.text(),
          .startTimeAMPM = fields.startTimeFieldAMPM.text(),
          .startDate = fields.startDateField.text(),
          .duration = fields.durationField.text(),
          .entryIsSelected = entryIsSelected,
          .now = session.ports().clock.now(),
          .calendar = session.ports().calendar};
}

std::optional<Instant> startInstant(const EntryTexts& texts, std::optional<Instant> before) {
  const QString joined = texts.startTime + texts.startTimeAMPM + texts.startDate;
  const auto typed = readNaturalDate(joined, texts.now, texts.calendar);
  if (!typed || !before) return typed;
  const Instant minuteBefore = wholeMinute(*before);
  return looksLike(*typed, minuteBefore, texts.calendar) ? minuteBefore : typed;
}

std::optional<Instant> typedStart(const TimeEntry& entry, const EntryTexts& texts) {
  const auto typed = startInstant(texts, entry.start());
  const bool isAdded = !entry.duration() && !entry.isRunning() && !entry.haltedAt();
  const double length = readDuration(texts.duration).seconds;
  if (!typed || !entry.start() || !isAdded || length <= 0) return typed;
  if (*typed != wholeMinute(*entry.start())) return typed;
  return std::min(*typed, wholeMinute(texts.now + -length));
}

std::optional<Instant> startToStore(const TimeEntry& entry, const EntryTexts& texts, Notices& notices) {
  notices.withdraw(kStartNoticeKey);
  if (const auto start = typedStart(entry, texts)) return start;
  const QString typed =
      QStringList{texts.startDate, texts.startTime, texts.startTimeAMPM}.join(u' ').trimmed();
  if (!(texts.startDate.isEmpty() && texts.startTime.isEmpty())) {
    notices.post(
        {.key = kStartNoticeKey,
         .text = formatted(tr("“%@” could not be read as a start; the entry keeps the one it has."), {typed}),
         .actions = {},
         .ofDocument = true});
  }
  return entry.start();
}

void storeTime(TimeEntry& entry, std::optional<Instant> start, const QString& length) {
  const bool isTyped = length != durationText(entry.storedDuration());
  entry.setStart(start);
  if (entry.isRunning() || (entry.haltedAt() && !isTyped)) return;
  entry.setDuration(readDuration(length).seconds);
  entry.setHaltedAt(std::nullopt);
  if (isTyped) setAway(entry, std::nullopt);  // whoever types a length has said what counts
}

Instant startOfAddedEntry(const Activity& activity, Instant now, const Calendar& calendar) {
  std::optional<Instant> lastEnd;
  for (const TimeEntry* entry : activity.entries()) {
    if (!entry->start() || calendar.day(*entry->start()) != calendar.day(now)) continue;
    const Instant end = entry->endAt(now);
    lastEnd = std::max(lastEnd.value_or(end), end);
  }
  return std::min(lastEnd.value_or(now), now);
}

void showStart(const EntryFields& fields, std::optional<Instant> start, const Calendar& calendar) {
  fields.startDateField.setText(start ? shortDate(*start, calendar) : QString());
  fields.startTimeField.setText(start ? timeOfDay(*start, calendar) : QString());
  fields.startTimeFieldAMPM.setText(start ? dayHalf(*start, calendar) : QString());
}

void enableTimeEditFields(const EntryFields& fields, bool enabled) {
  fields.startTimeField.setEnabled(enabled);
  fields.startDateField.setEnabled(enabled);
  fields.durationField.setEnabled(enabled);
  fields.startTimeFieldAMPM.setEnabled(enabled);
}

}  // namespace pendra
