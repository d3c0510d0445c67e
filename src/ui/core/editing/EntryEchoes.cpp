#include "ui_core/EntryEchoes.h"

#include <cmath>

#include "model/ActivityTitle.h"
#include "model/DurationText.h"
#include "model/TimeEntry.h"
#include "platform/DateTexts.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

using Doubt = DurationReading::Doubt;

constexpr double kMinute = 60;

/// ", 4 s dropped" behind a text; whole seconds only.
QString withDropped(const QString& text, double seconds) {
  if (seconds < 1) return text;
  return formatted(tr("%@, %@ s dropped"), {text, QString::number(static_cast<qint64>(seconds))});
}

/// With its day unless that stands in the field already.
QString startInWords(Instant start, const EntryTexts& texts) {
  const QDateTime local = texts.calendar.local(start);
  const bool dayIsShown = readShortDate(texts.startDate) == local.date();
  return local.toString(dayIsShown ? QStringLiteral("HH:mm:ss") : QStringLiteral("ddd d MMM, HH:mm:ss"));
}

}  // namespace

Echo startEcho(const TimeEntry& entry, const EntryTexts& texts, bool touched) {
  const auto start = typedStart(entry, texts);
  if (!start && !touched) return {};
  if (!start) return {tr("cannot be read, it stays"), Echo::Tone::Warning};
  const double moved = entry.start().value_or(*start) - *start;
  if (!touched && std::abs(moved) < 1) return {};
  const double dropped = moved > 0 && moved < kMinute ? moved : 0;
  return {withDropped(formatted(tr("starts %@"), {startInWords(*start, texts)}), dropped)};
}

Echo durationEcho(const DurationReading& reading) {
  return {withDropped(formatted(tr("stored as %@"), {durationInWords(reading.seconds)}), reading.dropped),
          reading.doubt == Doubt::None ? Echo::Tone::Quiet : Echo::Tone::Warning};
}

Echo adviceEcho(const DurationReading& reading, std::optional<Instant> start, const Calendar& calendar) {
  QStringList sentences;
  if (reading.doubt == Doubt::TooLong && start) {
    const QDateTime end = calendar.local(*start + reading.seconds);
    sentences << formatted(tr("Ends %@."), {end.toString(QStringLiteral("ddd d MMM, H:mm"))});
  }
  if (!reading.advice.isEmpty()) sentences << reading.advice;
  return {sentences.join(u' '), Echo::Tone::Advice};
}

QString overlapText(const Overlaps& overlaps) {
  if (overlaps.parts.empty()) return {};
  const QString first = activityTitle(*overlaps.parts.front().entry->activity());
  const QString length = durationText(std::round(overlaps.seconds));
  const auto more = overlaps.parts.size() - 1;
  if (more == 0) return formatted(tr("Overlaps %@ by %@"), {first, length});
  return formatted(tr("Overlaps %@ and %@ more by %@"), {first, QString::number(more), length});
}

Echo entriesEcho(std::size_t entries) {
  return {counted(static_cast<qint64>(entries), "Changes the only entry of this activity",
                  "Changes all %Ln entries of this activity"),
          Echo::Tone::Information};
}

void echoTime(EntryEchoes& echoes, const TimeEntry& entry, const EntryTexts& texts,
              const TimeTouched& touched) {
  const auto typed = typedStart(entry, texts);
  const auto start = typed ? typed : entry.start();
  echoes.start = startEcho(entry, texts, touched.start);
  if (entry.isRunning()) {
    echoes.lengthRuns = true;
    const double elapsed = start ? texts.now - *start : 0;
    echoes.duration = {formatted(tr("runs for %@"), {durationInWords(elapsed)}), Echo::Tone::Running};
    echoes.advice = {tr("Stop it to correct its length."), Echo::Tone::Quiet};
    return;
  }
  const DurationReading reading = readDuration(texts.duration);
  if (!touched.length && reading.dropped < 1 && reading.doubt == Doubt::None) return;
  echoes.duration = durationEcho(reading);
  echoes.advice = adviceEcho(reading, start, texts.calendar);
}

}  // namespace pendra
