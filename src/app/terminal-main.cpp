// What is called "pendra": it answers a terminal itself, and becomes the program with the windows for
// everything else.

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "Terminal.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace {

/// Returns only where that program cannot be started.
int becomeTheWindows(char** argv) {
  std::error_code unknown;
  const auto self = std::filesystem::read_symlink("/proc/self/exe", unknown);
  const auto program = self.parent_path().parent_path() / "libexec/pendra/pendra-windows";
  ::execv(program.c_str(), argv);
  return pendra::refuse(pendra::formatted(pendra::tr("“%@” cannot be started: %@"),
                                          {QString::fromStdString(program.string()), qt_error_string()}),
                        pendra::status::kFailed);
}

/// A start without a word, or with the path that a desktop hands over, is none that a terminal waits for.
bool isFromTheDesktop(int argc, char** argv) { return argc == 1 || (argc == 2 && argv[1][0] == '/'); }

}  // namespace

int main(int argc, char** argv) {
  if (isFromTheDesktop(argc, argv)) return becomeTheWindows(argv);
  const auto start = pendra::answerTerminal(argc, argv);
  // At once: a thread of the bus may still read while the statics that it needs go.
  if (const int* status = std::get_if<int>(&start)) std::quick_exit(*status);
  return becomeTheWindows(argv);
}
