#include "TimesSaid.h"

#include <QRegularExpression>
#include <array>

#include "platform/Text.h"
#include "platform/Translation.h"
#include "ui_core/DurationReading.h"

namespace pendra {

namespace {

using Match = QRegularExpressionMatch;

constexpr double kMinute = 60;
/// "1 h 30 min" has so many words.
constexpr int kWordsOfALength = 4;

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
  Reader(QStringView text, DayReader days) : text_(text.toString()), days_(std::move(days)) {}

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

  /// As every field for a date reads it, in the desktop's language. What stands in figures without a year is
  /// the last one.
  Taken readDay() {
    for (const QRegularExpression& rule : dayRules()) {
      const Match match = matchAt(rule, text_, at_);
      if (!match.hasMatch()) continue;
      const auto days = readDays(match.capturedView(), days_);
      if (!days || days->first != days->last) continue;
      const bool isFuture = days->first > days_.today && match.hasCaptured(u"figure");
      return take(said_.day, isFuture ? days->first.addYears(-1) : days->first, match.capturedLength());
    }
    return std::nullopt;
  }

  /// What looks like a day, the longest first. A text that only holds one may hold a time of day as well.
  static const std::array<QRegularExpression, 7>& dayRules() {
    const auto rule = [](const char* text) { return pattern(QString::fromLatin1(text) + kEnd); };
    static const std::array<QRegularExpression, 7> all{
        rule(R"((?:\d{4}-\d\d?-\d\d?|\d\d?/\d\d?/\d+|\d\d?\.\s?\d\d?\.\s?(?:\d{4}|\d\d)))"),
        rule(R"((?:\d\d?\.?\s+\p{L}{3,}\.?|\p{L}{3,}\.?\s+\d\d?,?)\s+\d{4})"),
        rule(R"((?:\d+|an?)\s+\p{L}+\s+ago)"),
        rule(R"((?<figure>\d\d?)\.?\s+(?!today|yesterday|tomorrow)\p{L}{3,}\.?)"),
        rule(R"((?!today|yesterday|tomorrow)\p{L}{3,}\.?\s+(?<figure>\d\d?))"),
        rule(R"((?<figure>\d\d?)(?:\.\s?\d\d?\.|/\d\d?))"),
        rule(R"((?!(?:now|noon|midnight)\b)(?:last\s+\p{L}+|\p{L}{2,}\.?))")};
    return all;
  }

  QString text_;
  DayReader days_;
  qsizetype at_ = 0;
  TimesSaid said_{};
};

}  // namespace

TimesSaid readTimes(QStringView text, const DayReader& days) { return Reader(text, days).read(); }

bool beginsClock(QStringView text) {
  if (!text.startsWith(u'@')) return false;
  QStringView rest = text.sliced(1).trimmed();
  if (rest.startsWith(u'-')) rest = rest.sliced(1);  // "@-10", which means "-10": asked back, and no note
  return !rest.isEmpty() && rest[0].isDigit();
}

}  // namespace pendra
