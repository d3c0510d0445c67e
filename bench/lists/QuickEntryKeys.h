#pragma once

#include "document/Session.h"

namespace pendra {

/// A letter in the quick entry of the open document, with its completions, against a plain loop that folds
/// nothing and looks whether each word stands in the names of all customers, jobs and activities.
void measureQuickEntryKeys(Session& session);

}  // namespace pendra
