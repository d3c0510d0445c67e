#pragma once
// People name an activity by parts of it. Nothing is started or stopped on a guess: one activity must match,
// and a name that matches none is answered with those that are near to it.

#include <vector>

#include "Order.h"
#include "model/Activity.h"
#include "store/ObjectContext.h"

namespace pendra {

/// What a person would recognise an activity by, also where it lacks every name.
[[nodiscard]] QString titleOf(const Activity& activity);

/// The one of `among` in which every word of `name` stands: in its customer, job, service or notes, in
/// whatever case. Of several the one that is called exactly so.
[[nodiscard]] Result<Activity*> oneMatching(const QString& name, const std::vector<Activity*>& among);

}  // namespace pendra
