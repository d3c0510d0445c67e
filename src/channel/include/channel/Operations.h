#pragma once

#include <QStringView>

namespace pendra {

/// What Pendra can ask of Vantor. Every operation is answered.
struct Operation {
  QStringView name;  ///< as it goes over the wire, colon included
  int argumentCount = 0;
  bool hasEffect = false;  ///< Vantor has something afterwards, so that it matters whether it was performed
};

namespace operations {
inline constexpr Operation kCompanyFileName{.name = u"companyFileName"};
inline constexpr Operation kEmployeeNames{.name = u"getEmployeeNamesArray"};
inline constexpr Operation kServices{.name = u"getServicesArray"};
inline constexpr Operation kCustomers{.name = u"getCustomersArray"};
inline constexpr Operation kJobs{.name = u"getJobsArray"};
inline constexpr Operation kCanTalkToPendra{.name = u"canTalkToPendra"};
inline constexpr Operation kSubmitTime{.name = u"submitTime:", .argumentCount = 1, .hasEffect = true};
}  // namespace operations

/// Null when there is none of that name.
[[nodiscard]] const Operation* operationNamed(QStringView name);

}  // namespace pendra
