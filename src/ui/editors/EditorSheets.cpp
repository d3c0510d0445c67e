#include "ui/EditorSheets.h"

namespace pendra {

EditorSheets::EditorSheets(TimerState& timer, TablePort& activities, QWidget& window)
    : activitySheet_(*new ActivitySheet(timer.session(), &window)),
      timeEntrySheet_(*new TimeEntrySheet(timer.session(), &window)),
      activityFlow_(timer, activities, activitySheet_.controller()),
      timeEntryFlow_(timer, timeEntrySheet_.controller()) {}

}  // namespace pendra
