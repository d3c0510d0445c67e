#include "ui_core/DeletePrompts.h"

#include "model/ActivityTitle.h"
#include "model/DurationText.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "ui_core/TimerState.h"

namespace pendra {

namespace {

void ask(TimerState& state, const QString& message, const QString& informative,
         std::function<void()> onDelete) {
  state.session().ports().alerts.beginSheet({.style = Alert::Style::Critical,
                                             .message = message,
                                             .informative = informative,
                                             .buttons = {tr("Delete"), tr("Cancel")},
                                             .owner = Alert::Owner::TimerWindow,
                                             .topic = Alert::Topic::Deleting},
                                            [onDelete = std::move(onDelete)](int answer) {
                                              if (answer == kFirstButton) onDelete();
                                            });
}

/// "3 entries, 04:30:00", or of one "04:30:00".
QString amount(qsizetype count, double seconds) {
  if (count == 1) return durationText(seconds);
  return counted(count, "1 entry, %@", "%Ln entries, %@", {durationText(seconds)});
}

/// Which of them Vantor has or may have, where it stays; behind a blank.
template <class Entries>
QString staysInVantor(const Entries& entries) {
  const auto sent =
      std::count_if(entries.begin(), entries.end(), [](const auto& one) { return one->wasSent(); });
  const auto inDoubt = std::count_if(entries.begin(), entries.end(),
                                     [](const auto& one) { return one->sendingSince().has_value(); });
  QString text;
  if (sent > 0) {
    text += u' ' + counted(sent, "1 entry was sent and stays in Vantor.",
                           "%Ln entries were sent and stay in Vantor.");
  }
  if (inDoubt > 0) {
    text += u' ' + counted(inDoubt, "1 entry may be in Vantor, and nobody will ask about it.",
                           "%Ln entries may be in Vantor, and nobody will ask about them.");
  }
  return text;
}

/// What goes with the activity.
QString contentsOf(const Activity& activity) {
  double seconds = 0;
  for (const TimeEntry* entry : activity.entries()) seconds += entry->length();
  return formatted(u"%@: %@.", {activityTitle(activity),
                                amount(static_cast<qsizetype>(activity.entries().size()), seconds)}) +
         staysInVantor(activity.entries());
}

QString contentsOf(const std::vector<Ref<TimeEntry>>& entries) {
  double seconds = 0;
  QStringList titles;
  for (const Ref<TimeEntry>& entry : entries) {
    seconds += entry->length();
    if (const Activity* activity = entry->activity()) titles << activityTitle(*activity);
  }
  titles.removeDuplicates();
  const QString what =
      titles.size() == 1 ? titles.front() : counted(titles.size(), "1 activity", "%Ln activities");
  return formatted(u"%@: %@.", {what, amount(std::ssize(entries), seconds)}) + staysInVantor(entries);
}

}  // namespace

void askToDeleteActivity(TimerState& state) {
  const Ref<Activity> activity(state.selectedActivity());
  if (!activity) return;
  ask(state,
      tr("This activity (and all time entries listed with this activity) will be deleted.  Are you sure "
         "you want to delete it?"),
      contentsOf(*activity), [&state, activity] {
        if (activity) state.deleteActivity(*activity);
      });
}

void askToDeleteEntries(TimerState& state) {
  if (!state.currentEntry()) return;
  auto entries = state.log().selectedEntries();
  if (entries.empty()) entries = {state.currentEntry()};  // chosen where no row of it is listed
  ask(state,
      // To the question also no row at all is more than one.
      state.log().selectedCount() == 1 ? tr("Are you sure you want to delete the selected time entry?")
                                       : tr("Are you sure you want to delete the selected time entries?"),
      contentsOf(entries), [&state, entries] { state.deleteEntries(entries); });
}

}  // namespace pendra
