#pragma once

#include <QFontMetrics>
#include <QString>

namespace pendra {

/// What one line can show of a text, every blank one space. Of a text of megabytes it is the beginning:
/// nobody sees more of it, and to measure all of it takes seconds.
[[nodiscard]] QString seenOf(const QString& text);

/// That, cut with an ellipsis where it is wider than `width`.
[[nodiscard]] QString oneLine(const QString& text, const QFontMetrics& metrics, int width);

/// The beginning of a text, as much of it as a person would read in passing.
[[nodiscard]] QString beginningOf(const QString& text);

}  // namespace pendra
