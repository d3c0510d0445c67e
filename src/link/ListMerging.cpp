#include "ListMerging.h"

#include <QSet>
#include <span>

#include "FetchedLists.h"
#include "model/Customer.h"
#include "model/Job.h"
#include "model/Queries.h"
#include "model/Service.h"

namespace pendra {

namespace {

using Rows = std::span<const VantorItem>;
using Jobs = std::vector<Ref<Job>>;

bool isEmpty(const std::optional<QString>& text) { return !text || text->isEmpty(); }

Customer* customerWithRecord(const ObjectContext& context, const std::optional<QString>& vtObjectID) {
  if (!vtObjectID) return nullptr;
  const auto found = queries::customersWithRecord(context, *vtObjectID);
  return found.empty() ? nullptr : found[0];
}

/// The first of that name.
Job* jobNamed(const Objects<Job>& jobs, const std::optional<QString>& name) {
  for (Job* job : jobs) {
    if (job->name() == name) return job;
  }
  return nullptr;
}

Job& insertJob(ObjectContext& context, const VantorItem& item) {
  auto& job = context.insert<Job>();
  job.setName(item.name);
  job.setVtObjectID(item.id);
  job.setCustomer(customerWithRecord(context, item.parent));
  return job;
}

/// Watches over a list that is merged whether each of its items stands for one job and each job for one item,
/// in the order of both. Nearly every list is so, and then a job that none stands for is found by counting.
class OneForOne {
 public:
  /// `others`: how many further jobs have the item's identifier.
  void add(const Job& job, std::size_t others) {
    holds_ = holds_ && others == 0 && job.objectID() > last_;
    last_ = job.objectID();
    underCustomers_ += job.customer() != nullptr;
  }
  void addNothing() { holds_ = false; }
  [[nodiscard]] bool leavesNone(const Objects<Customer>& customers) const {
    if (!holds_) return false;
    std::size_t all = 0;
    for (const Customer* customer : customers) all += customer->jobs().size();
    return all == underCustomers_;
  }

 private:
  bool holds_ = true;
  qint64 last_ = 0;
  std::size_t underCustomers_ = 0;
};

void moveJob(const ObjectContext& context, Job& job, const VantorItem& item) {
  const Customer* current = job.customer();
  if (current && item.parent && current->vtObjectID() == item.parent) return;
  job.setCustomer(customerWithRecord(context, item.parent));
}

/// A customer typed in by the user becomes the one of Vantor's that has its name.
void adoptByName(ObjectContext& context, Customer& typedIn) {
  if (!typedIn.name()) return;
  for (const Customer* other : queries::customersNamed(context, *typedIn.name()).copy()) {
    if (other->vtObjectID() != kLocalRecord) typedIn.setVtObjectID(other->vtObjectID());
  }
}

void removeServicesNotIn(ObjectContext& context, Rows list) {
  QHash<QString, QString> names;
  for (const VantorItem& item : list) {
    if (!isEmpty(item.name) && item.id) names.insert(*item.id, *item.name);
  }
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

void mergeServices(ObjectContext& context, Rows list) {
  for (const VantorItem& item : list) {
    if (isEmpty(item.name) || !item.id) continue;
    if (!queries::servicesNamed(context, *item.name).empty()) continue;
    auto& service = context.insert<Service>();
    service.setName(item.name);
    service.setVtObjectID(item.id);
  }
  removeServicesNotIn(context, list);
}

/// Deletes the customers that Vantor no longer has and answers their jobs, which belong to nobody now: the
/// list of jobs says where they went. A customer typed in by the user whose name is one of Vantor's takes
/// that one's identifier.
Jobs removeCustomersNotIn(ObjectContext& context, Rows list) {
  QSet<QString> identifiers;
  identifiers.reserve(std::ssize(list));
  for (const VantorItem& item : list) {
    if (!isEmpty(item.name) && item.id) identifiers.insert(*item.id);
  }
  Jobs jobs;
  for (Customer* customer : context.fetch<Customer>()) {
    const auto& id = customer->vtObjectID();
    if (id && identifiers.contains(*id)) continue;
    for (Job* job : customer->jobs().copy()) {
      job->setCustomer(nullptr);
      jobs.emplace_back(job);
    }
    context.deleteObject(*customer);
  }
  for (Customer* typedIn : queries::customersWithRecord(context, kLocalRecord).copy())
    adoptByName(context, *typedIn);
  return jobs;
}

Jobs mergeCustomers(ObjectContext& context, Rows list) {
  context.expect<Customer>(list.size());
  // Both sets are as they were at the start: a list that names one identifier twice inserts two customers.
  const auto known = context.all<Customer>();
  QSet<QString> names;
  QSet<QString> identifiers;
  names.reserve(std::ssize(known));
  identifiers.reserve(std::ssize(known));
  for (const Customer* customer : known) {
    if (isEmpty(customer->name())) continue;
    names.insert(*customer->name());
    if (customer->vtObjectID()) identifiers.insert(*customer->vtObjectID());
  }
  for (const VantorItem& item : list) {
    if (isEmpty(item.name) || isEmpty(item.id)) continue;
    if (!identifiers.contains(*item.id)) {
      auto& customer = context.insert<Customer>();
      customer.setName(item.name);
      customer.setVtObjectID(item.id);
      customer.setShown(true);
    } else if (!names.contains(*item.name)) {
      // Kept, as users' documents are: no customer takes a name that stands here already, so swapped names
      // stay swapped.
      if (Customer* renamed = customerWithRecord(context, item.id)) renamed->setName(item.name);
    }
  }
  return removeCustomersNotIn(context, list);
}

/// Deletes the jobs that Vantor no longer has under their customer; jobs without one are left alone.
void removeJobsNotIn(ObjectContext& context, Rows list) {
  QHash<const Job*, const VantorItem*> kept;  // the last item wins
  kept.reserve(std::ssize(list));
  for (const VantorItem& item : list) {
    if (!item.id || !item.parent) continue;
    for (const Job* job : queries::jobsWithRecord(context, *item.id)) {
      const Customer* customer = job->customer();
      if (customer && customer->vtObjectID() == item.parent) kept.insert(job, &item);
    }
  }
  std::vector<Job*> gone;
  for (const Customer* customer : context.all<Customer>()) {
    for (Job* job : customer->jobs()) {
      if (const VantorItem* item = kept.value(job)) {
        job->setName(item->name);
      } else {
        gone.push_back(job);
      }
    }
  }
  for (Job* job : gone) context.deleteObject(*job);
}

void mergeJobs(ObjectContext& context, Rows list) {
  context.expect<Job>(list.size());
  OneForOne oneForOne;
  for (const VantorItem& item : list) {
    if (!item.id) continue;  // nothing could ever find such a job again
    const auto known = queries::jobsWithRecord(context, *item.id);
    const std::size_t count = known.size();
    if (Job* job = jobNamed(known, item.name)) {
      moveJob(context, *job, item);
      oneForOne.add(*job, count - 1);
    } else if (!isEmpty(item.name)) {
      oneForOne.add(insertJob(context, item), count);
    } else {
      oneForOne.addNothing();
    }
  }
  // Every job has the name of its item then, too.
  if (!oneForOne.leavesNone(context.all<Customer>())) removeJobsNotIn(context, list);
}

}  // namespace

void mergeLists(ObjectContext& context, const FetchedLists& lists) {
  if (lists.services) mergeServices(context, *lists.services);
  Jobs ofGoneCustomers;
  if (lists.customers) ofGoneCustomers = mergeCustomers(context, *lists.customers);
  if (lists.jobs) mergeJobs(context, *lists.jobs);
  for (const Ref<Job>& job : ofGoneCustomers) {
    if (job && !job->customer()) context.deleteObject(*job);
  }
}

}  // namespace pendra
