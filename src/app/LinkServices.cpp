#include "LinkServices.h"

#include "link/Submission.h"
#include "ui/LogPaneView.h"
#include "ui/SendTimeSheet.h"
#include "ui/TimerWindowController.h"
#include "ui_core/LogSubmissionRows.h"

namespace pendra {

template <class Send>
void LinkServices::send(TimerWindowController& timer, const Send& how) {
  LogSubmissionRows rows(timer.log().logController());
  SendTimeSheet summary(session.ports().modals, timer.log().window());
  Submission submission({session, checks, lists, rows, summary});
  how(submission);
}

void LinkServices::sendSelectedTime(TimerWindowController& timer) {
  send(timer, [](Submission& submission) { submission.sendSelectedTime(); });
}

void LinkServices::sendAllTime(TimerWindowController& timer) {
  send(timer, [](Submission& submission) { submission.sendAllTime(); });
}

}  // namespace pendra
