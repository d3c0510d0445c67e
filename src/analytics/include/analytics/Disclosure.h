#pragma once

#include <QString>

namespace pendra {

/// Whether what sends them is installed; without it there are none.
[[nodiscard]] bool areStatisticsInstalled();

/// Everything that usage statistics send, and to whom. The help says it in the same words.
[[nodiscard]] QString statisticsDisclosure();

/// The same for Preferences: with a sentence more where the program that sends them is not installed.
[[nodiscard]] QString statisticsDisclosureHere();

}  // namespace pendra
