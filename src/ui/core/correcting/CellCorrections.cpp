#include "ui_core/CellCorrections.h"

#include <cmath>

#include "model/Activity.h"
#include "model/Customer.h"
#include "model/CutAndJoin.h"
#include "model/DurationText.h"
#include "platform/DateTexts.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "store/ObjectContext.h"
#include "ui_core/DurationReading.h"
#include "ui_core/EntryChecks.h"
#include "ui_core/LogController.h"
#include "ui_core/LogCorrections.h"
#include "ui_core/Moments.h"

namespace pendra {

namespace {

constexpr double kMinute = 60;

const Calendar& calendarOf(const TimeEntry& entry) { return entry.context()->calendar(); }
Instant nowOf(const TimeEntry& entry) { return entry.context()->clock().now(); }
QDate dayOf(const TimeEntry& entry) { return calendarOf(entry).day(*entry.start()); }
Instant minuteOf(Instant instant) { return {std::floor(instant.seconds / kMinute) * kMinute}; }

/// What a text makes of an entry.
struct Meant {
  Instant start{};
  double length = 0;
  QString refusal{};
  Echo remark{};       ///< what should be seen of it, a doubt most often
  double dropped = 0;  ///< seconds that were typed and are not stored

  [[nodiscard]] Instant end() const { return start + length; }
};

/// The entry as it stands.
Meant asIs(const TimeEntry& entry) { return {.start = *entry.start(), .length = entry.length()}; }

EntryTexts textsFor(const TimeEntry& entry, Instant start, const QString& length) {
  const Calendar& calendar = calendarOf(entry);
  return {.startTime = timeOfDay(start, calendar),
          .startTimeAMPM = dayHalf(start, calendar),
          .startDate = shortDate(start, calendar),
          .duration = length,
          .entryIsSelected = true,
          .now = nowOf(entry),
          .calendar = calendar};
}

/// Why the sheet would not take it; empty when it would.
QString refusalOf(const TimeEntry& entry, Instant start, const QString& length) {
  const EntryCheck* failing = firstFailing(timeEntryChecks(), textsFor(entry, start, length));
  return failing ? tr(failing->message) : QString();
}

QString notATime() { return tr("A time is typed as 14:30 or 2:30 PM."); }

Echo endsLater() { return {tr("Ends later than now."), Echo::Tone::Warning}; }

/// Of several moments the one nearest to the start that the entry has.
Meant startMeant(const TimeEntry& entry, const QString& text) {
  Meant meant = asIs(entry);
  const auto moments = momentsNamed(text, dayOf(entry), dayOf(entry), nowOf(entry), calendarOf(entry));
  if (moments.empty()) return {.start = meant.start, .refusal = notATime()};
  meant.start = *std::min_element(moments.begin(), moments.end(), [&](Instant one, Instant other) {
    return std::abs(one - *entry.start()) < std::abs(other - *entry.start());
  });
  if (entry.isRunning()) meant.length = nowOf(entry) - meant.start;
  meant.refusal = refusalOf(entry, meant.start, {});
  if (entry.isRunning() && meant.length < 0) meant.refusal = tr("What runs cannot begin later than now.");
  if (meant.end() > nowOf(entry)) meant.remark = endsLater();
  return meant;
}

Meant lengthMeant(const TimeEntry& entry, const QString& text) {
  Meant meant = asIs(entry);
  const DurationReading reading = readDuration(text);
  meant.refusal = refusalOf(entry, meant.start, text);
  if (text.trimmed().isEmpty() || reading.doubt == DurationReading::Doubt::Unreadable) {
    meant.refusal = tr("A length is typed as 1:30, 1h30 or 90m.");
  }
  if (!meant.refusal.isEmpty()) return meant;
  const EntryTexts texts = textsFor(entry, meant.start, text);
  const Instant typed = typedStart(entry, texts).value_or(meant.start);
  if (typed < minuteOf(meant.start)) meant.start = typed;  // the first length of an entry added by hand
  meant.length = reading.seconds;
  meant.dropped = reading.dropped;
  meant.remark = {adviceEcho(reading, meant.start, texts.calendar).text, Echo::Tone::Warning};
  if (reading.doubt == DurationReading::Doubt::Differs && meant.remark.text.isEmpty()) {
    meant.remark.text = tr("The text seems to say something else.");
  }
  return meant;
}

/// Counted from the full minute of the start, so that start, end and length agree as they are shown.
Meant endMeant(const TimeEntry& entry, const QString& text) {
  Meant meant = asIs(entry);
  const Instant from = minuteOf(meant.start);
  const QDate last = std::max(dayOf(entry).addDays(1), calendarOf(entry).day(meant.end()));
  const auto moments = momentsNamed(text, dayOf(entry), last, nowOf(entry), calendarOf(entry));
  const auto end = std::find_if(moments.begin(), moments.end(), [&](Instant one) { return one >= from; });
  if (moments.empty()) return {.start = meant.start, .refusal = notATime()};
  const QDate today = dayOf(entry);
  const bool isLater = end != moments.end() && moments.size() > 1 && calendarOf(entry).day(*end) > today;
  if (end == moments.end() || (isLater && *end - from > kUsualAtMost)) {
    meant.refusal = formatted(tr("That is before the start, at %@. Another day is typed as 11/24/26 9:30."),
                              {momentText(meant.start, today, calendarOf(entry))});
    return meant;
  }
  const double length = *end - from;
  meant.length = std::floor(length / kMinute) * kMinute;
  meant.dropped = length - meant.length;
  if (meant.length > kUsualAtMost || isLater) {
    meant.remark = {formatted(tr("Ends %@."), {momentText(*end, {}, calendarOf(entry))}),
                    meant.length > kUsualAtMost ? Echo::Tone::Warning : Echo::Tone::Quiet};
  }
  if (*end > nowOf(entry)) meant.remark = endsLater();
  return meant;
}

Meant meantBy(const TimeEntry& entry, LogCell cell, const QString& text) {
  if (const QString held = whyNotTyped(entry, cell); !held.isEmpty()) return {.refusal = held};
  if (cell == LogCell::Start) return startMeant(entry, text);
  return cell == LogCell::End ? endMeant(entry, text) : lengthMeant(entry, text);
}

QString lengthWords(const TimeEntry& entry, const Meant& meant) {
  const QString now = durationText(meant.length);
  const bool wasOpen = !entry.duration() || entry.haltedAt();
  const QString was = wasOpen ? QString() : durationText(std::trunc(entry.storedDuration()));
  const QString dropped = QString::number(static_cast<qint64>(meant.dropped));
  if (meant.dropped >= 1) return formatted(tr("Stored as %@, %@ s dropped"), {now, dropped});
  return wasOpen ? formatted(tr("Stored as %@"), {now}) : formatted(tr("Stored as %@, was %@"), {now, was});
}

QString resultWords(const TimeEntry& entry, LogCell cell, const Meant& meant) {
  if (cell != LogCell::Start) return lengthWords(entry, meant);
  const QDate day = dayOf(entry);
  const Calendar& calendar = calendarOf(entry);
  return formatted(tr("Starts %@, was %@"),
                   {momentText(meant.start, day, calendar), momentText(*entry.start(), day, calendar)});
}

std::optional<CellReading::Following> followingOf(const TimeEntry& entry, LogCell cell, const Meant& meant,
                                                  const QLocale& locale) {
  const bool isLength = cell == LogCell::End || (cell == LogCell::Start && entry.isRunning());
  if (isLength) return {{QStringLiteral("duration"), durationText(std::trunc(meant.length))}};
  return {{QStringLiteral("end"), clockText(meant.end(), calendarOf(entry), locale)}};
}

/// What was noted before and begins like that: with the entry's activity, then with its customer's others,
/// the latest first.
QStringList notesLike(const TimeEntry& entry, const QString& text) {
  constexpr qsizetype kMost = 6;
  QStringList found;
  const auto add = [&](const std::optional<QString>& note) {
    const bool isLike = note && note->size() > text.size() && note->startsWith(text, Qt::CaseInsensitive);
    if (isLike && found.size() < kMost && !found.contains(*note)) found << *note;
  };
  const auto addNotesOf = [&](const Activity& activity) {
    const Objects<TimeEntry> entries = activity.entries();
    for (std::size_t at = entries.size(); at > 0 && found.size() < kMost; --at) {
      if (entries[at - 1] != &entry) add(entries[at - 1]->notes());
    }
    add(activity.notes());
  };
  const Activity* own = entry.activity();
  if (!own) return found;
  addNotesOf(*own);
  if (!own->customer()) return found;
  for (const Activity* other : own->customer()->activities()) {
    if (other != own) addNotesOf(*other);
  }
  return found;
}

CellReading refused(const QString& why) {
  return {.isRefused = true,
          .echoes = {{why, Echo::Tone::Warning}, {tr("Esc leaves it as it was."), Echo::Tone::Quiet}}};
}

}  // namespace

std::optional<LogCell> logCellOf(QStringView column) {
  if (column == u"notes") return LogCell::Notes;
  if (column == u"start") return LogCell::Start;
  if (column == u"end") return LogCell::End;
  return column == u"duration" ? std::optional(LogCell::Duration) : std::nullopt;
}

QString whyNotTyped(const TimeEntry& entry, LogCell cell) {
  if (cell == LogCell::Notes) return {};
  if (entry.timeIsFixed()) return whyHeld(timeHoldOf(entry));
  if (!entry.start()) return tr("This entry has no start. It gets one in its editor.");
  return entry.isRunning() && cell != LogCell::Start ? tr("Stop it to correct its length.") : QString();
}

QString textForTyping(const TimeEntry& entry, LogCell cell, const QLocale& locale) {
  if (cell == LogCell::Notes) return entry.notes().value_or(QString());
  if (cell == LogCell::Duration) return durationText(entry.storedDuration());
  if (!entry.start()) return {};
  return clockText(cell == LogCell::Start ? *entry.start() : entry.end(), calendarOf(entry), locale);
}

CellReading readTyped(const TimeEntry& entry, LogCell cell, const QString& text, const QLocale& locale) {
  const Echo keys{tr("Return stores, Esc leaves it as it was."), Echo::Tone::Quiet};
  if (cell == LogCell::Notes) return {.echoes = {keys}, .completions = notesLike(entry, text)};
  if (text == textForTyping(entry, cell, locale)) return {.echoes = {keys}};
  const Meant meant = meantBy(entry, cell, text);
  if (!meant.refusal.isEmpty()) return refused(meant.refusal);
  CellReading reading{.echoes = {{resultWords(entry, cell, meant), Echo::Tone::Result}},
                      .follows = followingOf(entry, cell, meant, locale)};
  if (!meant.remark.text.isEmpty()) reading.echoes.push_back(meant.remark);
  const QString overlaps = overlapText(overlapsWith(*entry.context(), meant.start, meant.end(), &entry));
  if (!overlaps.isEmpty()) reading.echoes.push_back({overlaps, Echo::Tone::Warning});
  reading.echoes.push_back(keys);
  return reading;
}

void storeTyped(TimeEntry& entry, LogCell cell, const QString& text, const QLocale& locale) {
  if (text == textForTyping(entry, cell, locale)) return;
  const Meant meant = cell == LogCell::Notes ? Meant{} : meantBy(entry, cell, text);
  if (!meant.refusal.isEmpty()) return;
  std::ignore = entry.context()->edit(tr("Edit of an Entry"), [&] {
    if (cell == LogCell::Notes) return entry.setNotes(text);
    if (cell == LogCell::Start) return entry.setStart(meant.start);
    storeTime(entry, meant.start, durationText(meant.length));
  });
}

TableModel::EditRules logEditRules(LogController& log, const QLocale& locale) {
  const auto entryIn = [&log](int row) {
    const LogRow* shown = log.rows().row(row);
    return shown ? shown->entry.get() : nullptr;
  };
  TableModel::EditRules rules;
  rules.whyNot = [entryIn](const QString& column, int row) {
    const auto cell = logCellOf(column);
    const TimeEntry* entry = entryIn(row);
    return cell && entry ? whyNotTyped(*entry, *cell) : QString();
  };
  rules.textForEditing = [entryIn, locale](const QString& column, int row) {
    const auto cell = logCellOf(column);
    const TimeEntry* entry = entryIn(row);
    return cell && entry ? textForTyping(*entry, *cell, locale) : QString();
  };
  rules.read = [entryIn, locale](const QString& text, const QString& column, int row) {
    const auto cell = logCellOf(column);
    const TimeEntry* entry = entryIn(row);
    return cell && entry ? readTyped(*entry, *cell, text, locale) : CellReading{};
  };
  rules.setValue = [entryIn, locale](const QString& text, const QString& column, int row) {
    const auto cell = logCellOf(column);
    TimeEntry* entry = entryIn(row);
    if (cell && entry) storeTyped(*entry, *cell, text, locale);
  };
  return rules;
}

}  // namespace pendra
