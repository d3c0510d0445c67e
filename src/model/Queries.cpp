#include "model/Queries.h"

namespace pendra::queries {

std::vector<Activity*> openActivities(const ObjectContext& context) {
  return context.fetch<Activity>([](const Activity& activity) { return activity.completed() == false; });
}

Objects<Customer> customersNamed(const ObjectContext& context, const QString& name) {
  return context.matching<Customer>("name", name);
}

Objects<Service> servicesNamed(const ObjectContext& context, const QString& name) {
  return context.matching<Service>("name", name);
}

Objects<Customer> customersWithRecord(const ObjectContext& context, const QString& vtObjectID) {
  return context.matching<Customer>("vtObjectID", vtObjectID);
}

Objects<Job> jobsWithRecord(const ObjectContext& context, const QString& vtObjectID) {
  return context.matching<Job>("vtObjectID", vtObjectID);
}

std::vector<Customer*> shownCustomers(const ObjectContext& context) {
  return context.fetch<Customer>([](const Customer& customer) { return customer.shown() == true; });
}

std::vector<Service*> shownServices(const ObjectContext& context) {
  return context.fetch<Service>([](const Service& service) { return service.shown() == true; });
}

bool nameContains(const std::optional<QString>& name, const QString& text) {
  return name && name->contains(text, Qt::CaseInsensitive);
}

Identity* firstIdentity(const ObjectContext& context) {
  const auto all = context.all<Identity>();
  return all.empty() ? nullptr : all[0];
}

DocumentSettings* firstDocument(const ObjectContext& context) {
  const auto all = context.all<DocumentSettings>();
  return all.empty() ? nullptr : all[0];
}

int compareNames(const std::optional<QString>& one, const std::optional<QString>& other) {
  const auto view = [](const std::optional<QString>& name) {
    return name ? QStringView(*name) : QStringView();
  };
  return view(one).compare(view(other));
}

void sortIgnoringCase(QStringList& names) {
  std::stable_sort(names.begin(), names.end(),
                   [](const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) < 0; });
}

}  // namespace pendra::queries
