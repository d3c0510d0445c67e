#include "ui/EditorSheets.h"

namespace pendra {

EditorSheets::EditorSheets(TimerState& timer, CommandTarget& target, QWidget& window)
    : target_(target),
      activitySheet_(*new ActivitySheet(timer.session(), &window)),
      timeEntrySheet_(*new TimeEntrySheet(timer.session(), &window)),
      activityFlow_(timer, activitySheet_.controller()),
      timeEntryFlow_(timer, timeEntrySheet_.controller()) {
  QObject::connect(&activitySheet_, &ActivitySheet::serviceItemsWanted, &activitySheet_,
                   [this] { target_.perform(Command::ServicesList, &activitySheet_); });
  if (timer.session().isStandalone()) hideSendingLabel();
}

}  // namespace pendra
