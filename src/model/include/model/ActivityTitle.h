#pragma once

#include "model/Activity.h"

namespace pendra {

/// What an activity is called where it is spoken of: "Acme - Roof - Design", without what it lacks.
QString activityTitle(const Activity& activity);

}  // namespace pendra
