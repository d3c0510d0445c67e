#include "platform/DayReading.h"

#include <gtest/gtest.h>

namespace pendra {
namespace {

const QDate kTuesday(2026, 11, 24);
const QLocale kAmerican(u"en_US"_qs);

QString read(const QString& text, const QLocale& locale) {
  const auto days = readDays(text, {.today = kTuesday, .locale = locale, .weekBegins = Qt::Monday});
  if (!days) return u"none"_qs;
  const QString first = days->first.toString(Qt::ISODate);
  return days->first == days->last ? first : first + u' ' + days->last.toString(Qt::ISODate);
}

/// Every form in which a day is shown anywhere, by the program itself or by the desktop's language.
QStringList formsOf(QDate day, const QLocale& locale) {
  const QString shortDay = locale.dayName(day.dayOfWeek(), QLocale::ShortFormat);
  const QString longDay = locale.dayName(day.dayOfWeek(), QLocale::LongFormat);
  const QString shortDate = locale.toString(day, QLocale::ShortFormat);
  QStringList forms{locale.toString(day, QLocale::LongFormat),
                    shortDay + u' ' + shortDate,
                    shortDay + u' ' + shortDate + u", " + locale.toString(QTime(14, 5), QLocale::ShortFormat),
                    longDay + u", " + shortDate,
                    day.toString(u"MM/dd/yy"),
                    day.toString(Qt::ISODate),
                    locale.toString(day, u"d MMM yyyy"_qs),
                    locale.toString(day, u"ddd d MMM yyyy"_qs),
                    locale.toString(day, u"d MMMM yyyy"_qs)};
  // In figures alone, day first and two for the year, the program's own form means another day.
  if (!shortDate.contains(u'/') || shortDate.contains(QString::number(day.year()))) forms << shortDate;
  if (day.year() == kTuesday.year()) {
    forms << locale.toString(day, u"ddd d MMM"_qs) << locale.toString(day, u"dddd, d MMMM"_qs)
          << locale.toString(day, u"d MMM"_qs);
  }
  return forms;
}

TEST(DayReading, ReadsWhateverIsShownAsADate) {
  for (const char* name : {"de_DE", "en_GB", "en_US", "ja_JP", "fr_FR", "sv_SE", "C", "es_ES", "nl_NL",
                           "it_IT", "pl_PL", "pt_BR", "da_DK", "zh_CN"}) {
    const QLocale locale(QString::fromLatin1(name));
    for (QDate day(2025, 1, 3); day.year() < 2027; day = day.addDays(13)) {
      for (const QString& form : formsOf(day, locale)) {
        EXPECT_EQ(read(form, locale), day.toString(Qt::ISODate)) << name << ": " << form.toStdString();
      }
    }
  }
}

TEST(DayReading, ReadsWhatPeopleSay) {
  const QLocale german(u"de_DE"_qs);
  const QLocale british(u"en_GB"_qs);
  const struct {
    const char* text;
    const char* days;
    QLocale locale = kAmerican;
  } rows[] = {{"monday", "2026-11-23"},
              {"Tuesday", "2026-11-24"},
              {"wed", "2026-11-18"},
              {"last tuesday", "2026-11-17"},
              {"Montag", "2026-11-23", german},
              {"monday", "2026-11-23", german},
              {"this week", "2026-11-23 2026-11-29"},
              {"This Month", "2026-11-01 2026-11-30"},
              {"this year", "2026-01-01 2026-12-31"},
              {"november", "2026-11-01 2026-11-30"},
              {"März 2025", "2025-03-01 2025-03-31", german},
              {"a week ago", "2026-11-17"},
              {"one month ago", "2026-10-24"},
              {"yesterday", "2026-11-23"},
              {"9", "2026-11-24"},
              {"11/24", "2026-11-24"},
              {"24/11", "2026-11-24"},
              {"5/11", "2026-05-11"},
              {"5/11", "2026-11-05", british},
              {"05/11/2026", "2026-11-05", british},
              {"05/11/26", "2026-05-11", british},  // as it is sent, and as the sheets have it
              {"24.11.", "2026-11-24"},
              {"24.11.26", "2026-11-24", german},
              {"Di 24.11.", "2026-11-24", german},
              {"24. November", "2026-11-24", german},
              {"Mi 24.11.26", "none", german},
              {"31 Feb", "none"},
              {"30.2.26", "none", german},
              {"soonish", "none"},
              {"24 11", "none"},
              {"11/24 or so", "none"},
              {"", "none"}};
  for (const auto& row : rows) {
    EXPECT_EQ(read(QString::fromUtf8(row.text), row.locale), QString::fromLatin1(row.days)) << row.text;
  }
}

}  // namespace
}  // namespace pendra
