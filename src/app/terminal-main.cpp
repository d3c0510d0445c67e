// What is called "pendra": it answers a terminal itself, and becomes the program with the windows for
// everything else.

#include <unistd.h>
#include <cstdlib>

#include <QCoreApplication>
#include <QFile>

#include "Terminal.h"
#include "platform/Resources.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace {

/// Returns only where that program cannot be started.
int becomeTheWindows(int argc, char** argv) {
  const QString program = [&argc, argv] {
    const QCoreApplication application(argc, argv);
    return QString(pendra::helperFolder() + u"/pendra-windows");
  }();
  ::execv(QFile::encodeName(program).constData(), argv);
  return pendra::refuse(
      pendra::formatted(pendra::tr("“%@” cannot be started: %@"), {program, qt_error_string()}),
      pendra::status::kFailed);
}

}  // namespace

int main(int argc, char** argv) {
  const auto start = pendra::answerTerminal(argc, argv);
  // At once: a thread of the bus may still read while the statics that it needs go.
  if (const int* status = std::get_if<int>(&start)) std::quick_exit(*status);
  return becomeTheWindows(argc, argv);
}
