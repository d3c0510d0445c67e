// Answers a terminal from the file, with neither bus nor windows, and becomes the program that has both where
// that is not enough.

#include "Becoming.h"
#include "Terminal.h"
#include "orders/Reading.h"
#include "platform/Text.h"
#include "platform/Translation.h"

namespace {

std::optional<pendra::Result<QVariant>> tell(const pendra::Order& order) {
  if (!pendra::onlyAsks(order.verb)) return std::nullopt;
  return pendra::read(order);
}

}  // namespace

int main(int argc, char** argv) {
  const auto start = pendra::answerTerminal(argc, argv, &tell);
  if (const int* status = std::get_if<int>(&start)) return *status;
  pendra::become("pendra-windows", argv);
  return pendra::refuse(pendra::formatted(pendra::tr("the program with the windows cannot be started: %@"),
                                          {qt_error_string()}),
                        pendra::status::kFailed);
}
