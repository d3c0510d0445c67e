#include "model/Customer.h"

#include "model/Activity.h"
#include "model/DocumentSettings.h"
#include "model/Job.h"

namespace pendra {

const EntityDescriptor& Customer::descriptor() {
  using namespace describe;
  static constexpr PropertyDescriptor kProperties[] = {
      indexed(text<&Customer::name_>("name")),
      indexed(text<&Customer::vtObjectID_>("vtObjectID")),
      boolean<&Customer::shown_>("shown"),
      number<&Customer::index_>("index"),
      toMany<&Customer::jobs_, Job>("jobs", "customer", DeleteRule::Cascade),
      toMany<&Customer::activities_, Activity>("activities", "customer"),
      toOne<&Customer::document_, DocumentSettings>("document", "customers"),
  };
  static constexpr EntityDescriptor kDescriptor{"Customer", kProperties, &make<Customer>};
  return kDescriptor;
}

}  // namespace pendra
