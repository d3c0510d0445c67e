#include "ui_core/ReportCsv.h"

#include "platform/Translation.h"
#include "ui_core/ReportTexts.h"

namespace pendra {

namespace {

/// Where figures have a comma, columns are parted by a semicolon.
QChar separatorOf(const QLocale& locale) { return locale.decimalPoint() == u"," ? u';' : u','; }

/// A text, which may be anything that somebody typed.
QString guarded(const QString& text) {
  static const QString kBegins = QStringLiteral("=+-@\t\r");
  return !text.isEmpty() && kBegins.contains(text.front()) ? QString(u'\'' + text) : text;
}

QString quoted(QString cell, QChar separator) {
  const bool isPlain = std::none_of(cell.begin(), cell.end(), [separator](QChar c) {
    return c == separator || c == u'"' || c == u'\n' || c == u'\r';
  });
  return isPlain ? cell : QString(u'"' + cell.replace(u'"', QStringLiteral("\"\"")) + u'"');
}

QString nameIn(const ReportRow& row, GroupBy kind) {
  for (const ReportRow* at = &row; at; at = at->parent) {
    if (!at->group) continue;
    if (at->group->kind == kind) return at->group->name;
    if (kind == GroupBy::Customer && !at->group->customer.isEmpty()) return at->group->customer;
  }
  return {};
}

QStringList heads(bool linked) {
  QStringList heads{tr("Customer"), tr("Job"),     tr("Service"), tr("Start"),
                    tr("Notes"),    tr("Entries"), tr("Billable")};
  if (linked) heads << tr("Sent") << tr("Not sent");
  return heads << tr("Total");
}

QStringList cellsOf(const ReportRow& row, const Calendar& calendar, bool linked) {
  QStringList cells;
  for (const auto kind : {GroupBy::Customer, GroupBy::Job, GroupBy::Service})
    cells << guarded(nameIn(row, kind));
  cells << (row.start ? calendar.local(*row.start).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))
                      : QString());
  cells << guarded(row.notes) << QString::number(row.hours.entries) << lengthText(row.hours.billable);
  if (linked) cells << lengthText(row.hours.sent) << lengthText(row.hours.notSent());
  return cells << lengthText(row.hours.total);
}

}  // namespace

QByteArray reportCsv(const std::vector<const ReportRow*>& rows, const Calendar& calendar,
                     const QLocale& locale, bool linked) {
  const QChar separator = separatorOf(locale);
  QString text(QChar::ByteOrderMark);  // without it some take the letters for those of another century
  const auto add = [&](QStringList cells) {
    for (QString& cell : cells) cell = quoted(cell, separator);
    text += cells.join(separator) + u"\r\n";
  };
  add(heads(linked));
  for (const ReportRow* row : rows) add(cellsOf(*row, calendar, linked));
  return text.toUtf8();
}

}  // namespace pendra
