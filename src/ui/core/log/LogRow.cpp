#include "ui_core/LogRow.h"

#include <QLocale>

#include "link/DoubtfulLengths.h"
#include "model/DurationText.h"
#include "model/Queries.h"
#include "platform/DateTexts.h"
#include "ui_core/AwayNotice.h"

namespace pendra {

namespace {

ColumnHead head(const QString& identifier, const QString& title, CellKind kind, int weight) {
  const bool isTime = kind == CellKind::Time;
  return {.identifier = identifier,
          .title = title,
          .alignment = isTime ? Alignment::Right : Alignment::Left,
          .kind = kind,
          .weight = weight};
}

/// A column as wide as the widest of these texts.
ColumnHead fixed(ColumnHead head, const QStringList& widest) {
  head.widest = widest;
  return head;
}

ColumnHead atTheRight(ColumnHead head) {
  head.alignment = Alignment::Right;
  return head;
}

/// The desktop's own short form of date and time, after the day of the week.
QString dateText(const QDateTime& local, const QLocale& locale) {
  return locale.dayName(local.date().dayOfWeek(), QLocale::ShortFormat) + u' ' +
         locale.toString(local.date(), QLocale::ShortFormat) + u", " +
         locale.toString(local.time(), QLocale::ShortFormat);
}

/// A day of every name in every month, late in the evening: one of them is the widest, whatever the font.
QStringList wideDateTexts(const QLocale& locale) {
  QStringList texts;
  for (int month = 1; month <= 12; ++month) {
    for (int day = 20; day < 27; ++day) {
      texts << dateText(QDateTime({2026, month, day}, QTime(22, 48, 48), Qt::UTC), locale);
    }
  }
  return texts;
}

QString submittedText(const LogRow& row, const Calendar& calendar) {
  return row.showsAsSent() ? shortDate({row.submittedSeconds}, calendar) : QStringLiteral("-");
}

bool isRunning(const LogRow& row) { return row.entry && row.entry->running() == true; }

/// What is to be said about the length: first whether somebody was there all the while.
QString lengthDoubt(const LogRow& row) {
  if (QString away = row.entry ? awayMark(*row.entry) : QString(); !away.isEmpty()) return away;
  return isRunning(row) || row.showsAsSent() ? QString() : doubtfulLengthText(row.duration);
}

QString doubtText(const LogRow& row) {
  if (!row.entry || !row.entry->sendingSince()) return {};
  return QStringLiteral(
      "Vantor has not confirmed this entry. You are asked about it before the next sending.");
}

Column<LogRow> editColumn() {
  ColumnHead edit = fixed(head(QStringLiteral("edit"), {}, CellKind::Link, 0), {QStringLiteral("Edit")});
  edit.accessibleName = QStringLiteral("Edit");
  edit.sortable = false;
  return {.head = std::move(edit), .text = [](const LogRow&) { return QStringLiteral("Edit"); }};
}

quint64 identityOf(const LogRow& row) { return row.entry ? static_cast<quint64>(row.entry->objectID()) : 0; }

}  // namespace

QString LogRow::customer() const { return of ? queries::nameOf(of->customer()) : QString(); }

QString LogRow::job() const { return of ? queries::nameOf(of->job()) : QString(); }

QString LogRow::service() const { return of ? queries::nameOf(of->service()) : QString(); }

RowTable<LogRow> makeLogTable(const Calendar& calendar, const QLocale& locale) {
  std::vector<Column<LogRow>> columns{
      {.head = head(QStringLiteral("customer"), QStringLiteral("Customer"), CellKind::Text, 5),
       .text = [](const LogRow& row) { return row.customer(); }},
      {.head = head(QStringLiteral("job"), QStringLiteral("Job"), CellKind::Text, 3),
       .text = [](const LogRow& row) { return row.job(); }},
      {.head = head(QStringLiteral("service"), QStringLiteral("Service"), CellKind::Text, 4),
       .text = [](const LogRow& row) { return row.service(); }},
      editColumn(),
      {.head = fixed(head(QStringLiteral("date"), QStringLiteral("Date"), CellKind::Text, 0),
                     wideDateTexts(locale)),
       .text =
           [&calendar, locale](const LogRow& row) {
             return row.start ? dateText(calendar.local(*row.start), locale) : QString();
           },
       .time = [](const LogRow& row) { return row.start; }},
      {.head = head(QStringLiteral("duration"), QStringLiteral("Duration"), CellKind::Time, 0),
       .text = [](const LogRow& row) { return durationText(row.duration); },
       .warning = lengthDoubt},
      {.head = atTheRight(
           fixed(head(QStringLiteral("submitted"), QStringLiteral("Submitted"), CellKind::Secondary, 0),
                 {QStringLiteral("00/00/00")})),
       .text = [&calendar](const LogRow& row) { return submittedText(row, calendar); },
       .warning = doubtText},
  };
  return RowTable<LogRow>(std::move(columns), {.identity = identityOf,
                                               .running = isRunning,
                                               .quiet = [](const LogRow& row) { return row.showsAsSent(); }});
}

}  // namespace pendra
