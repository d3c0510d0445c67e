#include "model/TimePeriod.h"

#include "model/Activity.h"
#include "platform/DateTexts.h"
#include "store/ObjectContext.h"

namespace pendra {

const EntityDescriptor& TimePeriod::descriptor() {
  using namespace describe;
  static constexpr PropertyDescriptor kProperties[] = {
      toOne<&TimePeriod::activity_, Activity>("activity", "timePeriod"),
      instant<&TimePeriod::start_>("start"),
      number<&TimePeriod::duration_>("duration"),
      boolean<&TimePeriod::running_>("running"),
      instant<&TimePeriod::dateSubmitted_>("dateSubmitted"),
      text<&TimePeriod::notes_>("notes"),
      instant<&TimePeriod::sendingSince_>("sendingSince"),
  };
  static constexpr EntityDescriptor kDescriptor{"TimePeriod", kProperties, &make<TimePeriod>};
  return kDescriptor;
}

void TimePeriod::awakeFromInsert() {
  setStart(context()->clock().now());
  setRunning(false);
}

Activity* TimePeriod::activity() const { return activity_.get(); }
void TimePeriod::setActivity(Activity* activity) { relate(activity_, activity); }

void TimePeriod::stopTimer() {
  setDuration(curElapsedTime());
  setRunning(false);
}

double TimePeriod::curElapsedTime() const {
  if (!running_) return storedDuration();
  return context()->clock().now() - start_.value_or(context()->clock().now());
}

QString TimePeriod::startString() const {
  return start_ ? clockText(*start_, context()->calendar()) : QString();
}

QString TimePeriod::stopString() const {
  return start_ ? clockText(*start_ + storedDuration(), context()->calendar()) : QString();
}

QString TimePeriod::startDate() const {
  return start_ ? dayFirstDate(*start_, context()->calendar()) : QString();
}

QString TimePeriod::hours() const { return QString::asprintf("%f", storedDuration() / 3600.0); }

std::optional<Instant> TimePeriod::stripTime(std::optional<Instant> date, const Calendar& calendar) {
  if (!date) return std::nullopt;
  return calendar.startOfDay(calendar.day(*date));
}

bool TimePeriod::isBetweenDates(std::optional<Instant> from, std::optional<Instant> to) const {
  const Calendar& calendar = context()->calendar();
  const auto day = stripTime(start_, calendar);
  if (from && day < stripTime(from, calendar)) return false;
  return !to || !(day > stripTime(to, calendar));
}

int TimePeriod::compare(const TimePeriod& other) const {
  if (start_ == other.start_) return 0;
  return start_ < other.start_ ? -1 : 1;
}

}  // namespace pendra
