#pragma once

class QMenu;
class QWidget;

namespace pendra {

class TimerState;

/// A menu of the activities that were timed last, to be opened; what is chosen is started and selected. It
/// goes when it has closed.
[[nodiscard]] QMenu* makeLatestMenu(QWidget& of, TimerState& state);

}  // namespace pendra
