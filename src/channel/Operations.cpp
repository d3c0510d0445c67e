#include "channel/Operations.h"

#include <algorithm>
#include <array>

namespace pendra {

const Operation* operationNamed(QStringView name) {
  using namespace operations;
  static constexpr std::array kAll{&kCompanyFileName, &kEmployeeNames, &kServices, &kCustomers, &kJobs,
                                   &kCanTalkToPendra, &kSubmitTime};
  const auto* const found = std::find_if(kAll.begin(), kAll.end(),
                                         [&](const Operation* operation) { return operation->name == name; });
  return found == kAll.end() ? nullptr : *found;
}

}  // namespace pendra
