#pragma once
// The command line is read from the bytes that were given, before there is an application or a display: a
// name that is no text is refused, because any other spelling of it is another file.

#include <QString>
#include <optional>
#include <span>

#include "orders/Order.h"
#include "platform/Result.h"

namespace pendra {

/// With what status a start ends that does not open a window.
namespace status {
inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;      ///< nothing could be drawn or handed over
inline constexpr int kNothing = 1;     ///< nothing matched, or there was nothing to do
inline constexpr int kWrongUsage = 2;  ///< also without a display
inline constexpr int kSeveral = 3;     ///< more than one activity matched
inline constexpr int kNoDocument = 4;  ///< the document cannot be used
inline constexpr int kNoVantor = 5;    ///< Vantor cannot be used
}  // namespace status

/// What the desktop's menu for the program offers, by their names in the desktop entry.
namespace actions {
inline const QString kQuickEntry = QStringLiteral("quick-entry");
inline const QString kStopAll = QStringLiteral("stop-all");
}  // namespace actions

/// What a start of the program was asked for.
struct CommandLine {
  enum class Task { Run, DrawTour, SayVersion, SayHelp, Obey };

  Task task = Task::Run;
  std::optional<bool> isDark{};  ///< the look that it is to have, whatever the desktop says
  QString file{};                ///< absolute; empty: the document that was open last
  bool isNewFile = false;        ///< the file is to be made
  QString action{};              ///< of the desktop entry: what is to be done beside coming to the front
  bool isInPanel = false;        ///< it begins without a window where a panel shows it
  QString tourFolder{};
  Order order{};  ///< what to obey
};

/// Reads `arguments`, the program's name first. An error's code is the status to end with, its text one line.
[[nodiscard]] Result<CommandLine> readCommandLine(std::span<const char* const> arguments);

/// Whether there is a display to open a window on.
[[nodiscard]] bool hasDisplay();

/// What `--help` prints.
[[nodiscard]] QString usage();

}  // namespace pendra
