#include "model/TimeEntry.h"

#include "model/Activity.h"
#include "platform/DateTexts.h"
#include "store/ObjectContext.h"

namespace pendra {

const EntityDescriptor& TimeEntry::descriptor() {
  using namespace describe;
  static constexpr PropertyDescriptor kProperties[] = {
      toOne<&TimeEntry::activity_, Activity>("activity", "timePeriod"),
      instant<&TimeEntry::start_>("start"),
      number<&TimeEntry::duration_>("duration"),
      indexed(boolean<&TimeEntry::running_>("running")),
      instant<&TimeEntry::dateSubmitted_>("dateSubmitted"),
      text<&TimeEntry::notes_>("notes"),
      instant<&TimeEntry::sendingSince_>("sendingSince"),
      text<&TimeEntry::sentAs_>("sentAs"),
      instant<&TimeEntry::haltedAt_>("haltedAt"),
      instant<&TimeEntry::awayFrom_>("awayFrom"),
      instant<&TimeEntry::awayTo_>("awayTo"),
  };
  static constexpr EntityDescriptor kDescriptor{"TimePeriod", kProperties, &make<TimeEntry>};
  return kDescriptor;
}

void TimeEntry::setNotes(std::optional<QString> notes) { assign(notes_, std::move(notes)); }

void TimeEntry::onInsert() {
  setStart(context()->clock().now());
  setRunning(false);
}

Activity* TimeEntry::activity() const { return activity_.get(); }
void TimeEntry::setActivity(Activity* activity) { relate(activity_, activity); }

void TimeEntry::setSentAs(std::optional<QString> name) { assign(sentAs_, std::move(name)); }

void TimeEntry::setDuration(std::optional<double> duration) {
  if (duration.value_or(0) != storedDuration()) setHaltedAt(std::nullopt);
  assign(duration_, duration);
}

void TimeEntry::startTimer() {
  setHaltedAt(std::nullopt);
  setRunning(true);
}

void TimeEntry::stopTimer() { stopTimerAt(context()->clock().now()); }

void TimeEntry::stopTimerAt(Instant end) {
  setDuration(end - start().value_or(end));
  setRunning(false);
}

double TimeEntry::lengthAt(Instant now) const {
  return isRunning() ? now - start().value_or(now) : storedDuration();
}

double TimeEntry::length() const {
  return isRunning() ? lengthAt(context()->clock().now()) : storedDuration();
}

Instant TimeEntry::endAt(Instant now) const {
  return isRunning() ? now : start().value_or(now) + storedDuration();
}

Instant TimeEntry::end() const { return endAt(context()->clock().now()); }

int TimeEntry::compare(const TimeEntry& other) const {
  if (start() == other.start()) return 0;
  return start() < other.start() ? -1 : 1;
}

}  // namespace pendra
