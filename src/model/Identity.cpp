#include "model/Identity.h"

#include "model/DocumentSettings.h"

namespace pendra {

const EntityDescriptor& Identity::descriptor() {
  using namespace describe;
  static constexpr PropertyDescriptor kProperties[] = {
      text<&Identity::companyFileName_>("companyFileName"),
      text<&Identity::employeeName_>("employeeName"),
      toMany<&Identity::documents_, DocumentSettings>("documents", "identity"),
  };
  static constexpr EntityDescriptor kDescriptor{"Identity", kProperties, &make<Identity>};
  return kDescriptor;
}

void Identity::setCompanyFileName(std::optional<QString> name) { assign(companyFileName_, std::move(name)); }
void Identity::setEmployeeName(std::optional<QString> name) { assign(employeeName_, std::move(name)); }

}  // namespace pendra
