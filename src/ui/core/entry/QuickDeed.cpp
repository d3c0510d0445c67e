#include "ui_core/QuickDeed.h"

#include "model/Queries.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "ui_core/ListSteps.h"
#include "ui_core/NameLookups.h"
#include "ui_core/QuickReadingTexts.h"

namespace pendra {

namespace {

using Deed = QuickReading::Deed;

void addNewNames(const QuickReading& reading, ObjectContext& context) {
  if (reading.customer.isNew) addCustomer(context, reading.customer.text);
  if (reading.service.isNew) addService(context, reading.service.text);
  if (reading.job.isNew) addJob(*findCustomerByName(context, reading.customer.text), reading.job.text);
}

/// The job that is called exactly so; the customers may share their name.
Job* jobNamed(const QuickReading& reading, const ObjectContext& context) {
  for (const Customer* customer : queries::customersNamed(context, reading.customer.text)) {
    for (Job* job : customer->jobs()) {
      if (job->name() == reading.job.text) return job;
    }
  }
  return nullptr;
}

Activity& newActivity(const QuickReading& reading, ObjectContext& context) {
  addNewNames(reading, context);
  Activity& activity = createNewActivity(context);
  Job* job = reading.job.text.isEmpty() ? nullptr : jobNamed(reading, context);
  activity.setCustomer(job ? job->customer() : findCustomerByName(context, reading.customer.text));
  activity.setJob(job);
  activity.setService(findServiceByName(context, reading.service.text));
  activity.setNotes(reading.notes);
  return activity;
}

TimeEntry& newEntry(const QuickReading& reading, Activity& activity) {
  if (reading.deed != Deed::Book) return activity.startEntry(reading.start);
  TimeEntry& booked = activity.addEntry();
  booked.setStart(reading.start);
  booked.setDuration(reading.end - reading.start);
  return booked;
}

}  // namespace

Result<TimeEntry*> carryOut(const QuickReading& reading, ObjectContext& context) {
  if (reading.deed == Deed::Nothing) {
    return Error{QStringLiteral("entry"),
                 static_cast<int>(reading.fault ? reading.fault->why : QuickReading::Why{}),
                 reading.fault ? reading.fault->reason : QString()};
  }
  const char* pattern = reading.deed == Deed::Book ? QT_TRANSLATE_NOOP("pendra", "Booking of %@")
                                                   : QT_TRANSLATE_NOOP("pendra", "Start of %@");
  TimeEntry* entry = nullptr;
  auto done = context.edit(formatted(tr(pattern), {titleOf(reading)}), [&] {
    Activity& activity = reading.activity ? *reading.activity : newActivity(reading, context);
    // Whose work goes on is to be seen among the activities.
    if (activity.completed() == true) activity.setCompleted(false);
    entry = &newEntry(reading, activity);
  });
  if (!done) return done.error();
  return entry;
}

}  // namespace pendra
