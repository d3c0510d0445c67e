#include "model/Job.h"

#include "model/Activity.h"
#include "model/Customer.h"

namespace pendra {

const EntityDescriptor& Job::descriptor() {
  using namespace describe;
  static constexpr PropertyDescriptor kProperties[] = {
      text<&Job::name_>("name"),
      indexed(text<&Job::vtObjectID_>("vtObjectID")),
      boolean<&Job::shown_>("shown"),
      toOne<&Job::customer_, Customer>("customer", "jobs"),
      toMany<&Job::activities_, Activity>("activities", "job"),
  };
  static constexpr EntityDescriptor kDescriptor{"Job", kProperties, &make<Job>};
  return kDescriptor;
}

Customer* Job::customer() const { return customer_.get(); }
void Job::setCustomer(Customer* customer) { relate(customer_, customer); }

}  // namespace pendra
