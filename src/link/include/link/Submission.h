#pragma once
// A record is sent, unsent, or of unknown fate, and the file says which before the next one goes out. A call
// that failed before anything left is unsent; a call without an answer is of unknown fate.

#include <QSet>
#include <optional>
#include <span>

#include "link/ListSync.h"
#include "link/SubmissionRows.h"

namespace pendra {

struct MergedRecord;

/// The key of the notice that says how a sending ended.
inline constexpr QStringView kSendNoticeKey = u"send";

/// Sends the time of one timer window's log to Vantor.
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

  /// The menu's command. Kept: it checks, guards, and then does all that the log's command does.
  void sendAllTime();
  /// The log's command: checks, fetches the lists anew, shows the summary, sends. Throws what the channel
  /// throws until the sending begins; what happens while sending is told, not thrown.
  void sendSelectedTime();

  /// Notes which activities of the unsent rows have a job at this moment.
  void noteJobs();
  void showSummary();
  /// True when everything was sent, also when there was nothing to send.
  [[nodiscard]] bool sendEntries();
  /// One record for each activity and day; stops at the first that is not sent.
  [[nodiscard]] bool sendMergedEntries();
  /// True when the entry is sent or had been; false after an alert, when its activity lacks a customer or a
  /// service, and when the call failed.
  [[nodiscard]] bool sendOneEntry(TimeEntry& period, Activity& activity);
  /// False, after a message, when an entry of the considered rows, or of all, is running.
  [[nodiscard]] bool checkForRunningTimers(bool allRows);

 private:
  /// How far the sending has come.
  struct Run {
    int position = 0;
    int total = 0;
    int sent = 0;
    QString stopped;  ///< what ended it, as half a sentence; empty while it goes on
  };
  using Entries = std::span<TimeEntry* const>;

  void sayWhatIsLeftOut(const std::vector<Ref<TimeEntry>>& again) const;
  bool sendOneByOne();
  bool sendMerged(const MergedRecord& record, std::vector<TimeEntry*>& mergedEntries);
  void stamp(const std::function<void(Instant)>& mark);
  /// False after an alert.
  [[nodiscard]] bool hasCustomerAndService(const Activity& activity) const;
  bool transmit(const TimeEntry& period, const Activity& activity, Entries entries);
  [[nodiscard]] bool lostItsJob(const Activity& activity) const;
  void finish(bool sentAll);
  void alert(const QString& message, const QString& informative) const;

  Parts parts_;
  /// The activities that had a job when the sending began; none while nothing is being sent.
  std::optional<QSet<qint64>> jobsBefore_;
  Run run_;
};

}  // namespace pendra
