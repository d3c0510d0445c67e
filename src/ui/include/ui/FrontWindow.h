#pragma once

class QWidget;

namespace pendra {

/// The window on which a sheet belongs now: the modal dialog that runs, else the active window, else one
/// that is shown. None when there is no window.
[[nodiscard]] QWidget* frontWindow();

/// Whether a dialog or a sheet must be answered before anything can be done in `window`.
[[nodiscard]] bool isBlocked(const QWidget& window);

}  // namespace pendra
