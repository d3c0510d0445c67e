#include "ui_core/NameLookups.h"

#include "model/Queries.h"

namespace pendra {

namespace {

template <class T>
T* firstOf(const Objects<T>& found) {
  return found.empty() ? nullptr : found[0];
}

}  // namespace

Customer* findCustomerByName(const ObjectContext& context, const QString& name) {
  return firstOf(queries::customersNamed(context, name));
}

Service* findServiceByName(const ObjectContext& context, const QString& name) {
  return firstOf(queries::servicesNamed(context, name));
}

Job* findJobByName(const ObjectContext& context, const QString& name, const Customer* forCustomer) {
  if (!forCustomer || !forCustomer->name()) return nullptr;
  for (const Customer* customer : queries::customersNamed(context, *forCustomer->name())) {
    for (Job* job : customer->jobs()) {
      if (job->name() && job->name()->compare(name, Qt::CaseInsensitive) == 0) return job;
    }
  }
  return nullptr;
}

Activity& createNewActivity(ObjectContext& context) {
  auto& activity = context.insert<Activity>();
  activity.setBillable(true);
  activity.setShouldAutoStartTimer(true);
  activity.setNotes(QString());
  return activity;
}

}  // namespace pendra
