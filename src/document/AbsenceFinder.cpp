#include "document/AbsenceFinder.h"

#include <algorithm>

namespace pendra {

namespace {

/// How often it is looked whether somebody is back.
constexpr double kWhileAway = 2;
/// A sleep that nobody tells of is found so much later at most.
constexpr double kWhileThere = 30;

}  // namespace

std::optional<Absence> AbsenceFinder::look(const Look& look) {
  const double total = look.uptime.total();
  const double awake = last_ ? look.uptime.awake - last_->uptime.awake : 0;
  const double slept = last_ ? look.uptime.asleep - last_->uptime.asleep : 0;
  last_ = look;
  const bool hasSlept = slept >= Absence::kShortest;
  const double touched = total - look.idle.value_or(0);
  if (hasSlept && !since_) since_ = total - slept;
  if (!since_) {
    if (look.idle.value_or(0) >= limit_) since_ = touched;
    return std::nullopt;
  }
  // Where nobody knows of touches, whoever woke the machine is there.
  const bool isBack = !look.idle || *look.idle < awake;
  if (!isBack) return std::nullopt;
  const double until = hasSlept ? total : std::max(touched, *since_);
  const Instant to = look.now + (until - total);
  return Absence{to + (*std::exchange(since_, std::nullopt) - until), to};
}

std::optional<Instant> AbsenceFinder::awaySince() const {
  if (!since_) return std::nullopt;
  return last_->now + (*since_ - last_->uptime.total());
}

double AbsenceFinder::untilNextLook() const {
  if (since_) return kWhileAway;
  const double idle = last_ ? last_->idle.value_or(0) : 0;
  return std::clamp(limit_ - idle, 1.0, kWhileThere);
}

}  // namespace pendra
