#pragma once
// The terminal's side of every start, for which no library of the windows is loaded: scripts and prompts ask
// often.

#include <variant>

#include "CommandLine.h"

namespace pendra {

/// Answers what was asked, prints it and gives the status to end with; or gives the line of a start that
/// needs the windows, or draws them.
[[nodiscard]] std::variant<int, CommandLine> answerTerminal(int argc, char** argv);

/// Says on standard error why a start cannot go on. Returns `status`.
[[nodiscard]] int refuse(const QString& why, int status);

}  // namespace pendra
