#pragma once
// A record is sent, unsent, or of unknown fate, and the file says which before the next one goes out. A call
// that failed before anything left is unsent; a call without an answer is of unknown fate.

#include <QSet>

#include "link/ListSync.h"
#include "link/Summary.h"

namespace pendra {

/// The commands that send the time of one timer window's log to Vantor: checks, questions and the summary.
class Submission {
 public:
  /// All must outlive it.
  struct Parts {
    Session& session;
    ConnectionChecks& checks;
    ListSync& lists;
    SubmissionRows& rows;
    SummarySheet& summary;
  };
  explicit Submission(const Parts& parts) : parts_(parts) {}

  /// The menu's command. Kept, because Vantor is asked so: it checks, guards, and then does all that the
  /// log's command does.
  void sendAllTime();
  /// The log's command: checks, fetches the lists anew, shows the summary, sends. Throws what a call of
  /// Vantor throws until the sending begins; what happens while sending is told, not thrown.
  void sendSelectedTime();

 private:
  [[nodiscard]] bool stopTimers();
  void sayWhatIsLeftOut(const std::vector<Ref<TimeEntry>>& again) const;
  void noteJobs();
  void showSummary();
  [[nodiscard]] Summary summary() const;
  /// True when everything was sent.
  [[nodiscard]] bool send();
  [[nodiscard]] bool isMerging() const;

  Parts parts_;
  /// The activities that had a job before Vantor's lists were taken over.
  QSet<qint64> hadJob_;
  qsizetype stopped_ = 0;  ///< timers, for this sending
};

}  // namespace pendra
