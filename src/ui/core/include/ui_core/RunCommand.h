#pragma once

#include <QString>
#include <functional>

namespace pendra {

class Session;

/// Runs a command of the user. What the channel throws ends here: it is logged as its name, a colon, a
/// blank and its reason, and said plainly in the notice line under the command's name; the program goes on.
/// While Vantor is being asked no command is run; the notice line says so.
void runCommand(Session& session, const QString& name, const std::function<void()>& command);

/// The same for a command that does not come from a window, which a question could block: while one stands
/// nothing is done, and the notice line says so. `busyWith` is empty when nothing stands.
void runFromOutside(Session& session, const QString& busyWith, const QString& name,
                    const std::function<void()>& command);

}  // namespace pendra
