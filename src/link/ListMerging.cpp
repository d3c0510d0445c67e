#include <QSet>

#include "link/ListSync.h"
#include "model/Customer.h"
#include "model/Job.h"
#include "model/Queries.h"
#include "model/Service.h"

namespace pendra {

namespace {

const QString kTypedIn = QStringLiteral("0");

bool isEmpty(const std::optional<QString>& text) { return !text || text->isEmpty(); }

Customer* customerWithRecord(const ObjectContext& context, const std::optional<QString>& vtObjectID) {
  if (!vtObjectID) return nullptr;
  const auto found = queries::customersWithRecord(context, *vtObjectID);
  return found.empty() ? nullptr : found[0];
}

/// The first of that identifier and that name.
Job* jobWithRecord(const ObjectContext& context, const NameAndRecNumber& item) {
  for (Job* job : queries::jobsWithRecord(context, *item.vtObjectID)) {
    if (job->name() == item.name) return job;
  }
  return nullptr;
}

void insertJob(ObjectContext& context, const NameAndRecNumber& item) {
  auto& job = context.insert<Job>();
  job.setName(item.name);
  job.setVtObjectID(item.vtObjectID);
  job.setCustomer(customerWithRecord(context, item.parentObjectID));
}

void moveJob(const ObjectContext& context, Job& job, const NameAndRecNumber& item) {
  const Customer* current = job.customer();
  if (current && item.parentObjectID && current->vtObjectID() == item.parentObjectID) return;
  job.setCustomer(customerWithRecord(context, item.parentObjectID));
}

/// A customer typed in by the user becomes the one of Vantor's that has its name.
void adoptByName(ObjectContext& context, Customer& typedIn) {
  if (!typedIn.name()) return;
  for (const Customer* other : queries::customersNamed(context, *typedIn.name()).copy()) {
    if (other->vtObjectID() != kTypedIn) typedIn.setVtObjectID(other->vtObjectID());
  }
}

}  // namespace

void ListSync::removeServicesNotInList(Rows list) {
  QHash<QString, QString> names;
  for (const NameAndRecNumber& item : list) {
    if (!isEmpty(item.name) && item.vtObjectID) names.insert(*item.vtObjectID, *item.name);
  }
  ObjectContext& context = *session_.myContext();
  for (Service* service : context.fetch<Service>()) {
    const auto& id = service->vtObjectID();
    const auto found = id ? names.constFind(*id) : names.constEnd();
    if (found == names.constEnd()) {
      context.deleteObject(*service);
    } else {
      service->setName(*found);
    }
  }
}

void ListSync::updateCustomers(Rows list) {
  ObjectContext& context = *session_.myContext();
  // Both sets are as they were at the start: a list that names one identifier twice inserts two customers.
  QSet<QString> names;
  QSet<QString> identifiers;
  for (const Customer* customer : context.all<Customer>()) {
    if (isEmpty(customer->name())) continue;
    names.insert(*customer->name());
    if (customer->vtObjectID()) identifiers.insert(*customer->vtObjectID());
  }
  for (const NameAndRecNumber& item : list) {
    if (isEmpty(item.name) || isEmpty(item.vtObjectID)) continue;
    if (!identifiers.contains(*item.vtObjectID)) {
      auto& customer = context.insert<Customer>();
      customer.setName(item.name);
      customer.setVtObjectID(item.vtObjectID);
      customer.setShown(true);
    } else if (!names.contains(*item.name)) {
      // Kept: a customer is not renamed to a name that stands here already, so swapped names stay swapped.
      if (Customer* known = customerWithRecord(context, item.vtObjectID)) known->setName(item.name);
    }
  }
  removeCustomersNotInList(list);
}

void ListSync::removeCustomersNotInList(Rows list) {
  QSet<QString> identifiers;
  for (const NameAndRecNumber& item : list) {
    if (!isEmpty(item.name) && item.vtObjectID) identifiers.insert(*item.vtObjectID);
  }
  ObjectContext& context = *session_.myContext();
  for (Customer* customer : context.fetch<Customer>()) {
    const auto& id = customer->vtObjectID();
    if (!id || !identifiers.contains(*id)) context.deleteObject(*customer);
  }
  for (Customer* typedIn : queries::customersWithRecord(context, kTypedIn).copy())
    adoptByName(context, *typedIn);
}

void ListSync::updateJobs(Rows list) {
  ObjectContext& context = *session_.myContext();
  for (const NameAndRecNumber& item : list) {
    if (!item.vtObjectID) continue;  // nothing could ever find such a job again
    if (Job* job = jobWithRecord(context, item)) {
      moveJob(context, *job, item);
    } else if (!isEmpty(item.name)) {
      insertJob(context, item);
    }
  }
  removeJobsNotInList(list);
}

void ListSync::removeJobsNotInList(Rows list) {
  ObjectContext& context = *session_.myContext();
  QHash<const Job*, const NameAndRecNumber*> kept;  // the last item wins
  kept.reserve(std::ssize(list));
  for (const NameAndRecNumber& item : list) {
    if (!item.vtObjectID || !item.parentObjectID) continue;
    for (const Job* job : queries::jobsWithRecord(context, *item.vtObjectID)) {
      const Customer* customer = job->customer();
      if (customer && customer->vtObjectID() == item.parentObjectID) kept.insert(job, &item);
    }
  }
  for (const Customer* customer : context.all<Customer>()) {
    for (Job* job : customer->jobs().copy()) {
      if (const NameAndRecNumber* item = kept.value(job)) {
        job->setName(item->name);
      } else {
        context.deleteObject(*job);
      }
    }
  }
}

}  // namespace pendra
