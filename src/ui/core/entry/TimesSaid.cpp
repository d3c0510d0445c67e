#include "TimesSaid.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include "platform/NaturalDate.h"
#include "platform/Text.h"
#include "ui_core/DurationReading.h"

namespace pendra {

namespace {

using Match = QRegularExpressionMatch;

constexpr double kMinute = 60;
/// "1 h 30 min" has so many words.
constexpr int kWordsOfALength = 4;

QString tr(const char* text) { return QCoreApplication::translate("pendra::QuickReading", text); }

/// The end of a part: a blank, a comma or the end of the text.
const QString kEnd = QStringLiteral(R"((?=[\s,]|$))");
const QString kClock =
    QStringLiteral(R"((?<hour%1>\d\d?)(?:[:.](?<minute%1>\d\d))?\s?(?<half%1>[ap]m)?(?![\w:.]))");

QRegularExpression pattern(const QString& text) {
  return QRegularExpression(text, QRegularExpression::CaseInsensitiveOption);
}

Match matchAt(const QRegularExpression& rule, const QString& text, qsizetype at) {
  return rule.match(text, at, QRegularExpression::NormalMatch, QRegularExpression::AnchorAtOffsetMatchOption);
}

/// A part that was read, and how long it was; none for none.
using Taken = std::optional<qsizetype>;

class Reader {
 public:
  Reader(QStringView text, QDate today) : text_(text.toString()), today_(today) {}

  TimesSaid read() {
    for (skipBlanks(); at_ < text_.size() && !said_.fault; skipBlanks()) readPart();
    return said_;
  }

 private:
  void skipBlanks() {
    while (at_ < text_.size() && (text_[at_].isSpace() || text_[at_] == u',')) ++at_;
  }

  void readPart() {
    for (const auto way : {&Reader::readClock, &Reader::readAgo, &Reader::readDay, &Reader::readLength}) {
      if (const Taken length = (this->*way)()) {
        if (!said_.fault) at_ += *length;
        return;
      }
    }
    static const QRegularExpression word(QStringLiteral(R"(@?\s*[^\s,]+)"));
    const Match match = matchAt(word, text_, at_);
    refuse(match.capturedLength(), beginsClock(match.capturedView())
                                       ? tr("“%@” is no time of day.")
                                       : tr("“%@” is no time, no length and no date."));
  }

  void refuse(qsizetype length, const QString& pattern) {
    said_.fault = TextFault{at_, length, formatted(pattern, {QStringView(text_).mid(at_, length)})};
  }

  /// Nothing may be said twice.
  template <class Value>
  Taken take(std::optional<Value>& into, const Value& value, qsizetype length) {
    if (into) {
      refuse(length, tr("“%@” says again what was said before it."));
    } else {
      into = value;
    }
    return length;
  }

  static std::optional<QTime> timeOf(const Match& match, const QString& which, const QString& half) {
    const int hour = match.captured(QString(u"hour" + which)).toInt();
    const int minute = match.captured(QString(u"minute" + which)).toInt();
    if (half.isEmpty() || hour > 12) {
      const QTime time(hour % 24, minute);
      return hour > 24 || (hour == 24 && minute > 0) || !time.isValid() ? std::nullopt : std::optional(time);
    }
    const QTime time(hour % 12 + (half.compare(u"pm", Qt::CaseInsensitive) == 0 ? 12 : 0), minute);
    return hour == 0 || !time.isValid() ? std::nullopt : std::optional(time);
  }

  /// "@9:30", "@9:30-11", "@9-11am": a half that stands at the end only is that of both, if it can be.
  Taken readClock() {
    static const QRegularExpression rule =
        pattern(QStringLiteral(R"(@\s*)") + kClock.arg(1) + QStringLiteral(R"((?:\s*(?:-|–|to(?=\s))\s*)") +
                kClock.arg(2) + u')' + u'?' + kEnd);
    const Match match = matchAt(rule, text_, at_);
    if (!match.hasMatch()) return std::nullopt;
    const bool isRange = match.hasCaptured(u"hour2");
    const QString endHalf = match.captured(u"half2");
    const QString startHalf = match.captured(u"half1");
    auto start = timeOf(match, QStringLiteral("1"), startHalf.isEmpty() ? endHalf : startHalf);
    const auto end = isRange ? timeOf(match, QStringLiteral("2"), endHalf) : std::nullopt;
    if (!start || (isRange && !end) || isTwentyFour(match)) return std::nullopt;
    if (end && startHalf.isEmpty() && !endHalf.isEmpty() && *start >= *end) {
      start = start->addSecs(12 * 3600);  // "@11-1pm"
    }
    if (isRange && !said_.start) said_.end = end;
    return take(said_.start, *start, match.capturedLength());
  }

  /// A day has an end at 24, but nothing begins there.
  static bool isTwentyFour(const Match& match) { return match.captured(u"hour1").toInt() == 24; }

  /// "-10", "-1h30".
  Taken readAgo() {
    static const QRegularExpression rule = pattern(QStringLiteral(R"(-(\d[\w.,:]*)(?=\s|,|$))"));
    const Match match = matchAt(rule, text_, at_);
    if (!match.hasMatch()) return std::nullopt;
    bool isNumber = false;
    const int minutes = match.captured(1).toInt(&isNumber);
    const auto length = isNumber ? std::optional(minutes * kMinute) : lengthOf(match.captured(1));
    if (!length) return std::nullopt;
    return take(said_.ago, *length, match.capturedLength());
  }

  /// A length that has units; what has none may be anything.
  static std::optional<double> lengthOf(const QString& text) {
    const bool hasUnits = std::any_of(text.begin(), text.end(), [](QChar one) { return one.isLetter(); });
    if (text.isEmpty() || !text[0].isDigit() || !hasUnits) return std::nullopt;
    const DurationReading reading = readDuration(text);
    if (reading.doubt == DurationReading::Doubt::Unreadable) return std::nullopt;
    return reading.seconds;
  }

  Taken readLength() {
    static const QRegularExpression word(QStringLiteral(R"(\s*\S+)"));
    std::optional<double> longest;
    qsizetype length = 0;
    qsizetype end = at_;
    for (int words = 0; words < kWordsOfALength; ++words) {
      const Match match = matchAt(word, text_, end);
      if (!match.hasMatch()) break;
      end = match.capturedEnd();
      QString piece = text_.mid(at_, end - at_);
      while (piece.endsWith(u',')) piece.chop(1);
      if (const auto read = lengthOf(piece)) {
        longest = read;
        length = piece.size();
      }
    }
    if (!longest) return std::nullopt;
    return take(said_.length, *longest, length);
  }

  /// The day of a date without a year: the last one.
  [[nodiscard]] QDate lastOne(int month, int day) const {
    const QDate thisYear(today_.year(), month, day);
    return thisYear.isValid() && thisYear <= today_ ? thisYear : QDate(today_.year() - 1, month, day);
  }

  static int yearOf(const QString& digits) { return digits.toInt() + (digits.size() == 2 ? 2000 : 0); }

  Taken readDay() {
    for (const auto way : {&Reader::weekday, &Reader::dayAndMonth, &Reader::monthAndDay, &Reader::inWords}) {
      qsizetype length = 0;
      const QDate day = (this->*way)(length);
      if (day.isValid()) return take(said_.day, day, length);
    }
    return std::nullopt;
  }

  QDate weekday(qsizetype& length) const {
    static const QRegularExpression rule =
        pattern(QStringLiteral(R"((mon|tues?|wed(?:nes)?|thu(?:rs)?|fri|sat(?:ur)?|sun)(?:day)?\.?)") + kEnd);
    const Match match = matchAt(rule, text_, at_);
    if (!match.hasMatch()) return {};
    length = match.capturedLength();
    const auto number =
        QStringView(u"montuewedthufrisatsun").indexOf(match.captured(1).toLower().left(3)) / 3;
    return today_.addDays(-((today_.dayOfWeek() - 1 - number + 7) % 7));
  }

  /// "24.11." and "24.11.2026".
  QDate dayAndMonth(qsizetype& length) const {
    static const QRegularExpression rule =
        pattern(QStringLiteral(R"((\d\d?)\.\s?(\d\d?)\.(\d{4}|\d\d)?)") + kEnd);
    const Match match = matchAt(rule, text_, at_);
    if (!match.hasMatch()) return {};
    length = match.capturedLength();
    const int day = match.captured(1).toInt();
    const int month = match.captured(2).toInt();
    return match.hasCaptured(3) ? QDate(yearOf(match.captured(3)), month, day) : lastOne(month, day);
  }

  /// "11/24".
  QDate monthAndDay(qsizetype& length) const {
    static const QRegularExpression rule = pattern(QStringLiteral(R"((\d\d?)/(\d\d?))") + kEnd);
    const Match match = matchAt(rule, text_, at_);
    if (!match.hasMatch()) return {};
    length = match.capturedLength();
    return lastOne(match.captured(1).toInt(), match.captured(2).toInt());
  }

  /// What every field for a date reads, as far as it is nothing but a date.
  QDate inWords(qsizetype& length) const {
    static const QRegularExpression rule =
        pattern(QStringLiteral(R"((?:today|yesterday|tomorrow|last\s+[a-z]+|\d+\s+[a-z]+\s+ago|)"
                               R"(\d{4}-\d\d?-\d\d?|\d\d?/\d\d?/\d+|)"
                               R"(\d\d?\s+[a-z]{3,9}\.?(?:\s+\d{4})?|[a-z]{3,9}\.?\s+\d\d?(?:\s+\d{4})?))") +
                kEnd);
    static const Calendar calendar{QTimeZone::utc()};
    const Match match = matchAt(rule, text_, at_);
    if (!match.hasMatch()) return {};
    length = match.capturedLength();
    const auto read =
        dateWithNaturalLanguageString(match.capturedView(), calendar.instant(today_, QTime(12, 0)), calendar);
    return read && calendar.local(*read).time() == QTime(12, 0) ? calendar.day(*read) : QDate();
  }

  QString text_;
  QDate today_;
  qsizetype at_ = 0;
  TimesSaid said_{};
};

}  // namespace

TimesSaid readTimes(QStringView text, QDate today) { return Reader(text, today).read(); }

bool beginsClock(QStringView text) {
  if (!text.startsWith(u'@')) return false;
  const QStringView rest = text.sliced(1).trimmed();
  return !rest.isEmpty() && rest[0].isDigit();
}

}  // namespace pendra
