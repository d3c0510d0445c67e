#pragma once
// The system log is standard error, one line an entry, nothing before or after the text.

#include <QLoggingCategory>
#include <QString>

namespace pendra {

Q_DECLARE_LOGGING_CATEGORY(lcPendra)

/// Writes one entry.
void logLine(const QString& text);

/// Makes Qt's messages follow the log's form. Called once, first thing in a program.
void installLog();

}  // namespace pendra
