#include "link/Submission.h"

#include "document/RunningTimers.h"
#include "document/Saving.h"
#include "link/UnknownFates.h"
#include "model/Activity.h"
#include "platform/Preferences.h"
#include "platform/Text.h"

namespace pendra {

namespace {
const QString kAgainNoticeKey = QStringLiteral("send again");
}

void Submission::sendAllTime() {
  if (!parts_.session.context()) return;
  const ConnectionChecks::Closing closing(parts_.checks);
  if (!parts_.checks.checkCompany() || !pendra::checkForRunningTimers(parts_.session)) return;
  sendSelectedTime();
}

void Submission::sendSelectedTime() {
  if (!parts_.session.context() || !pendra::checkForRunningTimers(parts_.session)) return;
  const ConnectionChecks::Closing closing(parts_.checks);
  if (!parts_.checks.checkCompany()) return;
  const auto again = settleUnknownFates(parts_.session);
  if (!again) return parts_.rows.reloadData();                   // some may have been answered
  parts_.session.notices().withdraw(kSendNoticeKey.toString());  // it told of the sending before
  sayWhatIsLeftOut(*again);
  noteJobs();
  parts_.lists.refreshBeforeSending();
  showSummary();
  parts_.rows.clearSelection();
}

/// Only the rows that are considered go out, whatever the user has just been asked about.
void Submission::sayWhatIsLeftOut(const std::vector<Ref<TimeEntry>>& again) const {
  const auto rows = parts_.rows.consideredRows();
  const auto isLeftOut = [&rows](const Ref<TimeEntry>& entry) {
    return std::none_of(rows.begin(), rows.end(),
                        [&entry](const SubmissionRow& row) { return entry == row.period; });
  };
  const auto leftOut = std::count_if(again.begin(), again.end(), isLeftOut);
  Notices& notices = parts_.session.notices();
  if (leftOut == 0) return notices.withdraw(kAgainNoticeKey);
  notices.post(
      {.key = kAgainNoticeKey,
       .text = formatted(u"Of the entries to be sent again, %@ are not selected or not shown, and stay "
                         "unsent.",
                         {QString::number(leftOut)}),
       .actions = {},
       .ofDocument = true});
}

void Submission::noteJobs() {
  jobsBefore_.emplace();
  for (const SubmissionRow& row : parts_.rows.consideredRows()) {
    if (!row.period || !row.activity || row.period->submittedSeconds() >= 1.0) continue;
    if (row.activity->job()) jobsBefore_->insert(row.activity->objectID());
  }
}

bool Submission::lostItsJob(const Activity& activity) const {
  return jobsBefore_ && !activity.job() && jobsBefore_->contains(activity.objectID());
}

void Submission::showSummary() {
  const bool confirmed = parts_.summary.run(summaryLines(parts_.rows.consideredRows())) == 1;
  const bool sentAll = confirmed && sendEntries();
  parts_.summary.close();
  if (!sentAll) return parts_.rows.reloadData();  // an answer about an earlier record may have changed rows
  parts_.session.ports().alerts.beginSheet(
      {.style = Alert::Style::Informational,
       .message = QStringLiteral("Time Sent"),
       .informative = QStringLiteral("Your time has been successfully sent to Vantor."),
       .buttons = {QStringLiteral("OK")}},
      {});
}

bool Submission::checkForRunningTimers(bool allRows) {
  const auto rows = allRows ? parts_.rows.allRows() : parts_.rows.consideredRows();
  const auto isRunning = [](const SubmissionRow& row) {
    return row.period && row.period->running().value_or(false);
  };
  if (std::none_of(rows.begin(), rows.end(), isRunning)) return true;
  parts_.session.ports().alerts.runAlert(
      {.style = Alert::Style::Critical,
       .message =
           QStringLiteral("Please stop any timers before backing up, exporting, or sending data to Vantor"),
       .informative = {},
       .buttons = {QStringLiteral("OK")}});
  return false;
}

void Submission::alert(const QString& message, const QString& informative) const {
  parts_.session.ports().alerts.runAlert({.style = Alert::Style::Warning,
                                          .message = message,
                                          .informative = informative,
                                          .buttons = {QStringLiteral("OK")}});
}

}  // namespace pendra
