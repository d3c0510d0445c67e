#pragma once

#include <QLocale>
#include <QPagedPaintDevice>

#include "ReportTable.h"

namespace pendra {

/// What of a report goes on paper: the bars, and the rows as they are unfolded.
struct ReportPaper {
  const ReportTree& tree;
  std::vector<ReportTable::Shown> rows;
  QString document;  ///< the document's name
  QLocale locale;
  QDate today;
  bool linked;

  /// What the report is of.
  [[nodiscard]] QString title() const;
  /// Fills as many pages as it needs. False when the device does not take it.
  [[nodiscard]] bool print(QPagedPaintDevice& device) const;
};

}  // namespace pendra
