#pragma once
// The fixed conditions of the program. Each comment gives the condition in words of the keys.

#include <QStringList>
#include <vector>

#include "model/Activity.h"
#include "model/Customer.h"
#include "model/DocumentSettings.h"
#include "model/Identity.h"
#include "model/Job.h"
#include "model/Service.h"
#include "model/TimeEntry.h"
#include "store/ObjectContext.h"

namespace pendra::queries {

/// "completed ==%@" with false: an absent value does not match.
std::vector<Activity*> openActivities(const ObjectContext& context);

/// "name == %@", exactly.
Objects<Customer> customersNamed(const ObjectContext& context, const QString& name);
Objects<Service> servicesNamed(const ObjectContext& context, const QString& name);
/// "vtObjectID == %@".
Objects<Customer> customersWithRecord(const ObjectContext& context, const QString& vtObjectID);
Objects<Job> jobsWithRecord(const ObjectContext& context, const QString& vtObjectID);

/// "shown == %d" with 1.
std::vector<Customer*> shownCustomers(const ObjectContext& context);
std::vector<Service*> shownServices(const ObjectContext& context);

/// "name CONTAINS[c] %@"; an empty text is contained in every name.
bool nameContains(const std::optional<QString>& name, const QString& text);

/// The first fetched, or none.
Identity* firstIdentity(const ObjectContext& context);
DocumentSettings* firstDocument(const ObjectContext& context);

/// The name of a customer, job or service, or "" where there is none.
template <class Named>
QString nameOf(const Named* named) {
  return named ? named->name().value_or(QString()) : QString();
}

/// Negative, zero or positive as one name sorts before, with or after the other, by code unit; an absent name
/// sorts as an empty one.
int compareNames(const std::optional<QString>& one, const std::optional<QString>& other);

/// The distinct names of `named`, absent ones left out, sorted without regard to case.
template <class Container>
QStringList distinctNames(const Container& named);
/// Sorts without regard to case; names that differ only in case keep their order.
void sortIgnoringCase(QStringList& names);

template <class Container>
QStringList distinctNames(const Container& named) {
  QStringList names;
  for (const auto* one : named) {
    if (one->name()) names.append(*one->name());
  }
  names.removeDuplicates();
  sortIgnoringCase(names);
  return names;
}

}  // namespace pendra::queries
