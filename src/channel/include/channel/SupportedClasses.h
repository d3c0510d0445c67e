#pragma once

#include <vector>

#include "channel/ArchiveValue.h"

namespace pendra {

/// The only classes that decoding may produce. The nil marker is always among them, and so is the array,
/// which every message is.
struct SupportedClasses {
  bool strings = true;
  bool numbers = true;
  std::vector<const ArchiveClass*> records;
};

}  // namespace pendra
