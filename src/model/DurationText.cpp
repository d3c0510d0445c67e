#include "model/DurationText.h"

#include <array>
#include <cstdio>

namespace pendra {

QString durationText(double seconds) {
  const auto hours = static_cast<qint64>(seconds / 3600);
  const double rest = seconds - 3600.0 * static_cast<double>(hours);
  const auto minutes = static_cast<int>(rest / 60);
  const auto shown = static_cast<int>(rest - 60.0 * minutes);
  // Not QString's own: tables make these by the thousand, and it takes several times as long.
  std::array<char, 64> text{};
  const int length = std::snprintf(text.data(), text.size(), "%02lld:%02d:%02d",
                                   static_cast<long long>(hours), minutes, shown);
  return QString::fromLatin1(text.data(), length);
}

}  // namespace pendra
