#include "platform/Clock.h"

#include <chrono>

namespace pendra {

Instant SystemClock::now() const {
  const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
  return {std::chrono::duration<double>(sinceEpoch).count() - kUnixToReference};
}

}  // namespace pendra
