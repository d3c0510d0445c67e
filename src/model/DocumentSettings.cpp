#include "model/DocumentSettings.h"

#include "model/Activity.h"
#include "model/Customer.h"
#include "model/Identity.h"
#include "model/Service.h"

namespace pendra {

const EntityDescriptor& DocumentSettings::descriptor() {
  using namespace describe;
  static constexpr PropertyDescriptor kProperties[] = {
      toOne<&DocumentSettings::identity_, Identity>("identity", "documents"),
      boolean<&DocumentSettings::standalone_>("standalone"),
      instant<&DocumentSettings::aliveAt_>("aliveAt"),
      toMany<&DocumentSettings::customers_, Customer>("customers", "document"),
      toMany<&DocumentSettings::services_, Service>("services", "document"),
      toMany<&DocumentSettings::activities_, Activity>("activities", "document"),
  };
  static constexpr EntityDescriptor kDescriptor{"Document", kProperties, &make<DocumentSettings>};
  return kDescriptor;
}

Identity* DocumentSettings::identity() const { return identity_.get(); }
void DocumentSettings::setIdentity(Identity* identity) { relate(identity_, identity); }

}  // namespace pendra
