#pragma once

#include "ui_core/ReportTree.h"

namespace pendra {

/// The rows as a table for other programs: local times, ISO dates, and what the locale parts columns by. A
/// text that such a program would take for a formula begins with an apostrophe.
[[nodiscard]] QByteArray reportCsv(const std::vector<const ReportRow*>& rows, const Calendar& calendar,
                                   const QLocale& locale, bool linked);

}  // namespace pendra
