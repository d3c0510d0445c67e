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
  return {.entities = {&Customer::descriptor(), &Job::descriptor(), &Service::descriptor(),
                       &Activity::descriptor(), &TimeEntry::descriptor(), &Identity::descriptor(),
                       &DocumentSettings::descriptor()},
          .schema = std::move(schema),
          .upgrades = {"ALTER TABLE Activity ADD COLUMN lostCustomer INTEGER;"
                       "ALTER TABLE Activity ADD COLUMN lostJob INTEGER;"
                       "ALTER TABLE Activity ADD COLUMN lostService INTEGER;"}};
}

}  // namespace pendra
