#include <QHash>

#include "link/SubmissionRows.h"
#include "model/DurationText.h"

namespace pendra {

std::vector<SummaryLine> summaryLines(const std::vector<SubmissionRow>& rows) {
  std::vector<SummaryLine> lines;
  std::vector<double> totals;
  QHash<QStringList, std::size_t> known;
  for (const SubmissionRow& row : rows) {
    if (!row.period || row.period->submittedSeconds() >= 1.0) continue;
    const QStringList names{row.customer, row.job, row.service};
    const auto found = known.constFind(names);
    if (found == known.constEnd()) {
      known.insert(names, lines.size());
      lines.push_back({row.customer, row.job, row.service, {}});
      totals.push_back(row.period->storedDuration());
    } else {
      totals[*found] += row.period->storedDuration();
    }
  }
  for (std::size_t at = 0; at < lines.size(); ++at) lines[at].duration = durationText(totals[at]);
  return lines;
}

}  // namespace pendra
