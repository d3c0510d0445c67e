#include "ui_core/DurationReading.h"

#include <QRegularExpression>
#include <cmath>
#include <optional>

#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

using Doubt = DurationReading::Doubt;
using Match = QRegularExpressionMatch;

constexpr double kMinute = 60;
constexpr double kHour = 3600;
constexpr double kMostHours = std::numeric_limits<qint32>::max();

/// A number whose decimals stand behind a point or a comma.
double decimal(const Match& match, QStringView group) {
  return std::min(match.captured(group).replace(u',', u'.').toDouble(), kMostHours);
}

Match matchUnits(const QString& text) {
  static const QRegularExpression units(
      uR"(^\s*(?:(?<hours>\d+(?:[.,]\d+)?)(?::(?<past>\d\d?))?\s*h(?:rs?|ours?)?\.?[\s,]*)?)"
      uR"((?:(?<minutes>\d+(?:[.,]\d+)?)(?!\d)\s*(?<unit>m|mins?|minutes?)?\.?[\s,]*)?)"
      uR"((?:(?<seconds>\d+)\s*(?:s|secs?|seconds?)\.?)?\s*$)"_qs,
      QRegularExpression::CaseInsensitiveOption);
  return units.match(text);
}

/// None when the text has no units, or not those of a length. Minutes need theirs unless hours stand before.
std::optional<DurationReading> readUnits(const QString& text) {
  if (std::none_of(text.begin(), text.end(), [](QChar c) { return c.isLetter(); })) return std::nullopt;
  const Match match = matchUnits(text);
  const bool hasHours = match.hasCaptured(u"hours");
  if (!match.hasMatch()) return std::nullopt;
  if (match.hasCaptured(u"minutes") && !match.hasCaptured(u"unit") && !hasHours) return std::nullopt;
  const double minutes =
      60 * decimal(match, u"hours") + match.captured(u"past").toDouble() + decimal(match, u"minutes");
  const double seconds = decimal(match, u"seconds");
  return DurationReading{.seconds = (std::round(minutes) + std::floor(seconds / kMinute)) * kMinute,
                         .dropped = std::fmod(seconds, kMinute)};
}

double secondsOfPlain(const QString& text) {
  const QStringList pieces = text.split(u':');
  const qint64 minutes = pieces.size() > 1 ? integerValue(pieces[1]) : 0;
  return static_cast<double>((integerValue(pieces[0]) * 60 + minutes) * 60);
}

/// "1:30", as it is typed.
QString clockOf(double seconds) {
  const auto minutes = static_cast<qint64>(std::round(seconds / kMinute));
  return QString::asprintf("%lld:%02lld", static_cast<long long>(minutes / 60),
                           static_cast<long long>(minutes % 60));
}

/// Whether a text without units seems to say what it means.
void doubtPlain(DurationReading& reading, const QString& text) {
  static const QRegularExpression usual(
      uR"(^\s*(?<sign>[+-]?)(?<hours>\d*)(?<part>[.,]\d*)?(?::(?<minutes>[+-]?\d*)(?::(?<seconds>\d*)[.\d]*)?)?\s*$)"_qs);
  const Match match = usual.match(text);
  const bool hasDigit = std::any_of(text.begin(), text.end(), [](QChar c) { return c.isDigit(); });
  if (!match.hasMatch() || !hasDigit) {
    reading.doubt = Doubt::Unreadable;
    reading.advice = tr("A length is typed as 1:30, 1h30 or 90m.");
    return;
  }
  reading.dropped = match.captured(u"seconds").toDouble();
  const QString part = match.captured(u"part").replace(u',', u'.');
  const int minutes = match.captured(u"minutes").toInt();
  if (part.toDouble() > 0) {
    reading.doubt = Doubt::Differs;
    const double meant = (match.captured(u"hours").toDouble() + part.toDouble()) * kHour;
    if (!match.hasCaptured(u"minutes")) {
      reading.advice = formatted(tr("For %@ type %@."), {durationInWords(meant + 30), clockOf(meant)});
    }
  } else if (text.contains(u'-') || minutes >= 60) {
    reading.doubt = Doubt::Differs;
  }
}

void doubtLength(DurationReading& reading, const QString& text) {
  if (reading.seconds <= kUsualAtMost || reading.doubt == Doubt::Unreadable) return;
  reading.doubt = Doubt::TooLong;
  bool isNumber = false;
  const int number = text.trimmed().toInt(&isNumber);
  if (!isNumber) return;
  reading.advice =
      formatted(tr("For %@ minutes type %@."), {QString::number(number), clockOf(number * kMinute)});
}

}  // namespace

DurationReading readDuration(const QString& text) {
  DurationReading reading;
  if (const auto withUnits = readUnits(text)) {
    reading = *withUnits;
  } else if (!text.trimmed().isEmpty()) {
    reading.seconds = secondsOfPlain(text);
    doubtPlain(reading, text);
  }
  doubtLength(reading, text);
  return reading;
}

qint64 integerValue(QStringView text) {
  constexpr qint64 kLimit = std::numeric_limits<qint32>::max();
  text = text.trimmed();
  const bool negative = text.startsWith(u'-');
  if (negative || text.startsWith(u'+')) text = text.sliced(1);
  qint64 value = 0;
  for (const QChar digit : text) {
    if (digit < u'0' || digit > u'9') break;
    value = std::min(value * 10 + (digit.unicode() - u'0'), kLimit);
  }
  return negative ? -value : value;
}

QString durationInWords(double seconds) {
  const auto minutes = static_cast<qint64>(std::abs(seconds) / kMinute);
  const QString sign = seconds <= -kMinute ? QStringLiteral("-") : QString();
  return formatted(tr("%@ h %@ min"), {QString(sign + QString::number(minutes / 60)),
                                       QStringLiteral("%1").arg(minutes % 60, 2, 10, QChar(u'0'))});
}

}  // namespace pendra
