#pragma once
// Customers and services are found by their exact names. A job alone is found without regard to case, and
// among the jobs of every customer that has the given customer's name.

#include <QString>

#include "store/ObjectContext.h"

namespace pendra {

class Activity;
class Customer;
class Job;
class Service;

/// The first of that name, or none.
Customer* findCustomerByName(const ObjectContext& context, const QString& name);
Service* findServiceByName(const ObjectContext& context, const QString& name);
/// None without a customer.
Job* findJobByName(const ObjectContext& context, const QString& name, const Customer* forCustomer);

/// A new activity; billable, to be started at once, with empty notes.
Activity& createNewActivity(ObjectContext& context);

}  // namespace pendra
