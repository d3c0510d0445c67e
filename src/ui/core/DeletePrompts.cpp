#include "ui_core/DeletePrompts.h"

#include "ui_core/TimerState.h"

namespace pendra {

namespace {

void ask(TimerState& state, const QString& message, void (TimerState::*onDelete)()) {
  state.session().ports().alerts.beginSheet({.style = Alert::Style::Critical,
                                             .message = message,
                                             .informative = {},
                                             .buttons = {QStringLiteral("Delete"), QStringLiteral("Cancel")}},
                                            [&state, onDelete](int answer) {
                                              if (answer == kFirstButton) (state.*onDelete)();
                                            });
}

}  // namespace

void askToDeleteActivity(TimerState& state) {
  if (!state.selectedActivity()) return;
  ask(state,
      QStringLiteral(
          "This activity (and all time entries listed with this activity) will be deleted.  Are you sure "
          "you want to delete it?"),
      &TimerState::deleteSelectedActivity);
}

void deleteTimeEntry(TimerState& state) {
  if (!state.currentEntry()) return;
  // Kept: also no row at all is more than one.
  ask(state,
      state.log().numberOfSelectedRows() == 1
          ? QStringLiteral("Are you sure you want to delete the selected time entry?")
          : QStringLiteral("Are you sure you want to delete the selected time entries?"),
      &TimerState::deleteSelectedTimeEntries);
}

}  // namespace pendra
