#include "model/Model.h"

#include "model/Activity.h"
#include "model/Customer.h"
#include "model/DocumentSettings.h"
#include "model/Identity.h"
#include "model/Job.h"
#include "model/Service.h"
#include "model/TimeEntry.h"

namespace pendra {

ObjectModel objectModel(QByteArray schema) {
  return {
      .entities = {&Customer::descriptor(), &Job::descriptor(), &Service::descriptor(),
                   &Activity::descriptor(), &TimeEntry::descriptor(), &Identity::descriptor(),
                   &DocumentSettings::descriptor()},
      .schema = std::move(schema),
      // Documents say they are of the first layout since before an entry knew since when it is being sent.
      .upgrades = {{{"TimePeriod", "sendingSince", "REAL"},
                    {"Activity", "lostCustomer", "INTEGER"},
                    {"Activity", "lostJob", "INTEGER"},
                    {"Activity", "lostService", "INTEGER"}},
                   {{"TimePeriod", "haltedAt", "REAL"},
                    {"TimePeriod", "awayFrom", "REAL"},
                    {"TimePeriod", "awayTo", "REAL"},
                    {"Activity", "favourite", "INTEGER"},
                    {"Document", "aliveAt", "REAL"}},
                   {{"TimePeriod", "sentAs", "TEXT"}}}};
}

}  // namespace pendra
