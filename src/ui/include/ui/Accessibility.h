#pragma once

namespace pendra {

/// From now on assistive technology sees combo boxes by their own names. Called once, after the application
/// was made.
void installComboBoxAccessibility();

}  // namespace pendra
