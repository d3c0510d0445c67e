#include "model/Service.h"

#include "model/Activity.h"
#include "model/DocumentSettings.h"

namespace pendra {

const EntityDescriptor& Service::descriptor() {
  using namespace describe;
  static constexpr PropertyDescriptor kProperties[] = {
      indexed(text<&Service::name_>("name")),
      indexed(text<&Service::vtObjectID_>("vtObjectID")),
      boolean<&Service::shown_>("shown"),
      toMany<&Service::activities_, Activity>("activity", "service"),
      toOne<&Service::document_, DocumentSettings>("document", "services"),
  };
  static constexpr EntityDescriptor kDescriptor{"Service", kProperties, &make<Service>};
  return kDescriptor;
}

}  // namespace pendra
