#include "LinkServices.h"

#include "link/Submission.h"
#include "platform/Translation.h"
#include "ui/LogPaneView.h"
#include "ui/SendTimeSheet.h"
#include "ui/TimerWindowController.h"
#include "ui_core/LogSubmissionRows.h"
#include "ui_core/RunCommand.h"

namespace pendra {

template <class Send>
void LinkServices::send(TimerWindowController& timer, const Send& how) {
  LogSubmissionRows rows(timer.log().logController());
  SendTimeSheet summary(session.ports().modals, timer.log().window());
  Submission submission({session, checks, lists, rows, summary});
  how(submission);
}

void LinkServices::sendSelectedTime(TimerWindowController& timer) {
  const bool isSelected = timer.state().log().selectedCount() > 0;
  // What the command did is what its button or menu item promised: the selection, or everything listed.
  runCommand(session, isSelected ? tr("Send Selected Time") : tr("Send Time"),
             [&] { send(timer, [](Submission& submission) { submission.sendSelectedTime(); }); });
}

void LinkServices::sendAllTime(TimerWindowController& timer) {
  send(timer, [](Submission& submission) { submission.sendAllTime(); });
}

}  // namespace pendra
