#include "ui/EditorSheets.h"

namespace pendra {

EditorSheets::EditorSheets(TimerState& timer, TablePort& activities, QWidget& window)
    : activitySheet_(*new ActivitySheet(timer.session(), &window)),
      timePeriodSheet_(*new TimePeriodSheet(timer.session(), &window)),
      activityFlow_(timer, activities, activitySheet_.controller()),
      timePeriodFlow_(timer, timePeriodSheet_.controller()) {}

}  // namespace pendra
