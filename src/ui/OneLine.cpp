#include "ui/OneLine.h"

#include <algorithm>

namespace pendra {

namespace {

/// More than fits into the widest cell, blanks that become one included.
constexpr qsizetype kMostSeen = 4000;
constexpr qsizetype kMostRead = 2000;

}  // namespace

QString seenOf(const QString& text) {
  const auto first = std::find_if_not(text.begin(), text.end(), [](QChar c) { return c.isSpace(); });
  return text.mid(first - text.begin(), kMostSeen).simplified();
}

QString oneLine(const QString& text, const QFontMetrics& metrics, int width) {
  return metrics.elidedText(seenOf(text), Qt::ElideRight, width);
}

QString beginningOf(const QString& text) {
  return text.size() <= kMostRead ? text : QString(text.left(kMostRead) + u'…');
}

}  // namespace pendra
