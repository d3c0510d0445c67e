#include "model/Model.h"

#include "model/Activity.h"
#include "model/CorvelDoc.h"
#include "model/Customer.h"
#include "model/Identity.h"
#include "model/Job.h"
#include "model/Service.h"
#include "model/TimePeriod.h"

namespace pendra {

ObjectModel managedObjectModel(QByteArray schema) {
  return {.entities = {&Customer::descriptor(), &Job::descriptor(), &Service::descriptor(),
                       &Activity::descriptor(), &TimePeriod::descriptor(), &Identity::descriptor(),
                       &CorvelDoc::descriptor()},
          .schema = std::move(schema),
          .upgrades = {"ALTER TABLE Activity ADD COLUMN lostCustomer INTEGER;"
                       "ALTER TABLE Activity ADD COLUMN lostJob INTEGER;"
                       "ALTER TABLE Activity ADD COLUMN lostService INTEGER;"}};
}

}  // namespace pendra
