#pragma once

class QWidget;

namespace pendra {

class TimerState;

/// Opens a menu below a control with the activities that were timed last; what is chosen is started and
/// selected.
void openLatestMenu(QWidget& below, TimerState& state);

}  // namespace pendra
