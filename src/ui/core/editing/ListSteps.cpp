#include "ui_core/ListSteps.h"

#include "model/Customer.h"
#include "model/Job.h"
#include "model/Service.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "store/ObjectContext.h"

namespace pendra {

namespace {

/// The identifier of what exists only here.
const QString kLocalRecord = QStringLiteral("0");

}  // namespace

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

QString listNameFor(const EntryFields& fields, const Control& popup) {
  if (&popup == &fields.customerPopup) return tr("Customers");
  return &popup == &fields.servicePopup ? tr("Services") : tr("Jobs");
}

QString emptyListText(const EntryFields& fields, const Control& popup) {
  if (&popup == &fields.customerPopup) return tr("No customer is offered yet");
  return &popup == &fields.servicePopup ? tr("No service item is offered yet")
                                        : tr("This customer has no jobs in the list");
}

bool asksToAdd(Alerts& alerts, const QString& name, const QString& listName) {
  return alerts.runAlert({.message = formatted(tr("Add \"%@\" to the %@ list?"), {name, listName}),
                          .informative = tr("Click OK to continue."),
                          .buttons = {tr("OK"), tr("Cancel")}}) == kFirstButton;
}

void addCustomer(ObjectContext& context, const QString& name) {
  std::ignore = context.edit(tr("Add Customer"), [&] {
    auto& customer = context.insert<Customer>();
    customer.setName(name);
    customer.setVtObjectID(kLocalRecord);
    customer.setShown(true);
  });
}

void addService(ObjectContext& context, const QString& name) {
  std::ignore = context.edit(tr("Add Service Item"), [&] {
    auto& service = context.insert<Service>();
    service.setName(name);
    service.setVtObjectID(kLocalRecord);
  });
}

void addJob(Customer& customer, const QString& name) {
  ObjectContext& context = *customer.context();
  std::ignore = context.edit(tr("Add Job"), [&] {
    auto& job = context.insert<Job>();
    job.setName(name);
    job.setVtObjectID(kLocalRecord);
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
