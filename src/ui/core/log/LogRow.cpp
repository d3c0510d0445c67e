#include "ui_core/LogRow.h"

#include <QLocale>

#include "model/DurationText.h"
#include "platform/DateTexts.h"

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

/// The desktop's own short form of date and time, after the day of the week.
QString dateText(std::optional<Instant> start, const Calendar& calendar, const QLocale& locale) {
  if (!start) return {};
  const QDateTime local = calendar.local(*start);
  return locale.dayName(local.date().dayOfWeek(), QLocale::ShortFormat) + u' ' +
         locale.toString(local.date(), QLocale::ShortFormat) + u", " +
         locale.toString(local.time(), QLocale::ShortFormat);
}

QString submittedText(const LogRow& row, const Calendar& calendar) {
  return row.showsAsSent() ? shortDate({row.submittedSeconds}, calendar) : QStringLiteral("-");
}

Column<LogRow> editColumn() {
  ColumnHead edit = head(QStringLiteral("edit"), {}, CellKind::Link, 0);
  edit.accessibleName = QStringLiteral("Edit");
  edit.sortable = false;
  return {.head = std::move(edit), .text = [](const LogRow&) { return QStringLiteral("Edit"); }};
}

quint64 identityOf(const LogRow& row) {
  return row.period ? static_cast<quint64>(row.period->objectID()) : 0;
}

bool isRunning(const LogRow& row) { return row.period && row.period->running() == true; }

}  // namespace

RowTable<LogRow> makeLogTable(const Calendar& calendar, const QLocale& locale) {
  std::vector<Column<LogRow>> columns{
      {.head = head(QStringLiteral("customer"), QStringLiteral("Customer"), CellKind::Text, 5),
       .text = [](const LogRow& row) { return row.customer(); }},
      {.head = head(QStringLiteral("job"), QStringLiteral("Job"), CellKind::Text, 3),
       .text = [](const LogRow& row) { return row.job(); }},
      {.head = head(QStringLiteral("service"), QStringLiteral("Service"), CellKind::Text, 4),
       .text = [](const LogRow& row) { return row.service(); }},
      {.head = head(QStringLiteral("date"), QStringLiteral("Date"), CellKind::Text, 5),
       .text = [&calendar, locale](const LogRow& row) { return dateText(row.start, calendar, locale); },
       .time = [](const LogRow& row) { return row.start; }},
      {.head = head(QStringLiteral("duration"), QStringLiteral("Duration"), CellKind::Time, 0),
       .text = [](const LogRow& row) { return durationText(row.duration); }},
      {.head = head(QStringLiteral("submitted"), QStringLiteral("Submitted"), CellKind::Secondary, 0),
       .text = [&calendar](const LogRow& row) { return submittedText(row, calendar); }},
      editColumn(),
  };
  return RowTable<LogRow>(std::move(columns), {.identity = identityOf, .running = isRunning});
}

}  // namespace pendra
