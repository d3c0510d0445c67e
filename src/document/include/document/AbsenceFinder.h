#pragma once
// Whether somebody is there is looked at now and then. Lengths are the machine's own, which no setting of the
// wall clock changes; that clock only gives the moments their names, as it stands when somebody is back.

#include <optional>

#include "model/Absence.h"
#include "platform/SleepSource.h"

namespace pendra {

/// What can be seen at a moment.
struct Look {
  Instant now;
  Uptime uptime;
  std::optional<double> idle;  ///< for how many seconds nobody has touched the machine; none if unknown
};

/// Finds in a row of looks when nobody was there: from the last touch when it is longer ago than the limit,
/// or from the moment at which the machine went to sleep, until somebody touches the machine.
class AbsenceFinder {
 public:
  /// Longer than `limit` seconds is an absence.
  explicit AbsenceFinder(double limit) : limit_(limit) {}

  /// Answers the absence that this look has found to be over.
  std::optional<Absence> look(const Look& look);
  /// Since when nobody has been there, by the wall clock of the last look; none while somebody is.
  [[nodiscard]] std::optional<Instant> awaySince() const;
  /// In how many seconds the next look is due: no absence of the limit's length ends unseen before.
  [[nodiscard]] double untilNextLook() const;

 private:
  double limit_;
  std::optional<Look> last_;
  std::optional<double> since_;  ///< in seconds since the machine was started
};

}  // namespace pendra
