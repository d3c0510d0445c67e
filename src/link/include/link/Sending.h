#pragma once

#include <QSet>
#include <functional>
#include <span>

#include "link/ConnectionChecks.h"
#include "link/SubmissionRows.h"

namespace pendra {

struct MergedRecord;

/// One sending: hands these rows over to Vantor, record by record, and writes down before each what is about
/// to leave. It ends at the first call that fails; what happens is told, not thrown.
class Sending {
 public:
  /// All but the rows must outlive it. `jobsBefore` are the activities that had a job before Vantor's lists
  /// were taken over, by their identifiers.
  Sending(Session& session, ConnectionChecks& checks, std::vector<SubmissionRow> rows,
          QSet<qint64> jobsBefore);

  /// Sends, stores what became of it, and says in a notice what was not sent. True when everything was,
  /// also when there was nothing to send.
  [[nodiscard]] bool run(bool merging);

 private:
  using Entries = std::span<TimeEntry* const>;

  bool sendOneByOne();
  bool sendRow(const SubmissionRow& row);
  bool sendMerged();
  bool sendRecord(const MergedRecord& record, std::vector<TimeEntry*>& mergedEntries);
  /// Marks as sent what has arrived: in the edit that marks the next record, so that each costs one commit,
  /// or in one of its own when no record follows at once.
  void stamp();
  void stampInAnEdit();
  [[nodiscard]] bool transmit(const TimeEntry& entry, const Activity& activity, Entries entries);
  [[nodiscard]] bool lostItsJob(const Activity& activity) const;
  void alert(const QString& message, const QString& informative);
  void tell(bool sentAll);

  Session& session_;
  ConnectionChecks& checks_;
  std::vector<SubmissionRow> rows_;
  QSet<qint64> jobsBefore_;
  std::vector<TimeEntry*> toStamp_;  ///< of the record that has arrived
  Instant arrivedAt_;
  int position_ = 0;
  int total_ = 0;
  int sent_ = 0;
  QString stopped_;  ///< what ended it, as half a sentence; empty while it goes on
};

/// What is said of a sending that did not send everything; empty when nothing is.
[[nodiscard]] QString lastSending(const Notices& notices);
/// Withdraws what was said of the sending before.
void forgetLastSending(Notices& notices);

}  // namespace pendra
