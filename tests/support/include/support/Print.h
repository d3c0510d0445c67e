#pragma once
// How the testing library prints Qt's values. Every support header brings it along, so that a failed
// comparison of texts shows the texts.

#include <QDate>
#include <QString>
#include <ostream>

#include "platform/Clock.h"

// GoogleTest finds these beside the types that they print, and Qt's types stand outside any namespace.
inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }
inline void PrintTo(QDate date, std::ostream* out) { *out << date.toString(Qt::ISODate).toStdString(); }
inline void PrintTo(QTime time, std::ostream* out) { *out << time.toString(Qt::ISODateWithMs).toStdString(); }

namespace pendra {

inline void PrintTo(Instant instant, std::ostream* out) {
  const auto milliseconds = static_cast<qint64>((instant.seconds + kUnixToReference) * 1000);
  *out << QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC).toString(Qt::ISODateWithMs).toStdString();
}

}  // namespace pendra
