#pragma once

#include "store/Descriptors.h"

namespace pendra {

/// The model of every document, out of the resources; the program cannot run without it.
[[nodiscard]] ObjectModel loadObjectModel();

}  // namespace pendra
