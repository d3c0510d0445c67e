#pragma once
// The terminal's side of every start, for which no library of the windows is loaded: scripts and prompts ask
// often.

#include <QVariant>
#include <functional>
#include <variant>

#include "CommandLine.h"

namespace pendra {

/// The answer to a command; none where another program has to carry it out.
using Obey = std::function<std::optional<Result<QVariant>>(const Order&)>;

/// Answers what was asked, prints it and gives the status to end with; or gives the line of a start that
/// needs another program: the windows, or who obeys what `obey` does not.
[[nodiscard]] std::variant<int, CommandLine> answerTerminal(int argc, char** argv, const Obey& obey);

/// Says on standard error why a start cannot go on. Returns `status`.
[[nodiscard]] int refuse(const QString& why, int status);

}  // namespace pendra
