#include "model/Activity.h"

#include "model/Customer.h"
#include "model/DocumentSettings.h"
#include "model/Job.h"
#include "model/Queries.h"
#include "model/Service.h"
#include "model/TimeEntry.h"
#include "store/ObjectContext.h"

namespace pendra {

namespace {

void stopAll(const ObjectContext& context, Instant end) {
  const auto running = context.flagged<TimeEntry>("running").copy();
  for (TimeEntry* entry : running) {
    if (entry->start().value_or(end) > end) {
      entry->stopTimer();
    } else {
      entry->stopTimerAt(end);
    }
  }
}

}  // namespace

const EntityDescriptor& Activity::descriptor() {
  using namespace describe;
  static constexpr PropertyDescriptor kProperties[] = {
      toOne<&Activity::customer_, Customer>("customer", "activities"),
      toOne<&Activity::job_, Job>("job", "activities"),
      toOne<&Activity::service_, Service>("service", "activity"),
      toOne<&Activity::document_, DocumentSettings>("document", "activities"),
      text<&Activity::notes_>("notes"),
      boolean<&Activity::billable_>("billable"),
      boolean<&Activity::shouldAutoStartTimer_>("shouldAutoStartTimer"),
      boolean<&Activity::completed_>("completed"),
      boolean<&Activity::lostCustomer_>("lostCustomer"),
      boolean<&Activity::lostJob_>("lostJob"),
      boolean<&Activity::lostService_>("lostService"),
      boolean<&Activity::favourite_>("favourite"),
      text<&Activity::submitError_>("submitError"),
      toMany<&Activity::entries_, TimeEntry>("timePeriod", "activity", DeleteRule::Cascade),
  };
  static constexpr EntityDescriptor kDescriptor{"Activity", kProperties, &make<Activity>};
  return kDescriptor;
}

void Activity::setNotes(std::optional<QString> notes) { assign(notes_, std::move(notes)); }

Customer* Activity::customer() const { return customer_.get(); }
void Activity::setCustomer(Customer* customer) { relate(customer_, customer); }
Job* Activity::job() const { return job_.get(); }
void Activity::setJob(Job* job) { relate(job_, job); }
Service* Activity::service() const { return service_.get(); }
void Activity::setService(Service* service) { relate(service_, service); }

Activity::Loss Activity::loss() const {
  return {.customer = lostCustomer_.get() == true && !customer(),
          .job = lostJob_.get() == true && !job(),
          .service = lostService_.get() == true && !service()};
}

void Activity::addLoss(const Loss& loss) {
  if (loss.customer) assign(lostCustomer_, std::optional(true));
  if (loss.job) assign(lostJob_, std::optional(true));
  if (loss.service) assign(lostService_, std::optional(true));
}

void Activity::forgetLoss() {
  assign(lostCustomer_, std::optional<bool>());
  assign(lostJob_, std::optional<bool>());
  assign(lostService_, std::optional<bool>());
}

TimeEntry* Activity::runningEntry() const {
  if (!context()) return nullptr;
  const auto running = context()->flagged<TimeEntry>("running");
  const auto own = std::find_if(running.begin(), running.end(),
                                [this](const TimeEntry* entry) { return entry->activity() == this; });
  return own == running.end() ? nullptr : *own;
}

void Activity::stop() {
  if (TimeEntry* running = runningEntry()) running->stopTimer();
}

TimeEntry& Activity::addEntry() {
  auto& entry = context()->insert<TimeEntry>();
  entry.setStart(context()->clock().now());
  entry.setActivity(this);
  return entry;
}

TimeEntry& Activity::startEntry(std::optional<Instant> since) {
  const Instant begin = since.value_or(context()->clock().now());
  const DocumentSettings* settings = queries::firstDocument(*context());
  if (settings && settings->startsOneAtATime()) stopAll(*context(), begin);
  TimeEntry& entry = addEntry();
  entry.setStart(begin);
  entry.startTimer();
  return entry;
}

ActivityTimes Activity::storedTimes(const Today& today) const {
  if (!context()) return sumOfEntries(today);
  const quint64 changeCount = context()->changeCount();
  if (!storedTimes_ || storedTimes_->changeCount != changeCount || storedTimes_->today != today) {
    storedTimes_ = {changeCount, today, sumOfEntries(today)};
  }
  return storedTimes_->times;
}

ActivityTimes Activity::sumOfEntries(const Today& today) const {
  ActivityTimes times;
  for (const TimeEntry* entry : entries_.get()) {
    times.total += entry->storedDuration();
    if (entry->start() && today.contains(*entry->start())) times.today += entry->storedDuration();
  }
  return times;
}

}  // namespace pendra
