#include "link/TimeRecord.h"

#include "model/Activity.h"
#include "model/Customer.h"
#include "model/Identity.h"
#include "model/Job.h"
#include "model/Service.h"
#include "model/TimeEntry.h"
#include "platform/Text.h"

namespace pendra {

const QString kTimeRecordDeclaration = QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");

namespace {

QString textOf(const std::optional<QString>& text) { return text.value_or(QStringLiteral("(null)")); }

template <class Item>
QString recordOf(const Item* item) {
  return textOf(item ? item->vtObjectID() : std::nullopt);
}

}  // namespace

QString timeRecord(const Activity& activity, const TimeEntry& entry, const Identity* identity) {
  const double start = entry.start() ? entry.start()->seconds + kUnixToReference : 0.0;
  // Kept, because Vantor reads it so: the empty customer stands in addition to the filled one, and a job's
  // parent is the job itself.
  return formatted(
             u"<record>\n"
             "<customerID/>\n"
             "<customerID>%@</customerID>\n"
             "<job>%@</job>\n"
             "<jobParent>%@</jobParent>\n"
             "<userid>%@</userid>\n"
             "<service>%@</service>\n"
             "<notes>%@</notes>\n",
             {recordOf(activity.customer()), recordOf(activity.job()), recordOf(activity.job()),
              textOf(identity ? identity->employeeName() : std::nullopt), recordOf(activity.service()),
              textOf(activity.notes())}) +
         QString::asprintf("<billable>%d</billable>\n", activity.billable().value_or(false) ? 1 : 0) +
         QString::asprintf("<shouldAutoStartTimer>%d</shouldAutoStartTimer>\n",
                           activity.shouldAutoStartTimer().value_or(false) ? 1 : 0) +
         QString::asprintf("<timeentrydate>%f</timeentrydate>\n", start) +
         QString::asprintf("<duration>%2.2f</duration>\n", entry.storedDuration() / 3600.0) + u"</record>\n";
}

}  // namespace pendra
