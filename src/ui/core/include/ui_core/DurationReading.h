#pragma once
// A text of digits, signs, points and colons is read as it always was: its leading digits are hours, those
// behind the first colon minutes, so "90" is 90 hours and "1.5" is one. A text with units means what people
// mean by it. Whoever shows the field says beside it what has been read.

#include <QString>

namespace pendra {

/// What is longer is possible, and said to be long, in seconds.
inline constexpr double kUsualAtMost = 12 * 3600.0;

/// What a text means as a length of time.
struct DurationReading {
  /// Why what is stored may not be what was meant.
  enum class Doubt {
    None,
    TooLong,     ///< over twelve hours
    Differs,     ///< the text seems to say something else
    Unreadable,  ///< the text says nothing of the kind
  };

  double seconds = 0;  ///< what is stored: whole minutes
  double dropped = 0;  ///< the seconds that the text names and that are not stored
  Doubt doubt = Doubt::None;
  QString advice{};  ///< what to type for what was probably meant; empty when that is not known
};

/// Reads any text. Without a digit to begin with it means no time at all.
[[nodiscard]] DurationReading readDuration(const QString& text);

/// The number at the beginning of a text, after blanks and with its sign; 0 when there is none.
[[nodiscard]] qint64 integerValue(QStringView text);

/// "90 h 00 min", truncated to minutes.
[[nodiscard]] QString durationInWords(double seconds);

}  // namespace pendra
