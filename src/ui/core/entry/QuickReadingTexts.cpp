#include "ui_core/QuickReadingTexts.h"

#include <cmath>

#include "model/DurationText.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "ui_core/DurationReading.h"
#include "ui_core/EntryEchoes.h"

namespace pendra {

namespace {

using Deed = QuickReading::Deed;

constexpr double kMinute = 60;
constexpr qsizetype kMostOfNotes = 120;

QString clockText(const QDateTime& local) { return local.time().toString(QStringLiteral("H:mm")); }

QString dayText(QDate day, QDate today) {
  if (day == today) return tr("today");
  if (day == today.addDays(-1)) return tr("yesterday");
  return day.toString(QStringLiteral("ddd d MMM yyyy"));
}

/// "today from 9:30 to 11:00", "yesterday from 22:00 to 1:00 the next day".
QString spanText(const QuickReading& reading, const ObjectContext& context) {
  const Calendar& calendar = context.calendar();
  const QDateTime start = calendar.local(reading.start);
  const QDateTime end = calendar.local(reading.end);
  const QDate today = calendar.day(context.clock().now());
  const QString day = dayText(start.date(), today);
  if (start.date().daysTo(end.date()) > 1) {
    return formatted(tr("%@ from %@ to %@ %@"),
                     {day, clockText(start), dayText(end.date(), today), clockText(end)});
  }
  const char* pattern = start.date() == end.date()
                            ? QT_TRANSLATE_NOOP("pendra", "%@ from %@ to %@")
                            : QT_TRANSLATE_NOOP("pendra", "%@ from %@ to %@ the next day");
  return formatted(tr(pattern), {day, clockText(start), clockText(end)});
}

QString deedText(const QuickReading& reading, const ObjectContext& context) {
  if (reading.deed == Deed::Book) {
    return formatted(tr("Books %@, %@"),
                     {durationText(reading.end - reading.start), spanText(reading, context)});
  }
  if (reading.deed == Deed::StartNow) return tr("Starts now");
  const Calendar& calendar = context.calendar();
  const QDateTime start = calendar.local(reading.start);
  const QDate today = calendar.day(context.clock().now());
  // In whole minutes, so that what is read out does not change each second.
  const QString ago = durationText(std::floor((reading.end - reading.start) / kMinute) * kMinute);
  if (start.date() == today) return formatted(tr("Starts as of %@, %@ ago"), {clockText(start), ago});
  return formatted(tr("Starts as of %@ %@, %@ ago"), {dayText(start.date(), today), clockText(start), ago});
}

QStringList newNamesOf(const QuickReading& reading) {
  QStringList texts;
  const auto add = [&](const QuickReading::Name& name, const char* pattern) {
    if (name.isNew) texts << formatted(tr(pattern), {name.text});
  };
  add(reading.customer, QT_TRANSLATE_NOOP("pendra", "New customer “%@”"));
  add(reading.job, QT_TRANSLATE_NOOP("pendra", "New job “%@”"));
  add(reading.service, QT_TRANSLATE_NOOP("pendra", "New service item “%@”"));
  return texts;
}

QString subjectOf(const QuickReading& reading) {
  QString notes = reading.notes.simplified();
  if (notes.size() > kMostOfNotes) notes = notes.left(kMostOfNotes) + u'…';
  const QString title = titleOf(reading);
  return notes.isEmpty() ? title : formatted(tr("%@, “%@”"), {title, notes});
}

}  // namespace

QString QuickReadingTexts::joined() const {
  QStringList lines{deed, subject};
  lines += warnings + remarks;
  lines.removeAll(QString());
  return lines.join(u'\n');
}

QString titleOf(const QuickReading& reading) {
  QStringList names{reading.customer.text, reading.job.text, reading.service.text};
  names.removeAll(QString());
  return names.join(QStringLiteral(" - "));
}

QuickReadingTexts textsOf(const QuickReading& reading, const ObjectContext& context) {
  if (reading.fault) return {.deed = reading.fault->reason, .isRefused = true};
  if (reading.isEmpty()) return {};
  QuickReadingTexts texts{.deed = deedText(reading, context), .subject = subjectOf(reading)};
  if (!reading.activity) {
    texts.subject = formatted(tr("New activity: %@"), {texts.subject});
    texts.remarks = newNamesOf(reading);
  } else if (reading.activity->completed() == true) {
    texts.remarks << tr("Takes up a completed activity again");
  }
  for (const Instant instant : reading.twice) {
    texts.remarks << formatted(tr("%@ was twice on that day; the first is meant"),
                               {clockText(context.calendar().local(instant))});
  }
  if (!reading.overlaps.parts.empty()) texts.warnings << overlapText(reading.overlaps);
  if (reading.end - reading.start > kUsualAtMost) texts.warnings << tr("Longer than 12 hours");
  return texts;
}

}  // namespace pendra
