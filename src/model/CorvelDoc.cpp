#include "model/CorvelDoc.h"

#include "model/Activity.h"
#include "model/Customer.h"
#include "model/Identity.h"
#include "model/Service.h"

namespace pendra {

const EntityDescriptor& CorvelDoc::descriptor() {
  using namespace describe;
  static constexpr PropertyDescriptor kProperties[] = {
      toOne<&CorvelDoc::identity_, Identity>("identity", "documents"),
      boolean<&CorvelDoc::standalone_>("standalone"),
      toMany<&CorvelDoc::customers_, Customer>("customers", "document"),
      toMany<&CorvelDoc::services_, Service>("services", "document"),
      toMany<&CorvelDoc::activities_, Activity>("activities", "document"),
  };
  static constexpr EntityDescriptor kDescriptor{"Document", kProperties, &make<CorvelDoc>};
  return kDescriptor;
}

Identity* CorvelDoc::identity() const { return identity_.get(); }
void CorvelDoc::setIdentity(Identity* identity) { relate(identity_, identity); }

void CorvelDoc::addCustomerObject(Customer& customer) {
  const Notifier::Change change(customersChanges_);
  customer.setDocument(this);
}

void CorvelDoc::removeCustomerObject(Customer& customer) {
  const Notifier::Change change(customersChanges_);
  if (customer.document() == this) customer.setDocument(nullptr);
}

}  // namespace pendra
