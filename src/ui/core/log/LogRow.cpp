#include "ui_core/LogRow.h"

#include <QLocale>

#include "link/AffectedActivities.h"
#include "link/DoubtfulLengths.h"
#include "model/DurationText.h"
#include "model/Queries.h"
#include "platform/DateTexts.h"
#include "platform/Translation.h"
#include "ui_core/AwayNotice.h"
#include "ui_core/CellCorrections.h"
#include "ui_core/LogCorrections.h"
#include "ui_core/Moments.h"

namespace pendra {

namespace {

/// A column as wide as the widest of these texts.
ColumnHead fixed(ColumnHead head, const QStringList& widest) {
  head.widest = widest;
  return head;
}

ColumnHead atTheRight(ColumnHead head) {
  head.alignment = Alignment::Right;
  return head;
}

ColumnHead canHide(ColumnHead head) {
  head.canHide = true;
  return head;
}

QString dayText(QDate day, const QLocale& locale) {
  return locale.dayName(day.dayOfWeek(), QLocale::ShortFormat) + u' ' +
         locale.toString(day, QLocale::ShortFormat);
}

/// The desktop's own short form of date and time, after the day of the week.
QString dateText(const QDateTime& local, const QLocale& locale) {
  return dayText(local.date(), locale) + u", " + locale.toString(local.time(), QLocale::ShortFormat);
}

QString submittedText(const LogRow& row, const Calendar& calendar) {
  return row.showsAsSent() ? shortDate({row.sentSeconds}, calendar) : QStringLiteral("-");
}

bool isRunning(const LogRow& row) { return row.entry && row.entry->isRunning(); }

/// What the user is still asked about this entry.
QString questionOf(const TimeEntry& entry) {
  return entry.isHalted() ? tr("cut off, length?") : awayMark(entry);
}

/// What is to be known about the entry before anything else; of several, what matters most.
QString stateText(const LogRow& row) {
  if (!row.entry) return {};
  if (row.entry->sendingSince()) return whyHeld(TimeHold::InDoubt);
  if (row.entry->isHalted()) return whyHeld(TimeHold::Halted);
  if (QString away = awayMark(*row.entry); !away.isEmpty()) return away;
  if (row.showsAsSent()) return {};
  if (QString lost = row.of ? lossText(*row.of) : QString(); !lost.isEmpty()) return lost;
  return isRunning(row) ? QString() : doubtfulLengthText(row.duration);
}

RowSign signOf(const LogRow& row) {
  if (row.entry && !row.entry->sendingSince() && !questionOf(*row.entry).isEmpty()) return RowSign::Waiting;
  return stateText(row).isEmpty() ? RowSign::None : RowSign::Warning;
}

QString remarkOf(const LogRow& row) {
  if (!row.entry) return {};
  return row.entry->sendingSince() ? tr("answer lost, asked before it is sent") : questionOf(*row.entry);
}

/// What a press on the sign does; nothing where the activity runs already.
QString pressText(const LogRow& row) {
  if (isRunning(row)) return tr("Stop");
  return row.canStart() ? tr("Start Again") : QString();
}

QString endText(const LogRow& row, const Calendar& calendar, const QLocale& locale) {
  if (isRunning(row)) return tr("now");
  const auto end = row.end();
  return end ? clockText(*end, calendar, locale) : QString();
}

Column<LogRow> stateColumn() {
  ColumnHead state = columnHead(QStringLiteral("state"), {}, CellKind::State, 0);
  state.accessibleName = tr("State");
  state.sortable = false;
  return {.head = std::move(state), .text = pressText, .warning = stateText};
}

Column<LogRow> editColumn() {
  ColumnHead edit = fixed(columnHead(QStringLiteral("edit"), {}, CellKind::Link, 0), {tr("Edit")});
  edit.accessibleName = tr("Edit");
  edit.sortable = false;
  return {.head = std::move(edit), .text = [](const LogRow&) { return tr("Edit"); }};
}

template <LogCell Cell>
bool canType(const LogRow& row) {
  return row.entry && whyNotTyped(*row.entry, Cell).isEmpty();
}

quint64 identityOf(const LogRow& row) { return row.entry ? static_cast<quint64>(row.entry->objectID()) : 0; }

}  // namespace

QString LogRow::customer() const { return of ? queries::nameOf(of->customer()) : QString(); }

QString LogRow::job() const { return of ? queries::nameOf(of->job()) : QString(); }

QString LogRow::service() const { return of ? queries::nameOf(of->service()) : QString(); }

QString LogRow::notes() const { return entry ? entry->notes().value_or(QString()) : QString(); }

std::optional<Instant> LogRow::end() const {
  return start ? std::optional(Instant{start->seconds + duration}) : std::nullopt;
}

bool LogRow::canStart() const { return of && !of->isRunning(); }

QStringList widestLogDates(const QLocale& locale, bool withTime) {
  // Where months are numbers, one of two digits is as wide as any.
  const bool namesMonths = locale.dateFormat(QLocale::ShortFormat).contains(u"MMM");
  QStringList texts;
  for (int month = namesMonths ? 1 : 12; month <= 12; ++month) {
    for (int day = 20; day < 27; ++day) {
      const QDateTime local({2026, month, day}, QTime(22, 48, 48), Qt::UTC);
      texts << (withTime ? dateText(local, locale) : dayText(local.date(), locale));
    }
  }
  return texts;
}

RowTable<LogRow> makeLogTable(const Calendar& calendar, const QLocale& locale,
                              const std::function<bool()>& showsStart) {
  const QStringList moments{locale.toString(QTime(22, 48), QLocale::ShortFormat),
                            locale.toString(QTime(10, 48), QLocale::ShortFormat)};
  const auto startOf = [](const LogRow& row) { return row.start; };
  std::vector<Column<LogRow>> columns{
      stateColumn(),
      {.head = columnHead(QStringLiteral("customer"), tr("Customer"), CellKind::Text, 5),
       .text = [](const LogRow& row) { return row.customer(); }},
      {.head = columnHead(QStringLiteral("job"), tr("Job"), CellKind::Text, 3),
       .text = [](const LogRow& row) { return row.job(); }},
      {.head = columnHead(QStringLiteral("service"), tr("Service"), CellKind::Text, 4),
       .text = [](const LogRow& row) { return row.service(); }},
      {.head = canHide(columnHead(QStringLiteral("notes"), tr("Notes"), CellKind::Secondary, 5)),
       .text = [](const LogRow& row) { return row.notes(); },
       .editable = canType<LogCell::Notes>,
       .remark = remarkOf},
      editColumn(),
      {.head = fixed(columnHead(QStringLiteral("date"), tr("Date"), CellKind::Day, 0),
                     widestLogDates(locale, false)),
       .text =
           [&calendar, locale, showsStart](const LogRow& row) {
             if (!row.start) return QString();
             const QDateTime local = calendar.local(*row.start);
             return showsStart() ? dayText(local.date(), locale) : dateText(local, locale);
           },
       .time = startOf},
      {.head = canHide(
           fixed(atTheRight(columnHead(QStringLiteral("start"), tr("Start"), CellKind::Moment, 0)), moments)),
       .text =
           [&calendar, locale](const LogRow& row) {
             return row.start ? clockText(*row.start, calendar, locale) : QString();
           },
       .time = startOf,
       .editable = canType<LogCell::Start>},
      {.head =
           canHide(fixed(atTheRight(columnHead(QStringLiteral("end"), tr("End"), CellKind::OpenMoment, 0)),
                         moments + QStringList(tr("now")))),
       .text = [&calendar, locale](const LogRow& row) { return endText(row, calendar, locale); },
       .time = [](const LogRow& row) { return row.end(); },
       .editable = canType<LogCell::End>},
      {.head = columnHead(QStringLiteral("duration"), tr("Duration"), CellKind::Time, 0),
       .text = [](const LogRow& row) { return durationText(row.duration); },
       .editable = canType<LogCell::Duration>},
      {.head =
           atTheRight(fixed(columnHead(QStringLiteral("submitted"), tr("Submitted"), CellKind::Secondary, 0),
                            {QStringLiteral("00/00/00")})),
       .text = [&calendar](const LogRow& row) { return submittedText(row, calendar); }},
  };
  const auto dayOf = [&calendar](const LogRow& row) {
    return row.start ? calendar.day(*row.start).toJulianDay() : 0;
  };
  return RowTable<LogRow>(std::move(columns),
                          {.identity = identityOf,
                           .running = isRunning,
                           .quiet = [](const LogRow& row) { return row.showsAsSent(); },
                           .sign = signOf,
                           .group = dayOf,
                           .groupedBy = {QStringLiteral("date"), QStringLiteral("start")}});
}

}  // namespace pendra
