#pragma once
// What will be sent, and what will not. The rows considered are those that are selected, else those that are
// listed; the unsent entries that are neither stay behind, and the summary says so before anything leaves.

#include <functional>

#include "link/SubmissionRows.h"

namespace pendra {

/// One line of the summary: what goes out for one customer, job and service.
struct SummaryLine {
  QString customer{};
  QString job{};
  QString service{};
  QString days{};   ///< "Wed 25 Nov", "25–26 Nov"
  QString notes{};  ///< those of its one entry, or how many there are
  QString duration{};
  bool isSum = false;

  friend bool operator==(const SummaryLine&, const SummaryLine&) = default;
};

struct Summary {
  std::vector<SummaryLine> lines{};  ///< the sum last; none when nothing will be sent
  QString leftOut{};                 ///< which unsent entries stay behind; without lines, why there are none
  bool canShowAll = false;           ///< whether lifting selection and filters would add some
  QString remark{};                  ///< what was done for the sending; empty when that is nothing
};

/// The summary of the rows considered: one line for each combination of the three names, in the order of the
/// rows, and their sum.
[[nodiscard]] Summary summaryOf(const SubmissionRows& rows, const ObjectContext& context,
                                const Calendar& calendar, bool merging);

/// The sheet on the timer window that shows what will be sent.
class SummarySheet {
 public:
  virtual ~SummarySheet() = default;
  /// Application-modal; true when the user wants to send. `showAll` lifts selection and filters and gives the
  /// summary of what is considered then.
  [[nodiscard]] virtual bool run(const Summary& summary, const std::function<Summary()>& showAll) = 0;
  virtual void close() = 0;
};

}  // namespace pendra
