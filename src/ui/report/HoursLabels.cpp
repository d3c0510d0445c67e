#include "HoursLabels.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

constexpr double kRoomForWeekday = 44;
constexpr double kRoomForNumber = 17;
constexpr double kRoomForMonth = 64;

/// Every day, or where there is no room the days that begin a week or a month.
std::optional<BarLabel> labelOfDay(QDate day, const ReportQuery& query, const QLocale& locale, double width) {
  const QDate first = query.range.first;
  const bool beginsWeek = day.dayOfWeek() == query.weekBegins;
  const bool beginsMonth = day.day() == 1;
  const qint64 days = first.daysTo(query.range.last) + 1;
  BarLabel label{.bar = 0, .first = QString::number(day.day())};
  const QString weekday = locale.dayName(day.dayOfWeek(), QLocale::ShortFormat);
  if (width >= kRoomForNumber && days <= 31) {
    if (beginsWeek || day == first || width >= kRoomForWeekday) label.second = weekday;
    return label;
  }
  if (days > 150) {
    if (!beginsMonth) return std::nullopt;
    return BarLabel{.bar = 0, .first = locale.standaloneMonthName(day.month(), QLocale::ShortFormat)};
  }
  if (!beginsWeek && !beginsMonth) return std::nullopt;
  if (beginsMonth) label.second = locale.standaloneMonthName(day.month(), QLocale::ShortFormat);
  return label;
}

}  // namespace

std::vector<BarLabel> labelsOf(const Report& report, QDate today, const QLocale& locale, double columnWidth) {
  std::vector<BarLabel> labels;
  for (int at = 0; at < static_cast<int>(report.bars.size()); ++at) {
    const ReportBar& bar = report.bars[static_cast<std::size_t>(at)];
    const bool isNew =
        at == 0 || report.bars[static_cast<std::size_t>(at - 1)].first.month() != bar.first.month();
    std::optional<BarLabel> label;
    switch (report.query.bars) {
      case BarUnit::Day:
        label = labelOfDay(bar.first, report.query, locale, columnWidth);
        break;
      case BarUnit::Week:
        label = BarLabel{.bar = at, .first = QString::number(bar.first.day())};
        if (isNew) label->second = locale.standaloneMonthName(bar.first.month(), QLocale::ShortFormat);
        break;
      case BarUnit::Month:
        label = BarLabel{.bar = at,
                         .first = locale.standaloneMonthName(bar.first.month(), columnWidth >= kRoomForMonth
                                                                                    ? QLocale::LongFormat
                                                                                    : QLocale::ShortFormat)};
        if (at == 0 || bar.first.month() == 1) label->second = QString::number(bar.first.year());
        break;
    }
    if (!label) continue;
    label->bar = at;
    label->isNow = bar.first <= today && today <= bar.last;
    labels.push_back(*label);
  }
  return labels;
}

QString hoursOnAxis(double hours, const QLocale& locale) {
  return tr("%1 h").arg(locale.toString(hours, 'g', QLocale::FloatingPointShortest));
}

}  // namespace pendra
