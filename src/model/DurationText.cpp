#include "model/DurationText.h"

namespace pendra {

QString durationText(double seconds) {
  const auto hours = static_cast<qint64>(seconds / 3600);
  const double rest = seconds - 3600.0 * static_cast<double>(hours);
  const auto minutes = static_cast<int>(rest / 60);
  const auto shown = static_cast<int>(rest - 60.0 * minutes);
  return QString::asprintf("%02lld:%02d:%02d", static_cast<long long>(hours), minutes, shown);
}

}  // namespace pendra
