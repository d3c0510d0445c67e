#pragma once

#include "ui_core/QuickReading.h"

namespace pendra {

/// Does what a reading of the document as it is says, as one edit: new names, a new activity, its entry.
/// Answers the entry. Nothing is done of a reading with a fault or that says nothing; that is a failure.
[[nodiscard]] Result<TimeEntry*> carryOut(const QuickReading& reading, ObjectContext& context);

}  // namespace pendra
