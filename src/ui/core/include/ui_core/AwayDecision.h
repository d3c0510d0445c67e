#pragma once

#include <array>

#include "document/TimeAway.h"
#include "model/Activity.h"

namespace pendra {

class Session;

/// What can become of the time in which nobody was there, in the order in which it is offered.
enum class AwayChoice { Keep, TakeOff, Book };

/// What the window says about an absence, as of now.
struct AwayTexts {
  QString heading;
  QString words;
  struct Way {
    QString title;
    QString explanation;
    QString deed;
  };
  std::array<Way, 3> ways;
};
[[nodiscard]] AwayTexts awayTexts(const Session& session, const TimeAway& away);

/// The activities to which the time may be booked: those in the list that did not run.
[[nodiscard]] std::vector<Activity*> otherActivities(const ObjectContext& context, const TimeAway& away);

/// How the absence lies in the first of its entries.
struct AwayShape {
  Instant start;
  Absence absence;
  Instant end;
  bool runs = false;  ///< it ends now
};
[[nodiscard]] AwayShape awayShape(const TimeAway& away);

}  // namespace pendra
