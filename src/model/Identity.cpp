#include "model/Identity.h"

#include "model/CorvelDoc.h"

namespace pendra {

const EntityDescriptor& Identity::descriptor() {
  using namespace describe;
  static constexpr PropertyDescriptor kProperties[] = {
      text<&Identity::companyFileName_>("companyFileName"),
      text<&Identity::employeeName_>("employeeName"),
      toMany<&Identity::documents_, CorvelDoc>("documents", "identity"),
  };
  static constexpr EntityDescriptor kDescriptor{"Identity", kProperties, &make<Identity>};
  return kDescriptor;
}

}  // namespace pendra
