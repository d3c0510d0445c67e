// Answers a terminal, and becomes the program with the windows where that is not enough.

#include <cstdlib>

#include "Becoming.h"
#include "Terminal.h"
#include "platform/Text.h"
#include "platform/Translation.h"

int main(int argc, char** argv) {
  const auto start = pendra::answerTerminal(argc, argv);
  // At once: a thread of the bus may still read while the statics that it needs go.
  if (const int* status = std::get_if<int>(&start)) std::quick_exit(*status);
  pendra::become("pendra-windows", argv);
  return pendra::refuse(pendra::formatted(pendra::tr("the program with the windows cannot be started: %@"),
                                          {qt_error_string()}),
                        pendra::status::kFailed);
}
