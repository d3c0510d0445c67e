#pragma once
// Desktops let no program take the front by itself: whoever starts one is given a token, and the program that
// shows itself for it says so with that.

#include <QString>

class QWidget;

namespace pendra {

/// The token that this start was given, once; empty where there is none. Called before the toolkit takes it.
[[nodiscard]] QString takeActivation();
/// Gives a window the keyboard by that leave, or without one as the desktop sees fit.
void activate(QWidget& window, const QString& activation);
/// Tells the desktop that what it waited for has come, so that its pointer is not busy any longer.
void tellArrived(const QString& activation);

}  // namespace pendra
