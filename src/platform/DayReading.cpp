#include "platform/DayReading.h"

#include <QHash>
#include <QRegularExpression>

#include "platform/NaturalDate.h"

namespace pendra {

namespace {

/// In which order a locale writes day and month when both are figures.
bool isDayFirst(const QLocale& locale) {
  const QString form = locale.dateFormat(QLocale::ShortFormat);
  const qsizetype day = form.indexOf(u'd');
  const qsizetype month = form.indexOf(u'M');
  return day >= 0 && month >= 0 && day < month;
}

QString folded(QString name) {
  name.remove(u'.');
  return name.toCaseFolded().simplified();
}

/// The names of something that is counted from 1, in a language and in English.
class Names {
 public:
  template <class NameOf>
  Names(const QLocale& locale, int count, const NameOf& nameOf) {
    for (const QLocale& language : {locale, QLocale(QLocale::English, QLocale::UnitedStates)}) {
      for (int number = 1; number <= count; ++number) {
        for (const auto format : {QLocale::LongFormat, QLocale::ShortFormat})
          add(language, number, format, nameOf);
      }
    }
  }
  /// 0: it is no such name.
  [[nodiscard]] int number(const QString& name) const { return numbers_.value(folded(name)); }

 private:
  template <class NameOf>
  void add(const QLocale& language, int number, QLocale::FormatType format, const NameOf& nameOf) {
    for (const QString& name : nameOf(language, number, format)) {
      const QString word = folded(name);
      // A figure with a sign for "month" is read as figures are.
      if (!word.isEmpty() && !word[0].isDigit() && !numbers_.contains(word)) numbers_.insert(word, number);
    }
  }

  QHash<QString, int> numbers_;
};

/// Hundreds of names, and a text is read in many places until it is one: those of the last language stay.
template <class Make>
const Names& kept(std::optional<std::pair<QLocale, Names>>& last, const QLocale& locale, const Make& make) {
  if (!last || last->first != locale) last.emplace(locale, make());
  return last->second;
}

Names weekdaysOf(const QLocale& locale) {
  return {locale, 7, [](const QLocale& language, int day, QLocale::FormatType format) {
            return QStringList{language.dayName(day, format), language.standaloneDayName(day, format)};
          }};
}

Names monthsOf(const QLocale& locale) {
  return {
      locale, 12, [](const QLocale& language, int month, QLocale::FormatType format) {
        return QStringList{language.monthName(month, format), language.standaloneMonthName(month, format)};
      }};
}

/// What has been read of a text so far.
struct Parts {
  std::optional<int> weekday{};
  std::optional<int> month{};
  QList<QString> figures{};
  QString separators{};  ///< what stands after each figure
};

/// Words that a locale writes around a date's parts, as "de" in Spanish.
bool isFiller(const QString& word, const QLocale& locale) {
  static const QRegularExpression quoted(QStringLiteral("'([^']+)'"));
  const auto isIn = [&word](const QString& form) {
    for (auto found = quoted.globalMatch(form); found.hasNext();) {
      if (folded(found.next().captured(1)).split(u' ').contains(folded(word))) return true;
    }
    return false;
  };
  static const QRegularExpression ordinal(QStringLiteral("^(st|nd|rd|th)$"));
  return isIn(locale.dateFormat(QLocale::LongFormat)) || isIn(locale.dateFormat(QLocale::ShortFormat)) ||
         ordinal.match(word).hasMatch();
}

/// Signs that stand behind year, month and day in East Asian languages become what stands there elsewhere.
QString withPlainSeparators(QString text) {
  static const QRegularExpression signs(
      QStringLiteral("(\\d+)\\s*[年년]\\s*(\\d+)\\s*[月월]\\s*(\\d+)\\s*[日일]"));
  static const QRegularExpression short_(QStringLiteral("(\\d+)\\s*[月월]\\s*(\\d+)\\s*[日일]"));
  text.replace(signs, QStringLiteral("\\1-\\2-\\3 "));
  return text.replace(short_, QStringLiteral("\\1/\\2 "));
}

/// A time of day at the end says nothing about the day.
QString withoutTime(const QString& text, const QLocale& locale) {
  static const QRegularExpression time(
      QStringLiteral("(?:,|\\s)\\s*\\d{1,2}:\\d{2}(?::\\d{2})?(?:\\s*[ap]\\.?m\\.?)?\\s*$"),
      QRegularExpression::CaseInsensitiveOption);
  if (const auto found = time.match(text); found.hasMatch()) return text.first(found.capturedStart());
  const qsizetype comma = text.lastIndexOf(u',');
  const QString tail = text.sliced(comma + 1).trimmed();
  return comma >= 0 && locale.toTime(tail, QLocale::ShortFormat).isValid() ? text.first(comma) : text;
}

std::optional<Parts> partsOf(const QString& text, const QLocale& locale) {
  static const QRegularExpression token(
      QStringLiteral("(\\d+)[月월]|(\\d+)([./-]?)|([\\p{L}\\p{M}'’]+(?:-\\p{L}+)*)\\.?|[\\s,()،]+"));
  thread_local std::optional<std::pair<QLocale, Names>> lastWeekdays;
  thread_local std::optional<std::pair<QLocale, Names>> lastMonths;
  const Names& weekdays = kept(lastWeekdays, locale, [&] { return weekdaysOf(locale); });
  const Names& months = kept(lastMonths, locale, [&] { return monthsOf(locale); });
  Parts parts;
  for (qsizetype at = 0; at < text.size();) {
    const auto found =
        token.match(text, at, QRegularExpression::NormalMatch, QRegularExpression::AnchorAtOffsetMatchOption);
    if (!found.hasMatch()) return std::nullopt;
    at = found.capturedEnd();
    const QString word = found.captured(4);
    if (const int numbered = found.captured(1).toInt(); numbered != 0 && !parts.month) {
      parts.month = numbered;
    } else if (!found.captured(2).isEmpty()) {
      parts.figures << found.captured(2);
      parts.separators += found.captured(3).isEmpty() ? u' ' : found.captured(3)[0];
    } else if (!word.isEmpty()) {
      const int weekday = weekdays.number(word);
      const int month = months.number(word);
      // "Mar" is a Tuesday in some languages and a month in others; two names of one text are one of each.
      if (month && !parts.month && (!weekday || parts.weekday)) {
        parts.month = month;
      } else if (weekday && !parts.weekday) {
        parts.weekday = weekday;
      } else if (!isFiller(word, locale)) {
        return std::nullopt;
      }
    }
  }
  return parts;
}

int yearOf(const QString& figures) {
  const int year = figures.toInt();
  if (figures.size() > 2) return year;
  return year < 50 ? 2000 + year : 1900 + year;
}

/// With the name of a month the other figures are day and year, whichever has more than two.
std::optional<DaySpan> readNamedMonth(const Parts& parts, int thisYear) {
  QStringList figures = parts.figures;
  if (figures.size() > 2) return std::nullopt;
  const auto isYear = [](const QString& figure) { return figure.size() > 2; };
  if (figures.size() == 2 && isYear(figures[0])) std::swap(figures[0], figures[1]);
  if (figures.size() == 2 || (figures.size() == 1 && !isYear(figures[0]))) {
    const QDate day(figures.size() == 2 ? yearOf(figures[1]) : thisYear, *parts.month, figures[0].toInt());
    return DaySpan{day, day};
  }
  const QDate first(figures.isEmpty() ? thisYear : yearOf(figures[0]), *parts.month, 1);
  return DaySpan{first, first.addDays(first.daysInMonth() - 1)};
}

/// Two figures are day and month in the locale's order, or in the only one that makes a date.
std::optional<DaySpan> readFigures(const Parts& parts, const DayReader& reader) {
  const QStringList& figures = parts.figures;
  if (figures.size() < 2 || figures.size() > 3 || parts.separators[0] == u' ') return std::nullopt;
  QDate day;
  if (figures.size() == 3 && figures[0].size() > 2) {
    day = QDate(figures[0].toInt(), figures[1].toInt(), figures[2].toInt());
  } else if (parts.separators[0] == u'-' && figures.size() == 2) {
    return std::nullopt;
  } else {
    const int year = figures.size() == 3 ? yearOf(figures[2]) : reader.today.year();
    const int one = figures[0].toInt();
    const int other = figures[1].toInt();
    const bool dayFirst = parts.separators[0] == u'.' || isDayFirst(reader.locale);
    day = dayFirst ? QDate(year, other, one) : QDate(year, one, other);
    if (!day.isValid()) day = dayFirst ? QDate(year, one, other) : QDate(year, other, one);
  }
  return DaySpan{day, day};
}

std::optional<DaySpan> readParts(const QString& text, const DayReader& reader) {
  const auto parts = partsOf(withPlainSeparators(withoutTime(text, reader.locale)), reader.locale);
  if (!parts) return std::nullopt;
  if (parts->weekday && !parts->month && parts->figures.isEmpty()) {
    const QDate day = reader.today.addDays(-((reader.today.dayOfWeek() - *parts->weekday + 7) % 7));
    return DaySpan{day, day};
  }
  auto span = parts->month ? readNamedMonth(*parts, reader.today.year()) : readFigures(*parts, reader);
  if (!span || !span->first.isValid()) return std::nullopt;
  const bool agrees = !parts->weekday || span->first.dayOfWeek() == *parts->weekday;
  return agrees ? span : std::nullopt;
}

/// "this week", "a month ago"; what follows from today in other words than the specified ones.
std::optional<DaySpan> readSpokenWords(const QString& text, const DayReader& reader) {
  const QDate today = reader.today;
  if (text == u"this week") {
    const QDate first = today.addDays(-((today.dayOfWeek() - reader.weekBegins + 7) % 7));
    return DaySpan{first, first.addDays(6)};
  }
  if (text == u"this month") {
    const QDate first(today.year(), today.month(), 1);
    return DaySpan{first, first.addDays(first.daysInMonth() - 1)};
  }
  if (text == u"this year") return DaySpan{QDate(today.year(), 1, 1), QDate(today.year(), 12, 31)};
  return std::nullopt;
}

/// "a week ago" says what "1 week ago" says.
QString withFigures(const QString& text) {
  static const QRegularExpression one(QStringLiteral("^(?:an?|one)\\s+(?=\\w+\\s+ago$)"));
  return QString(text).replace(one, QStringLiteral("1 "));
}

bool isLocalFigures(const QString& text, const QLocale& locale) {
  static const QRegularExpression long_(QStringLiteral("^\\d{1,2}/\\d{1,2}/\\d{4}$"));
  return isDayFirst(locale) && long_.match(text).hasMatch();
}

}  // namespace

std::optional<DaySpan> readDays(QStringView text, const DayReader& reader) {
  const QString plain = text.toString().simplified().toCaseFolded();
  if (plain.isEmpty()) return std::nullopt;
  if (const auto spoken = readSpokenWords(plain, reader)) return spoken;
  if (isLocalFigures(plain, reader.locale)) return readParts(plain, reader);
  const Calendar calendar(QTimeZone::utc());
  const Instant noon = calendar.instant(reader.today, QTime(12, 0));
  if (const auto instant = readNaturalDate(withFigures(plain), noon, calendar)) {
    const QDate day = calendar.day(*instant);
    return DaySpan{day, day};
  }
  return readParts(plain, reader);
}

}  // namespace pendra
