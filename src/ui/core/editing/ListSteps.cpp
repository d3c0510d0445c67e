#include "ui_core/ListSteps.h"

#include "model/Customer.h"
#include "model/Job.h"
#include "model/Service.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "store/ObjectContext.h"

namespace pendra {

qint64 indexOfName(const QStringList& items, const QString& text) {
  const qsizetype index = items.indexOf(text);
  return index < 0 ? kNotFound : index;
}

QString completedName(const QStringList& items, const QString& typed) {
  const auto found = std::find_if(items.begin(), items.end(), [&](const QString& item) {
    return item.startsWith(typed, Qt::CaseInsensitive);
  });
  return found == items.end() ? QString() : *found;
}

bool isBlank(QStringView text) {
  return std::all_of(text.begin(), text.end(), [](QChar c) { return c == u' ' || c == u'\t'; });
}

OfferedList listOf(const EntryFields& fields, const Control& control) {
  if (&control == &fields.customerPopup) return OfferedList::Customers;
  return &control == &fields.servicePopup ? OfferedList::Services : OfferedList::Jobs;
}

QString nameOf(OfferedList list) {
  if (list == OfferedList::Customers) return tr("Customers");
  return list == OfferedList::Services ? tr("Services") : tr("Jobs");
}

QString emptyListText(OfferedList list) {
  if (list == OfferedList::Customers) return tr("No customer is offered yet");
  return list == OfferedList::Services ? tr("No service item is offered yet")
                                       : tr("This customer has no jobs in the list");
}

bool asksToAdd(Alerts& alerts, const QString& name, const QString& listName) {
  return alerts.runAlert({.message = formatted(tr("Add \"%@\" to the %@ list?"), {name, listName}),
                          .informative = tr("Click OK to continue."),
                          .buttons = {tr("OK"), tr("Cancel")}}) == kFirstButton;
}

bool takesUnknownName(const Session& session, const std::function<void()>& refuse,
                      const std::function<bool()>& isWanted, const std::function<void()>& add) {
  if (!session.isStandalone()) {
    refuse();
    return false;
  }
  if (!isWanted()) return false;
  add();
  return true;
}

ListRecord& makeLocal(ListRecord& record, const QString& name) {
  record.setName(name);
  record.setVtObjectID(kLocalRecord);
  return record;
}

void addCustomer(ObjectContext& context, const QString& name) {
  std::ignore =
      context.edit(tr("Add Customer"), [&] { makeLocal(context.insert<Customer>(), name).setShown(true); });
}

void addService(ObjectContext& context, const QString& name) {
  std::ignore = context.edit(tr("Add Service Item"), [&] { makeLocal(context.insert<Service>(), name); });
}

void addJob(Customer& customer, const QString& name) {
  ObjectContext& context = *customer.context();
  std::ignore = context.edit(tr("Add Job"), [&] {
    auto& job = context.insert<Job>();
    makeLocal(job, name);
    job.setCustomer(&customer);
  });
}

void showChooseExistingCustomer(Alerts& alerts) {
  alerts.runAlert(
      {.message = tr("Choose an existing customer"),
       .informative = tr("When Pendra is linked to a company file, you can only choose a customer already "
                         "entered in Vantor. Choose an existing name to continue.")});
}

void showChooseExistingService(Alerts& alerts, const QString& message) {
  alerts.runAlert({.message = message,
                   .informative = tr(
                       "When Pendra is linked to a company file, you can only choose a service item already "
                       "entered in Vantor. Choose an existing service item to continue.")});
}

}  // namespace pendra
