
#include "DeletionText.h"
#include "model/Queries.h"
#include "platform/Log.h"
#include "platform/Text.h"
#include "platform/Translation.h"
#include "store/Predicate.h"
#include "ui_core/CustomerListController.h"

namespace pendra {

namespace {

const QString kNoticeKey = QStringLiteral("delete");

/// "Its 2 jobs go with it."
QString jobsSentence(const Customer& customer) {
  const auto count = std::ssize(customer.jobs());
  return count == 0 ? QString() : counted(count, "Its job goes with it.", "Its %Ln jobs go with it.");
}

}  // namespace

void CustomerListController::deleteRow() {
  const int row = selection().row();
  const Ref<Job> job(jobForRow(row));
  const Ref<Customer> customer(customerForRow(row));
  if (!job && !customer) return;
  const auto activities = job ? job->activities() : customer->activities();
  const bool isCurrent = std::any_of(activities.begin(), activities.end(),
                                     [](const Activity* one) { return one->completed() == false; });
  QStringList whatGoes;
  if (!isCurrent) {  // else it will be refused, and no activity loses anything
    if (customer) whatGoes << jobsSentence(*customer);
    whatGoes << lists::lossSentence(activities, standalone());
  }
  whatGoes.removeAll(QString());
  if (!confirmDelete(nameInRow(row), whatGoes.join(u' '))) return;
  if (job) {
    deleteJob(*job);
  } else if (customer) {
    deleteCustomer(*customer);
  }
}

/// Asks the activities by a text into which names were written. None when a name has broken the text: then
/// nobody knows, which is not "not in use".
std::optional<bool> CustomerListController::isInUse(const QString& predicateText, const QString& name) {
  const auto predicate = Predicate::parse(predicateText);
  Notices& notices = session().notices();
  if (!predicate) {
    logLine(predicate.error().text);
    notices.post(
        {.key = kNoticeKey,
         .text = formatted(tr("“%@” was not deleted: a quotation mark in its name, or in its customer’s, "
                              "cannot be looked for among the activities. Rename that one first."),
                           {name}),
         .actions = {},
         .ofDocument = true});
    return std::nullopt;
  }
  notices.withdraw(kNoticeKey);
  const auto activities = context()->all<Activity>();
  return std::any_of(activities.begin(), activities.end(),
                     [&](Activity* activity) { return predicate.value().matches(*activity); });
}

void CustomerListController::deleteCustomer(Customer& customer) {
  const QString name = queries::nameOf(&customer);
  const auto inUse = isInUse(formatted(u"customer.name LIKE \"%@\" &&  completed ==NO", {name}), name);
  if (inUse == true) {
    session().ports().alerts.runAlert(
        {.style = Alert::Style::Warning,
         .message = tr("Cannot Delete Customer"),
         .informative =
             formatted(tr("You cannot delete %@ because you have current activities for this "
                          "customer. Mark complete any activities for this customer and try again."),
                       {name}),
         .buttons = {tr("OK")},
         .topic = Alert::Topic::Deleting});
  }
  if (inUse != false) return;
  deleteNamed(customer, name);
}

void CustomerListController::deleteJob(Job& job) {
  const QString name = queries::nameOf(&job);
  const auto inUse =
      isInUse(formatted(u" job.name LIKE \"%@\" && customer.name LIKE \"%@\" && completed ==NO ",
                        {name, queries::nameOf(job.customer())}),
              name);
  if (inUse == true) {
    // Kept for those who search for the text: it is the message as a whole, unlike the customer's.
    session().ports().alerts.runAlert(
        {.style = Alert::Style::Critical,
         .message =
             formatted(tr("You cannot delete %@ because you have current activities for this job. Mark "
                          "complete any activities for this job and try again."),
                       {name}),
         .informative = {},
         .buttons = {tr("OK")},
         .topic = Alert::Topic::Deleting});
  }
  if (inUse != false) return;
  deleteNamed(job, name);
}

}  // namespace pendra
