#include "ui_core/EntryTexts.h"

#include <cmath>

#include "model/TimeEntry.h"
#include "platform/DateTexts.h"
#include "platform/NaturalDate.h"
#include "platform/Text.h"

namespace pendra {

namespace {

constexpr double kMinute = 60;
const QString kStartNoticeKey = QStringLiteral("start");

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

qint64 integerValue(QStringView text) {
  constexpr qint64 kLimit = std::numeric_limits<qint32>::max();
  text = text.trimmed();
  const bool negative = text.startsWith(u'-');
  if (negative || text.startsWith(u'+')) text = text.sliced(1);
  qint64 value = 0;
  for (const QChar digit : text) {
    if (digit < u'0' || digit > u'9') break;
    value = std::min(value * 10 + (digit.unicode() - u'0'), kLimit);
  }
  return negative ? -value : value;
}

double durationInSeconds(const QString& text) {
  const QStringList pieces = text.split(u':');
  const qint64 minutes = pieces.size() > 1 ? integerValue(pieces[1]) : 0;
  return static_cast<double>((integerValue(pieces[0]) * 60 + minutes) * 60);
}

std::optional<Instant> startInstant(const EntryTexts& texts, std::optional<Instant> before) {
  const QString joined = texts.startTime + texts.startTimeAMPM + texts.startDate;
  const auto typed = dateWithNaturalLanguageString(joined, texts.now, texts.calendar);
  if (!typed || !before) return typed;
  const Instant minuteBefore{std::floor(before->seconds / kMinute) * kMinute};
  return looksLike(*typed, minuteBefore, texts.calendar) ? minuteBefore : typed;
}

void takeStart(TimeEntry& period, const EntryTexts& texts, Notices& notices) {
  if (const auto start = startInstant(texts, period.start())) {
    period.setStart(start);
    notices.withdraw(kStartNoticeKey);
    return;
  }
  if (texts.startDate.isEmpty() && texts.startTime.isEmpty()) return notices.withdraw(kStartNoticeKey);
  const QString typed =
      QStringList{texts.startDate, texts.startTime, texts.startTimeAMPM}.join(u' ').trimmed();
  notices.post(
      {.key = kStartNoticeKey,
       .text = formatted(u"“%@” could not be read as a start; the entry keeps the one it has.", {typed}),
       .actions = {},
       .ofDocument = true});
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
