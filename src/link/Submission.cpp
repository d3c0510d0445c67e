#include "link/Submission.h"

#include "document/RunningTimers.h"
#include "link/DoubtfulLengths.h"
#include "link/Sending.h"
#include "link/UnknownFates.h"
#include "model/Activity.h"
#include "platform/Preferences.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace pendra {

namespace {

const QString kAgainNoticeKey = QStringLiteral("send again");

}  // namespace

void Submission::sendAllTime() {
  if (!parts_.session.context()) return;
  const ConnectionChecks::Closing closing(parts_.checks);
  if (!parts_.checks.checkCompany() || !stopTimers()) return;
  sendSelectedTime();
}

void Submission::sendSelectedTime() {
  if (!parts_.session.context() || !stopTimers()) return;
  const ConnectionChecks::Closing closing(parts_.checks);
  if (!parts_.checks.checkCompany()) return;
  const auto again = settleUnknownFates(parts_.session);
  if (!again) return;
  forgetLastSending(parts_.session.notices());
  sayWhatIsLeftOut(*again);
  noteJobs();
  parts_.lists.refreshBeforeSending();
  showSummary();
  parts_.rows.clearSelection();
}

bool Submission::stopTimers() {
  const auto activities = parts_.session.context()->all<Activity>();
  const auto running = std::count_if(activities.begin(), activities.end(),
                                     [](const Activity* activity) { return activity->isRunning(); });
  if (!checkForRunningTimers(parts_.session)) return false;
  stopped_ += running;
  return true;
}

/// Only the rows that are considered go out, whatever the user has just been asked about.
void Submission::sayWhatIsLeftOut(const std::vector<Ref<TimeEntry>>& again) const {
  const auto rows = parts_.rows.consideredRows();
  const auto isLeftOut = [&rows](const Ref<TimeEntry>& entry) {
    return std::none_of(rows.begin(), rows.end(),
                        [&entry](const SubmissionRow& row) { return entry == row.entry; });
  };
  const auto leftOut = std::count_if(again.begin(), again.end(), isLeftOut);
  Notices& notices = parts_.session.notices();
  if (leftOut == 0) return notices.withdraw(kAgainNoticeKey);
  notices.post(
      {.key = kAgainNoticeKey,
       .text = counted(
           leftOut, "Of the entries to be sent again, 1 is not selected or not shown, and stays unsent.",
           "Of the entries to be sent again, %Ln are not selected or not shown, and stay unsent."),
       .actions = {},
       .ofDocument = true});
}

void Submission::noteJobs() {
  hadJob_.clear();
  for (const Activity* activity : parts_.session.context()->all<Activity>()) {
    if (activity->job()) hadJob_.insert(activity->objectID());
  }
}

bool Submission::isMerging() const {
  return parts_.session.ports().defaults.boolean(preferences::kMergeSubmissions);
}

Summary Submission::summary() const {
  Summary summary =
      summaryOf(parts_.rows, *parts_.session.context(), parts_.session.ports().calendar, isMerging());
  if (stopped_ > 0) {
    summary.remark = counted(stopped_, "1 timer was stopped for this.", "%Ln timers were stopped for this.");
  }
  return summary;
}

void Submission::showSummary() {
  const bool confirmed = parts_.summary.run(summary(), [this] {
    parts_.rows.showAll();
    return summary();
  });
  const bool sentAll =
      confirmed && askAboutDoubtfulLengths(parts_.session, parts_.rows.consideredRows()) && send();
  parts_.summary.close();
  if (!sentAll) return;
  parts_.session.ports().alerts.beginSheet(
      {.style = Alert::Style::Informational,
       .message = tr("Time Sent"),
       .informative = tr("Your time has been successfully sent to Vantor."),
       .buttons = {tr("OK")},
       .topic = Alert::Topic::FirstSending},
      {});
}

bool Submission::send() {
  if (!parts_.checks.checkCompany()) return false;
  const auto rows = parts_.rows.consideredRows();
  QSet<qint64> jobsBefore;
  for (const SubmissionRow& row : rows) {
    if (row.isUnsent() && row.activity && hadJob_.contains(row.activity->objectID()))
      jobsBefore.insert(row.activity->objectID());
  }
  return Sending(parts_.session, parts_.checks, rows, jobsBefore).run(isMerging());
}

}  // namespace pendra
